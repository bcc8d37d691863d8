#include "knowledge/RowTable.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

#include "knowledge/BoardTable.h"
#include "text/Text.h"

namespace {

struct KnownAntenna {
    const char* words;
    RowFacts facts;
};

constexpr RowFacts holm{
    .bareLines = true, .returnBehindCommand = true, .announcesFirstLine = true, .startsWithFogError = true};
// Not among those that take bare lines, though it takes the lone CR.
constexpr RowFacts jarlGL{.returnBehindCommand = true};
constexpr RowFacts olderRF{.needsRF5File = true};

constexpr std::array<KnownAntenna, 9> knownAntennas{{
    {"HOLM", holm},
    {"HOLMSS", holm},
    {"JARL", holm},
    {"JARL GL", jarlGL},
    {"Orbimaster OPAL", olderRF},
    {"Orbimaster NEVA", olderRF},
    {"Orbimaster MAKO", olderRF},
    {"Orbimaster PERU", olderRF},
    {"Orbimaster QUAY", olderRF},
}};

/// The words of boards that are known by their version reply.
struct VersionWords {
    const char* words;
    int type;
};

constexpr std::array<VersionWords, 9> versionWords{{
    {"DVB/DSS 6", 20},
    {"DVB/DSS LM", 20},
    {"DVB/DSS MA", 20},
    {"DVB/DSS 6A", 20},
    {"DVB/DSS 6A LM", 20},
    {"DVB/DSS 6A MA", 20},
    {"DVB/DSS 7", 21},
    {"DVB/DSS 7 MA", 21},
    {"DVB/DSS 7 GL", 21},
}};

/// Boards whose software depends on the model, so that the name alone says too little.
constexpr std::array neverPicked{
    "QEL MAKOSL/NEVASL/MAKO/NEVA/OPAL RF6 Board",
    "QEL RIGA/SOLA RF6 Board",
    "QEL MAKOSL/NEVASL/MAKO/NEVA/OPAL RF6A Board",
    "QEL RIGA/SOLA RF6A Board",
    "QEL JARL GLTV RF6A Board",
};

constexpr std::array<ModelChoice, 2> modelChoices{{
    {" RF6 BOARD", ModelList::RF6, "F61205M.S19"},
    {" RF6A BOARD", ModelList::RF6A, "F61271A.S19"},
}};

FileArguments Arguments(const std::string& size, const std::string& offset, const std::string& check)
{
    // A row may end ahead of numbers that its board has no use for.
    const auto number = [](const std::string& field) { return field.empty() ? 0 : text::ToLong(field); };
    return {number(size), number(offset), number(check)};
}

/// "DELAYXMIT 12": a pause of 12 ticks between two lines.
std::int16_t PauseIn(const std::string& extra)
{
    if (extra.empty()) return 0;
    const std::int32_t ticks = text::ToLong(text::Mid(extra, std::string_view("DELAYXMIT").size() + 1));
    if (ticks < 0 || ticks > std::numeric_limits<std::int16_t>::max())
        throw std::overflow_error("a pause of " + text::Num(ticks) + " ticks");
    return static_cast<std::int16_t>(ticks);
}

}  // namespace

RowFacts FactsOf(const AntennaRecord& row)
{
    for (const KnownAntenna& antenna : knownAntennas)
        if (text::Equal(text::Trim(row.BoardIdWords), antenna.words) || text::Equal(row.AntennaName, antenna.words))
            return antenna.facts;
    return {};
}

std::optional<int> BoardTypeOf(const AntennaRecord& row)
{
    const std::string words = text::Trim(row.BoardIdWords);
    for (const VersionWords& board : versionWords)
        if (text::Equal(words, board.words)) return board.type;
    for (int type = 0; type < NoBoard; ++type) {
        const char* own = BoardOf(type).searchText;
        if (own != nullptr && text::Equal(words, text::Trim(own))) return type;
    }
    return std::nullopt;
}

bool CanBePicked(const AntennaRecord& row, bool hasAnswered)
{
    if (text::Holds(row.PreflashLine, "PORT2")) return false;
    if (hasAnswered && text::Holds(row.PreflashLine, "flashr")) return false;
    return std::none_of(neverPicked.begin(), neverPicked.end(),
                        [&](const char* name) { return text::Equal(row.AntennaName, name); });
}

const ModelChoice* ModelChoiceOf(const AntennaRecord& row)
{
    for (const ModelChoice& choice : modelChoices)
        if (text::Holds(row.AntennaName, choice.nameHolds)) return &choice;
    return nullptr;
}

RowFiles ReadRow(const AntennaRecord& row, int boardType)
{
    RowFiles read;
    read.FirstFile = Arguments(row.ImageSize, row.AddressOffset, row.CheckValue);
    read.FlashFile = text::Trim(row.FlashFiles);
    if (BoardOf(boardType).group == BoardGroup::Line) {
        read.PauseTicks = PauseIn(row.Extra1);
        return read;
    }
    const std::size_t colon = row.FlashFiles.find(':');
    if (colon == std::string::npos) return read;
    read.FlashFile = text::Trim(row.FlashFiles.substr(0, colon));
    read.SecondFlashFile = text::Trim(row.FlashFiles.substr(colon + 1));
    read.SecondFile = Arguments(row.Extra1, row.Extra2, row.Extra3);
    return read;
}
