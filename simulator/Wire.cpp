#include "simulator/Wire.h"

#include <algorithm>
#include <limits>

namespace sim {

namespace {

constexpr double never = std::numeric_limits<double>::infinity();

/// At the wrong speed a receiver samples the wrong bits. Which byte comes of it doesn't matter, but never the right
/// one.
char Heard(char byte, int sent, int heard) { return sent == heard ? byte : static_cast<char>(byte ^ '\xA5'); }

}  // namespace

Wire::Wire(Antenna& antenna, bool fast) : antenna_(antenna), fast_(fast)
{
    antenna_.transmit = [this](std::string_view bytes, double now) { Say(bytes, now); };
    antenna_.cut = [this](double now) { Cut(now); };
}

Wire::~Wire()
{
    antenna_.transmit = [](std::string_view, double) {};
    antenna_.cut = [](double) {};
}

void Wire::SetBaud(int baud)
{
    if (baud > 0) baud_ = baud;
}

void Wire::Write(std::string_view bytes, double now)
{
    programFree_ = std::max(programFree_, now);
    for (const char byte : bytes) {
        programFree_ += ByteTime(baud_);
        for (const char heard : antenna_.OnTheLine().Pass(Disturbances::Side::Heard, byte))
            toAntenna_.push_back({programFree_, heard, baud_});
    }
}

void Wire::Say(std::string_view bytes, double now)
{
    antennaFree_ = std::max(antennaFree_, now);
    for (const char byte : bytes) {
        antennaFree_ += ByteTime(antenna_.Baud());
        const double hold = antenna_.OnTheLine().Holds();
        if (hold > 0) held_ = antennaFree_ + hold;
        for (const char said : antenna_.OnTheLine().Pass(Disturbances::Side::Said, byte))
            toProgram_.push_back({std::max(antennaFree_, held_), said, antenna_.Baud()});
    }
}

void Wire::Cut(double now)
{
    while (!toProgram_.empty() && toProgram_.back().at > now) toProgram_.pop_back();
    antennaFree_ = std::min(antennaFree_, now);
    held_ = 0;
}

std::string Wire::Read(double now)
{
    Advance(now);
    std::string bytes;
    bytes.swap(arrived_);
    return bytes;
}

double Wire::NextEvent() const
{
    const double sent = toAntenna_.empty() ? never : toAntenna_.front().at;
    const double said = toProgram_.empty() ? never : toProgram_.front().at;
    return std::min({sent, said, antenna_.NextTimer()});
}

void Wire::Deliver(double now)
{
    while (!toProgram_.empty() && toProgram_.front().at <= now) {
        arrived_ += Heard(toProgram_.front().byte, toProgram_.front().baud, baud_);
        toProgram_.pop_front();
    }
}

void Wire::Advance(double now)
{
    while (!toAntenna_.empty() && toAntenna_.front().at <= now) {
        const Byte byte = toAntenna_.front();
        toAntenna_.pop_front();
        antenna_.Advance(byte.at);
        antenna_.Receive(Heard(byte.byte, byte.baud, antenna_.Baud()), byte.at);
    }
    antenna_.Advance(now);
    Deliver(now);
}

}  // namespace sim
