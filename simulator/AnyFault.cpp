#include "simulator/AnyFault.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <string_view>

namespace sim {

namespace {

/// Capital letters stand for what is chosen: U a unit, K how often, C a command, N the how many-th, R one in how many,
/// M milliseconds, S a seed.
struct Kind {
    const char* words;
    int weight;
    const char* loaders = "LBOR";  // lines, blocks, old ones, records
    bool altersNothing = false;
};

// clang-format off
constexpr std::array kinds{
    Kind{"silent U K", 3}, Kind{"boot-silent U K", 2, "BO"}, Kind{"upgrade-silent U K", 9, "O"},
    Kind{"wrong-echo U K", 3, "BO"}, Kind{"boot-wrong-echo U K", 2, "BO"}, Kind{"refuse U K", 3, "LR"},
    Kind{"both U K", 3, "L"}, Kind{"power-lost U", 2}, Kind{"boot-power-lost U", 2, "BO"},
    Kind{"upgrade-power-lost U", 9, "O"}, Kind{"power-lost-erasing K", 2}, Kind{"no-erase-end K", 2},
    Kind{"no-sign-on K", 2}, Kind{"split-sign-on", 2}, Kind{"split C K", 2}, Kind{"mute C K", 2}, Kind{"noise", 2},
    Kind{"split-versions", 8, "LBOR", true}, Kind{"lag", 2, "LBOR", true}, Kind{"slow M", 5, "LBOR", true},
    Kind{"late N M", 5, "LBOR", true}, Kind{"late about R M S", 5, "LBOR", true},
    Kind{"doubled N", 2, "LBOR", true}, Kind{"doubled about R S", 3, "LBOR", true},
    Kind{"parted N M", 2, "LBOR", true}, Kind{"parted about R M S", 2, "LBOR", true},
    Kind{"held N M", 2, "LBOR", true}, Kind{"held about R M S", 2, "LBOR", true},
    Kind{"busy N M", 3}, Kind{"busy about R M S", 5},
    Kind{"heard-changed N", 5}, Kind{"heard-changed about R S", 4}, Kind{"said-changed N", 5},
    Kind{"said-changed about R S", 4}, Kind{"heard-lost N", 4}, Kind{"heard-lost about R S", 3},
    Kind{"said-lost N", 5}, Kind{"said-lost about R S", 3}, Kind{"heard-inserted N", 4},
    Kind{"heard-inserted about R S", 3}, Kind{"said-inserted N", 5}, Kind{"said-inserted about R S", 3},
};
// clang-format on

const Kind& Choose(const Unit& unit, const Reach& reach, Dice& dice)
{
    const char loader = "LBOR"[static_cast<int>(unit.loader)];
    std::vector<const Kind*> urn;
    for (const Kind& kind : kinds) {
        const bool suits = std::string_view(kind.loaders).find(loader) != std::string_view::npos;
        if (suits && kind.altersNothing >= reach.altersNothing) {
            urn.insert(urn.end(), static_cast<std::size_t>(kind.weight), &kind);
        }
    }
    return *dice.Of(urn);
}

}  // namespace

std::size_t Dice::Spread(std::size_t last)
{
    constexpr std::size_t orders = 17;
    return 1 + Below(std::min(last, std::size_t{1} << Below(orders)));
}

std::string AnyFault(const Unit& unit, const Reach& reach, Dice& dice)
{
    constexpr std::size_t tenMinutes = 600000, longest = 3000, shortest = 200;
    constexpr std::array times{"1", "2", "6", "12", "always"};
    const Kind& kind = Choose(unit, reach, dice);
    const std::string_view words = kind.words;
    const bool heard = words.starts_with("heard"),
               bytes = heard || words.starts_with("said") || words.starts_with("held");
    const std::size_t count = bytes ? (heard ? reach.heard : reach.said) : reach.answers;
    const std::size_t units = std::max<std::size_t>(reach.units, 1);
    std::size_t late = words.starts_with("slow") ? tenMinutes / units : longest;

    std::istringstream in(kind.words);
    std::string made;
    for (std::string word; in >> word;) {
        std::size_t number = 0;
        switch (word.size() == 1 ? word[0] : ' ') {
        case 'U': number = dice.Of(std::array{std::size_t{1}, units, dice.Spread(units), 1 + dice.Below(units)}); break;
        case 'N': number = 1 + dice.Below(std::max<std::size_t>(count, 10)); break;
        case 'R':
            number = bytes ? 5 + dice.Spread(20000) : dice.Spread(200);
            late = std::min(late, tenMinutes * number / units);
            break;
        case 'M': number = shortest + dice.Below(late > shortest ? late - shortest : 1); break;
        case 'S': number = 1 + dice.Below(100000); break;
        case 'K': word = dice.Of(times); break;
        case 'C': word = dice.Of(reach.commands); break;
        default: break;
        }
        made += (made.empty() ? "" : " ") + (number > 0 ? std::to_string(number) : word);
    }
    return made;
}

std::vector<std::string> AnyFaultNames()
{
    std::set<std::string> names;
    for (const Kind& kind : kinds) names.insert(std::string(kind.words).substr(0, std::string(kind.words).find(' ')));
    return {names.begin(), names.end()};
}

}  // namespace sim
