// What the running software answers to its commands.

#include <algorithm>
#include <array>

#include "simulator/Antenna.h"
#include "simulator/Fields.h"
#include "simulator/Flood.h"
#include "simulator/Satellites.h"

namespace sim {

namespace {

// Times in seconds.
constexpr double thinking = 0.02;  // from a command to its answer
constexpr double pieceGap = 0.15;  // between the pieces of an answer that comes in pieces on request
constexpr double lagGap = 0.04;    // and of one that lags
constexpr double echoGap = 0.02;   // from an answer to its double

constexpr std::size_t shortText = 8;  // what is no longer comes in one piece

/// Answers that are always the same.
struct Fixed {
    const char* command;
    const char* answer;
};

constexpr std::array<Fixed, 5> fixedAnswers{{
    {"DEBUGON", "DEBUGON"},
    {"SIGLEVEL", "SIGLEVEL = 78"},
    {"=CALGYRO", "=CALGYRO OK"},
    {"=CALAZ", "=CALAZ OK"},
    {"=CALEL", "=CALEL OK"},
}};

}  // namespace

void Antenna::TakeCommand(const std::string& command, double now)
{
    if (ResetsOn(command) || Upper(command) == "RESET") {
        report("reset by \"" + command + "\"");
        Restart(now, Upper(command).starts_with("FLASH") ? resetPatience : powerPatience * pace_);
        return;
    }
    // What is lost isn't carried out either.
    const std::string told = faults_.Mutes(command) ? "" : AnswerTo(command);
    if (told.empty() && !command.empty()) {
        report("\"" + command + "\" is left unanswered");
        return;
    }
    const std::string answer = "\r\n>" + told + (command.empty() ? "" : "\r\n");
    report("\"" + command + "\": " + answer.substr(2, answer.find_last_not_of("\r\n") - 1));
    const bool isVersion = Upper(command) == "VERSION" || Upper(command) == "@VER";
    if ((isVersion && faults_.Strikes("split-versions")) || faults_.Splits(command)) {
        SayPieces(answer, 3, pieceGap, now + thinking + faults_.Delay());
    } else {
        Answer(answer, now + thinking);
    }
}

/// Empty when the command stays unanswered.
std::string Antenna::AnswerTo(const std::string& command)
{
    const std::string word = Upper(command);
    if (word.empty()) return {};
    if (word == "VERSION" || (word == "@VER" && unit_.keeps == Keeps::OfRFBoard)) return unit_.version;
    if (word == "@VER" && *unit_.rfVersion != '\0') return std::string("RF: ") + unit_.rfVersion;
    if (unit_.loader == Loader::SRecords && (word == "FPGAREV" || word == "BAPIREV")) {
        const std::string& revision = parts_[word == "FPGAREV" ? 1 : 2].revision;
        return revision.empty() ? revision : word.substr(0, 4) + " Rev: " + revision;
    }
    if (word == "CLEAREE" && unit_.keeps != Keeps::Nothing) {
        parameters_.Clear();
        return word;
    }
    std::string answer = parameters_.Answer(command);
    if (answer.empty()) answer = AnswerOfDish(command);
    return answer.empty() ? "? " + command : answer;
}

/// What an antenna answers, and a board without one doesn't know.
std::string Antenna::AnswerOfDish(const std::string& command)
{
    if (unit_.keeps == Keeps::Nothing) return {};
    for (const Fixed& fixed : fixedAnswers) {
        if (SameWord(command, fixed.command)) return fixed.answer;
    }
    const std::string list = unit_.keeps == Keeps::OfMainBoard ? AnswerSatelliteList(command) : std::string();
    return list.empty() ? dish_.Answer(command) : list;
}

/// Says it as late as the faults in force want it, but never ahead of an answer that was given before; gives the time.
double Antenna::Answer(const std::string& text, double when)
{
    const Disturbances::Fate fate = faults_.Any().NextAnswer();
    when = std::max(when + faults_.Delay() + fate.late, lastAnswer_);
    const bool parted = fate.apart > 0 && text.size() > 1;
    const bool pieces = parted || (faults_.Lags() && text.size() > shortText);
    const double gap = parted ? fate.apart : lagGap;
    SayPieces(text, pieces ? 3 : 1, gap, when);
    lastAnswer_ = when + (pieces ? 2 * gap : 0);
    if (!fate.twice) return lastAnswer_;
    lastAnswer_ += echoGap;
    At(lastAnswer_, [this, text](double then) { Say(text, then); });
    return lastAnswer_;
}

void Antenna::SayPieces(const std::string& text, std::size_t pieces, double gap, double when)
{
    const std::size_t length = text.size() / pieces;
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        const std::string part = text.substr(piece * length, piece + 1 == pieces ? std::string::npos : length);
        At(when + static_cast<double>(piece) * gap, [this, part](double then) { Say(part, then); });
    }
}

void Antenna::Flood(std::size_t bytes, double now)
{
    Advance(now);
    if (IsPowered()) Say(FloodText(bytes), now);
}

}  // namespace sim
