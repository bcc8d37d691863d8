#include "simulator/Faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <sstream>
#include <string_view>

#include "simulator/Fields.h"

namespace sim {

namespace {

/// What stands behind a fault's name.
enum class Argument { None, Unit, Command };

struct Kind {
    const char* name;
    Argument argument;
    bool counted;  // takes a number of times
    int times;     // when none is given; below 0: for good
};

constexpr std::array<Kind, 19> kinds{{
    {"silent", Argument::Unit, true, 1},
    {"boot-silent", Argument::Unit, true, 1},
    {"upgrade-silent", Argument::Unit, true, 1},
    {"wrong-echo", Argument::Unit, true, 1},
    {"boot-wrong-echo", Argument::Unit, true, 1},
    {"refuse", Argument::Unit, true, 1},
    {"both", Argument::Unit, true, 1},
    {"noise", Argument::None, false, -1},
    {"no-sign-on", Argument::None, true, 1},
    {"split-sign-on", Argument::None, false, -1},
    {"no-erase-end", Argument::None, true, 1},
    {"split-versions", Argument::None, false, -1},
    {"split", Argument::Command, true, 1},
    {"mute", Argument::Command, true, 1},
    {"power-lost", Argument::Unit, false, 1},
    {"boot-power-lost", Argument::Unit, false, 1},
    {"upgrade-power-lost", Argument::Unit, false, 1},
    {"power-lost-erasing", Argument::None, true, 1},
    {"lag", Argument::None, false, -1},
}};

constexpr double mostLag = 0.25;  // seconds

const Kind* FindKind(const std::string& name)
{
    const auto* kind = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& k) { return name == k.name; });
    return kind == kinds.end() ? nullptr : kind;
}

/// A whole number from 1 on; nothing for any other text.
std::optional<int> CountOf(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 1) return std::nullopt;
    return value;
}

}  // namespace

const char* Faults::Help()
{
    return "fault silent N [K|always]     line, record or block N is lost and unanswered, K times or for good (once)\n"
           "fault refuse N [K|always]     line N is refused with \"1\", record N with \"ERROR\"\n"
           "fault both N [K|always]       line N is answered with \"$\" and \"1\"\n"
           "fault wrong-echo N [K|always] block N is echoed wrongly and not stored\n"
           "fault power-lost N            the power goes at line, record or block N\n"
           "   boot-silent, boot-wrong-echo, boot-power-lost: the same for block N of the boot area;\n"
           "   upgrade-silent, upgrade-power-lost: and of a new boot loader\n"
           "fault power-lost-erasing [K|always] the power goes when an erase begins\n"
           "fault noise                   a wrong byte ahead of or behind every answer to a line\n"
           "fault slow MS                 every answer comes so much later; 0 ends it\n"
           "fault lag                     answers up to 250 ms late, texts in pieces, lines ahead of the sign-on\n"
           "fault no-sign-on [K|always]   the boot loader starts without a word\n"
           "fault split-sign-on           the sign-on comes in two pieces\n"
           "fault no-erase-end [K|always] the erase never ends\n"
           "fault split-versions          version answers come in three pieces\n"
           "fault split C [K|always]      the answer to command C comes in three pieces\n"
           "fault mute C [K|always]       command C, with or without values, is not answered\n"
           "fault late N MS               the Nth answer from now on, to whatever, comes so much later\n"
           "fault doubled N               the Nth answer comes twice\n"
           "fault parted N MS             the Nth answer comes in pieces with so much time between them\n"
           "fault busy N MS               the Nth line, record or block takes so much longer; what comes meanwhile "
           "waits\n"
           "fault held N MS               from the Nth byte said on, all is held back and let go together\n"
           "fault said-changed N          the Nth byte from now on reaches the program as another one\n"
           "   said-lost, said-inserted:  it doesn't reach it; one comes ahead of it;\n"
           "   heard-changed, heard-lost, heard-inserted: the same on the way to the antenna;\n"
           "   each of these by chance: late about N MS [SEED], on the average one in N, up to so long; 1: each\n"
           "fault clear                   no fault any more\n";
}

bool Faults::Set(const std::string& words, std::string& why)
{
    std::istringstream in(words);
    std::vector<std::string> word;
    for (std::string one; in >> one;) word.push_back(one);
    const auto refuse = [&why](const std::string& reason) {
        why = reason;
        return false;
    };
    if (word.empty()) return refuse("which fault?");
    if (word[0] == "clear" && word.size() == 1) {
        faults_.clear();
        any_.Clear();
        delay_ = 0;
        return true;
    }
    if (word[0] == "slow") {
        if (word.size() != 2 || (word[1] != "0" && !CountOf(word[1]))) return refuse("slow wants milliseconds");
        delay_ = word[1] == "0" ? 0 : *CountOf(word[1]) / 1000.0;
        return true;
    }
    if (Disturbances::Knows(word[0])) return any_.Set(word, why);
    const Kind* kind = FindKind(word[0]);
    if (!kind) return refuse("no such fault: " + word[0]);

    Fault fault{kind->name, "", 0, kind->times};
    std::size_t next = 1;
    if (kind->argument == Argument::Unit) {
        const auto unit = word.size() > next ? CountOf(word[next]) : std::nullopt;
        if (!unit) return refuse(word[0] + " wants a number, from 1 on");
        fault.unit = *unit;
        ++next;
    } else if (kind->argument == Argument::Command) {
        if (word.size() <= next) return refuse(word[0] + " wants a command");
        fault.command = Upper(word[next++]);
    }
    if (word.size() > next && kind->counted) {
        const auto times = CountOf(word[next]);
        if (!times && word[next] != "always") return refuse("not a number of times: " + word[next]);
        fault.times = times.value_or(-1);
        ++next;
    }
    if (word.size() > next) return refuse("too many words");
    faults_.push_back(fault);
    return true;
}

bool Faults::UseUp(Fault& fault)
{
    ++struck_[fault.name];
    if (fault.times > 0 && --fault.times == 0) {
        faults_.erase(faults_.begin() + (&fault - faults_.data()));
    }
    return true;
}

bool Faults::Strikes(const std::string& name, int unit)
{
    for (Fault& fault : faults_) {
        if (fault.name == name && fault.unit == unit) return UseUp(fault);
    }
    return false;
}

bool Faults::Lags() const
{
    return std::any_of(faults_.begin(), faults_.end(), [](const Fault& fault) { return fault.name == "lag"; });
}

double Faults::Delay()
{
    if (delay_ > 0) ++struck_["slow"];
    if (!Lags()) return delay_;
    ++struck_["lag"];
    lag_ = lag_ * 1103515245u + 12345u;
    return delay_ + static_cast<double>(lag_ >> 16 & 0xFF) * mostLag / 255;
}

bool Faults::Mutes(const std::string& command) { return StrikesCommand("mute", command); }

bool Faults::Splits(const std::string& command) { return StrikesCommand("split", command); }

bool Faults::StrikesCommand(const std::string& name, const std::string& command)
{
    const std::string word = Upper(command.substr(0, command.find(',')));
    for (Fault& fault : faults_) {
        if (fault.name == name && (fault.command == word || fault.command == Upper(command))) return UseUp(fault);
    }
    return false;
}

std::vector<std::string> Faults::InForce() const
{
    std::vector<std::string> lines;
    if (delay_ > 0) lines.push_back("slow " + std::to_string(static_cast<int>(delay_ * 1000 + 0.5)));
    for (const Fault& fault : faults_) {
        std::ostringstream line;
        line << fault.name;
        if (fault.unit > 0) line << ' ' << fault.unit;
        if (!fault.command.empty()) line << ' ' << fault.command;
        if (fault.times < 0) {
            line << " always";
        } else {
            line << ' ' << fault.times;
        }
        lines.push_back(line.str());
    }
    for (const std::string& line : any_.InForce()) lines.push_back(line);
    return lines;
}

std::map<std::string, int> Faults::Struck() const
{
    std::map<std::string, int> all = struck_;
    for (const auto& [name, times] : any_.Struck()) all[name] += times;
    return all;
}

}  // namespace sim
