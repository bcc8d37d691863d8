#include "simulator/Antenna.h"

#include <algorithm>
#include <limits>
#include <sstream>
#include <utility>

namespace sim {

namespace {

// Times in seconds.
constexpr double loaderStart = 0.3;  // from the power or a reset to the sign-on
constexpr double quietLine = 0.2;    // no byte for so long: the program isn't sending

constexpr std::size_t mostHeard = 65536;

}  // namespace

Antenna::Antenna(const Unit& unit, double pace)
    : unit_(unit),
      pace_(pace),
      parameters_(unit),
      baud_(unit.baud),
      hasBootArea_(unit.hasBootArea),
      oldLoader_(unit.loader == Loader::OldBlocks)
{
    unit_.eraseSeconds *= pace;
    if (unit.fpgaRevision) parts_[1].revision = unit.fpgaRevision;
    if (unit.bapiRevision) parts_[2].revision = unit.bapiRevision;
}

// --- time ------------------------------------------------------------------------------------------------------------

void Antenna::At(double when, std::function<void(double)> action) { timers_.emplace(when, std::move(action)); }

double Antenna::NextTimer() const
{
    return timers_.empty() ? std::numeric_limits<double>::infinity() : timers_.begin()->first;
}

void Antenna::Advance(double now)
{
    while (!timers_.empty() && timers_.begin()->first <= now) {
        // Taken out first: what it does may set timers or drop them all.
        const auto timer = timers_.extract(timers_.begin());
        timer.mapped()(timer.key());
    }
}

// --- power -----------------------------------------------------------------------------------------------------------

void Antenna::SetPower(bool on, double now)
{
    Advance(now);
    if (on == IsPowered()) return;
    if (on) {
        report("power on");
        strayBytes_ = 0;
        Restart(now, powerPatience * pace_);
        return;
    }
    if (state_ == State::TakingLines || state_ == State::TakingRecords) {
        Part& part = parts_[part_];
        part.inPlace =
            part.memory.BytesWritten() > 0 && lastLineGood_ && input_.empty() && now - lastByte_ >= quietLine;
    }
    if (!HasSoftware() && state_ > State::AwaitingCommand) {
        report("the power went in the middle of a flash: no software any more");
    }
    timers_.clear();
    state_ = State::Off;
    cut(now);
    report("power off");
}

void Antenna::Reset(double now)
{
    Advance(now);
    if (IsPowered()) Restart(now, powerPatience * pace_);
}

void Antenna::Restart(double now, double patience)
{
    timers_.clear();
    input_.clear();
    awaitsReturn_ = false;
    ready_ = false;
    busyUntil_ = lastAnswer_ = now;
    baud_ = unit_.baud;
    state_ = State::Resetting;
    At(now + loaderStart, [this, patience](double then) { SignOn(then, patience); });
}

void Antenna::StartSoftware(double now)
{
    state_ = State::StartingUp;
    input_.clear();
    dish_.Start();
    report("the software starts");
    const auto print = [this, now](double after, std::string line, bool last) {
        At(now + after * pace_, [this, line = std::move(line), last](double then) {
            Say("\r\n" + line + "\r\n", then);
            if (last) StartedUp(then);
        });
    };
    print(0.2, unit_.version, unit_.startUp == StartUp::Banner);
    if (unit_.startUp == StartUp::SwitchTest) {
        print(1.0, "Limit Switch Test", false);
        print(3.0, "Limit Switch PASS", true);
    }
    if (unit_.startUp == StartUp::FogError) print(2.0, "AZ *** ERROR: FOG not calibrated", true);
}

void Antenna::StartedUp(double)
{
    state_ = State::Running;
    report("the software runs");
}

// --- the line --------------------------------------------------------------------------------------------------------

void Antenna::Say(std::string_view text, double now) { transmit(text, now); }

void Antenna::Receive(char byte, double now)
{
    Advance(now);
    if (heard_.size() < mostHeard) heard_ += byte;
    switch (state_) {
    case State::Off:
    case State::Resetting:
    case State::StartingUp: return;  // nobody listens
    case State::Running:
        if (byte == '\r') {
            std::string command;
            command.swap(input_);
            TakeCommand(command, now);
        } else if (byte != '\n' && input_.size() < 200) {
            input_ += byte;
        }
        break;
    default: LoaderReceives(byte, now); break;
    }
    lastByte_ = now;
}

bool Antenna::ResetsOn(const std::string& word) const
{
    std::istringstream words(unit_.resetWords);
    for (std::string one; words >> one;) {
        if (SameWord(one, word)) return true;
    }
    return false;
}

// --- for those who look on -------------------------------------------------------------------------------------------

bool Antenna::SetFault(const std::string& words, std::string& why)
{
    if (!faults_.Set(words, why)) return false;
    report("fault: " + words);
    return true;
}

void Antenna::SetUpdateMode(bool on)
{
    updateMode_ = on;
    report(on ? "update mode on" : "update mode off");
}

void Antenna::Print(const std::string& line, double now)
{
    Advance(now);
    if (IsPowered()) Say("\r\n" + line + "\r\n", now);
}

std::string Antenna::TakeHeard() { return std::exchange(heard_, {}); }

bool Antenna::HasSoftware() const
{
    return std::all_of(parts_.begin(), parts_.end(), [](const Part& part) { return part.inPlace; });
}

std::string Antenna::StateWords() const
{
    switch (state_) {
    case State::Off: return "switched off";
    case State::Resetting: return "the boot loader starts";
    case State::AwaitingCommand:
        return HasSoftware() ? "the boot loader waits for a program command" : "no software: only the boot loader runs";
    case State::Erasing: return "erasing";
    case State::AwaitingSpeed: return "the boot loader waits for the speed";
    case State::TakingUpgrade: return "taking blocks of a boot loader: " + std::to_string(goodLines_);
    case State::TakingBootArea: return "taking blocks of the boot area: " + std::to_string(goodLines_);
    case State::TakingLines: return "taking lines: " + std::to_string(goodLines_);
    case State::TakingBlocks: return "taking blocks: " + std::to_string(goodLines_);
    case State::TakingRecords:
        return "taking records of part " + std::to_string(part_ + 1) + ": " + std::to_string(goodLines_);
    case State::StartingUp: return "the software starts";
    case State::Running: return "the software runs";
    }
    return {};
}

}  // namespace sim
