// The antenna's boot loader: sign-on, program command, erase. What comes then is told in a file for each kind of
// loader.

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "simulator/Antenna.h"

namespace sim {

namespace {

// Times in seconds.
constexpr double eraseStep = 0.5;   // between two marks of the erase's progress
constexpr double readyDelay = 0.5;  // from the end of the erase to the "1" of those that say when they are ready
constexpr double noiseGap = 0.003;
constexpr double selfTest = 0.2;  // from the print of a unit that lags to its sign-on

constexpr std::size_t mostInput = 600;  // bytes that are kept of what is no command

// The boot loader that replaces the old one of board 1, and what starts its coming.
constexpr const char* newSignOn = "RF LOADER 2 READY";
constexpr const char* newCommand = "PGM_RF2";
constexpr const char* upgradeCommand = "PGM_908OK";
constexpr std::uint32_t upgradeStart = 1024, upgradeEnd = 32256;

/// Wrong bytes on the line; none of them means anything to anybody.
constexpr std::array<char, 4> noise{'\0', '~', '\xFE', '?'};

}  // namespace

void Antenna::SignOn(double now, double patience)
{
    state_ = State::AwaitingCommand;
    const std::string text = std::string("\r\n") + (Renewed() ? newSignOn : unit_.signOn) + "\r\n";
    if (faults_.Strikes("no-sign-on")) {
        report("the boot loader keeps quiet");
    } else if (faults_.Strikes("split-sign-on")) {
        SayPieces(text, 2, eraseStep, now);
        report("the boot loader signs on in two pieces");
    } else if (faults_.Lags()) {
        Answer("\r\nCPU TEST\r\nRAM 128K OK\r\n", now);
        Answer(text, now + selfTest);
        report("the boot loader tests itself and signs on");
    } else {
        Say(text, now);
        report("the boot loader signs on");
    }
    if (!HasSoftware()) {
        report("no software: the boot loader waits");
        return;
    }
    At(now + patience, [this](double then) {
        if (state_ == State::AwaitingCommand) StartSoftware(then);
    });
}

bool Antenna::Renewed() const { return unit_.loader == Loader::OldBlocks && !oldLoader_; }

void Antenna::LoaderReceives(char byte, double now)
{
    // Inside a block any bytes may come.
    const bool text =
        state_ != State::TakingUpgrade && state_ != State::TakingBootArea && state_ != State::TakingBlocks;
    if (text && byte == '\r' && input_.size() >= 6 && ResetsOn(input_.substr(input_.size() - 6))) {
        report("reset by \"" + input_.substr(input_.size() - 6) + "\"");
        Restart(now, resetPatience);
        return;
    }
    switch (state_) {
    case State::AwaitingCommand:
        return unit_.loader == Loader::SRecords ? AwaitStageCommand(byte, now) : AwaitCommand(byte, now);
    case State::AwaitingSpeed: return AwaitSpeed(byte, now);
    case State::TakingUpgrade:
    case State::TakingBootArea:
    case State::TakingBlocks: return TakeBlockByte(byte, now);
    case State::TakingRecords: return TakeRecordByte(byte, now);
    case State::TakingLines:
        if (ready_) return TakeLineByte(byte, now);
        return Stray(byte, "before it is ready for lines");
    default: return Stray(byte, "during the erase");
    }
}

void Antenna::Stray(char byte, const char* when)
{
    ++strayBytes_;
    if (input_.size() < mostInput) input_ += byte;  // a reset command may be coming in
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "%02X", static_cast<unsigned char>(byte));
    report(std::string("byte ") + code.data() + " is lost: it came " + when);
}

void Antenna::AwaitCommand(char byte, double now)
{
    if (awaitsReturn_ && byte != '\r') {
        awaitsReturn_ = false;
        return Stray(byte, "where the CR of the program command belongs");
    }
    if (!awaitsReturn_) {
        if (input_.size() >= mostInput) input_.erase(0, mostInput / 2);
        input_ += byte;
        const std::string_view command = oldLoader_ ? upgradeCommand : Renewed() ? newCommand : unit_.command;
        if (!input_.ends_with(command)) return;
        strayBytes_ += static_cast<int>(input_.size() - command.size());
        input_.clear();
        if (unit_.lines != Lines::Ordinary) {
            awaitsReturn_ = true;
            return;
        }
    }
    awaitsReturn_ = false;
    if (unit_.board == 17 && !updateMode_) {
        report("program command refused: not in update mode");
        Acknowledge("#", now);
        return;
    }
    TakeProgramCommand(now);
}

void Antenna::TakeProgramCommand(double now)
{
    timers_.clear();
    if (oldLoader_) {
        report("ready for its successor");
        Wipe();
        bootImage_.Erase();
        StartLeg(State::TakingUpgrade, {&bootImage_, upgradeStart, upgradeEnd, "upgrade-", false});
        Acknowledge("$", now);
        return;
    }
    if (unit_.areas) {
        report("program command taken, ready for the boot area");
        Wipe();
        const Areas& areas = *unit_.areas;
        StartLeg(State::TakingBootArea, {&parts_[0].memory, areas.bootStart, areas.bootEnd, "boot-", true});
        return;
    }
    report("program command taken, erasing");
    Wipe();
    Erase(now);
}

/// From here on nothing of the old software is worth anything. The parameters lie with the first part.
void Antenna::Wipe()
{
    if (part_ == 0) parameters_.Lose();
    parts_[part_].memory.Erase();
    parts_[part_].inPlace = false;
    lastLineGood_ = false;
    upper_ = 0;
    goodLines_ = refusedLines_ = 0;
}

void Antenna::Erase(double now)
{
    state_ = State::Erasing;
    input_.clear();
    if (LosesPower("power-lost-erasing", 0, now)) return;
    Say("\r\nERASING ", now);
    for (double then = eraseStep; then < unit_.eraseSeconds; then += eraseStep) {
        At(now + then, [this](double when) { Say(".", when); });
    }
    if (faults_.Strikes("no-erase-end")) {
        report("this erase will not end");
        return;
    }
    At(now + unit_.eraseSeconds, [this](double then) { EndErase(then); });
}

void Antenna::EndErase(double now)
{
    report("erased");
    input_.clear();
    if (unit_.loader == Loader::SRecords) {
        state_ = State::TakingRecords;
        Answer("\r\nSTART_PROGRAM\r\n", now);
        return;
    }
    if (unit_.areas) {
        const Areas& areas = *unit_.areas;
        StartLeg(State::TakingBlocks, {&parts_[0].memory, areas.mainStart, areas.mainEnd, "", true});
        Acknowledge("$", now);
        return;
    }
    state_ = State::TakingLines;
    ready_ = !unit_.saysReady;
    Acknowledge("$", now);
    if (ready_) return;
    At(now + readyDelay + faults_.Delay(), [this](double then) {
        ready_ = true;
        input_.clear();
        Say("1", then);
        report("ready for lines");
    });
}

bool Antenna::LosesPower(const std::string& fault, int unit, double now)
{
    if (!faults_.Strikes(fault, unit)) return false;
    report(unit == 0 ? "the power is lost in the erase" : "the power is lost at line or block " + std::to_string(unit));
    SetPower(false, now);
    return true;
}

/// Does it at once, or when a busy board gets to it: in the order in which it came.
void Antenna::Work(double now, std::function<void(double)> work)
{
    busyUntil_ = std::max(busyUntil_, now) + faults_.Any().Busy();
    if (busyUntil_ <= now) return work(now);
    At(busyUntil_, std::move(work));
}

/// Gives the time at which the reply goes out.
double Antenna::Acknowledge(const std::string& reply, double now)
{
    if (faults_.Strikes("noise")) {
        const auto turn = static_cast<std::size_t>(goodLines_ / 2);
        std::string wrong(1, noise[turn % noise.size()]);
        if (wrong == reply) wrong = noise[(turn + 1) % noise.size()];
        const bool ahead = goodLines_ % 2 == 0;
        Answer(ahead ? wrong : reply, now);
        return Answer(ahead ? reply : wrong, now + noiseGap);
    }
    return Answer(reply, now);
}

}  // namespace sim
