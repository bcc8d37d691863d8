#pragma once
// The line between the program and the antenna: a byte takes ten bit times, in each direction by itself.

#include <deque>
#include <string>
#include <string_view>

#include "simulator/Antenna.h"

namespace sim {

/// Times are seconds and never run backwards. A byte that was sent at another speed than the one at which its receiver
/// listens when it arrives comes as a wrong one.
class Wire {
public:
    /// A fast wire takes no time for a byte; the antenna's own times stay. The antenna must outlive the wire.
    Wire(Antenna& antenna, bool fast);
    ~Wire();
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

    /// The program's speed from here on; 9600 at first. Bytes already written keep theirs.
    void SetBaud(int baud);

    /// The program sends; the first byte arrives ten bit times after now or after the byte before it.
    void Write(std::string_view bytes, double now);

    /// What has arrived at the program by now and wasn't read before.
    std::string Read(double now);

    /// The earliest moment at which a byte arrives at either side or a timer of the antenna is due; infinity when
    /// nothing is under way.
    double NextEvent() const;

    /// Runs everything up to now, in the order of time.
    void Advance(double now);

private:
    struct Byte {
        double at;  // when it has arrived
        char byte;
        int baud;  // of its sender
    };

    double ByteTime(int baud) const { return fast_ ? 0 : 10.0 / baud; }
    void Say(std::string_view bytes, double now);
    void Cut(double now);
    void Deliver(double now);

    Antenna& antenna_;
    bool fast_;
    int baud_ = 9600;
    std::deque<Byte> toAntenna_, toProgram_;
    double programFree_ = 0, antennaFree_ = 0;  // when the line is free in each direction
    double held_ = 0;                           // what the antenna says arrives no earlier
    std::string arrived_;
};

}  // namespace sim
