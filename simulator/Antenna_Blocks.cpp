// The boot loader takes blocks: 64 bytes each, without address or end.

#include <numeric>

#include "simulator/Antenna.h"

namespace sim {

namespace {

constexpr std::size_t blockSize = 64;
constexpr int blocksBetweenReports = 200;
constexpr double pause = 0.1;  // seconds behind an echo, so that nothing else comes in its place

/// An echo that no compare takes for the right one, whatever it makes of upper and lower case; never zero, which the
/// line may lose.
std::uint8_t Wrong(std::uint8_t echo) { return echo == 0xFF ? 1 : static_cast<std::uint8_t>(echo + 1); }

std::uint8_t Echo(const std::vector<std::uint8_t>& block)
{
    return static_cast<std::uint8_t>(255 - std::accumulate(block.begin(), block.end(), 0u) % 256);
}

}  // namespace

void Antenna::StartLeg(State state, const Leg& leg)
{
    state_ = state;
    leg_ = leg;
    goodLines_ = 0;
    input_.clear();
}

void Antenna::TakeBlockByte(char byte, double now)
{
    if (leg_.position >= leg_.end) return Stray(byte, "behind the last block");
    input_ += byte;
    if (input_.size() < blockSize) return;
    const std::vector<std::uint8_t> block(input_.begin(), input_.end());
    input_.clear();
    Work(now, [this, block](double then) { TakeBlock(block, then); });
}

void Antenna::TakeBlock(const std::vector<std::uint8_t>& block, double now)
{
    const std::string prefix = leg_.prefix;
    const int number = goodLines_ + 1;
    if (LosesPower(prefix + "power-lost", number, now)) return;
    if (faults_.Strikes(prefix + "silent", number)) {
        report("block " + std::to_string(number) + " is lost");
        return;
    }
    const bool noRoom = state_ == State::TakingBootArea && !hasBootArea_;
    if (noRoom || (leg_.echoes && faults_.Strikes(prefix + "wrong-echo", number))) {
        ++refusedLines_;
        report("block " + std::to_string(number) + " is echoed wrongly");
        const double answered = Acknowledge(std::string(1, static_cast<char>(Wrong(Echo(block)))), now);
        if (noRoom) MakeRoom(answered);
        return;
    }
    leg_.memory->Write(leg_.position, block);
    leg_.position += blockSize;
    goodLines_ = number;
    if (number == 1 || number % blocksBetweenReports == 0) report(std::to_string(number) + " blocks taken");
    const std::string echo(1, static_cast<char>(Echo(block)));
    const double answered = Acknowledge(leg_.echoes ? echo : "$", now);
    if (leg_.position >= leg_.end) EndLeg(answered);
}

void Antenna::MakeRoom(double answered)
{
    hasBootArea_ = true;
    report("there was no room for a boot area: now there is, and it starts afresh");
    At(answered + pause, [this](double then) { Restart(then, resetPatience); });
}

void Antenna::EndLeg(double answered)
{
    if (state_ == State::TakingBootArea) {
        report("the boot area is filled, erasing");
        At(answered + pause, [this](double then) { Erase(then); });
        return;
    }
    if (state_ == State::TakingUpgrade) {
        oldLoader_ = false;
        report("the new boot loader is in place: it runs from the next start on");
        return;
    }
    parts_[0].inPlace = true;
    report("the software is complete");
}

}  // namespace sim
