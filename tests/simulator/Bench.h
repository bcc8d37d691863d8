#pragma once
// An antenna on a wire under a clock of its own, and the program's part played by hand.

#include <cstdio>
#include <string>
#include <vector>

#include "simulator/Antenna.h"
#include "simulator/Wire.h"

/// A record in hexadecimal digits, closed by the byte that `checksum` makes of the sum of all.
template <class Checksum>
std::string HexDigits(const std::vector<int>& bytes, Checksum checksum)
{
    std::string digits;
    int sum = 0;
    const auto add = [&](int byte) {
        char text[8];
        std::snprintf(text, sizeof text, "%02X", byte & 0xFF);
        digits += text;
        sum += byte & 0xFF;
    };
    for (const int byte : bytes) add(byte);
    add(checksum(sum));
    return digits;
}

/// An Intel HEX record without line end.
inline std::string Record(int type, int address, const std::vector<int>& data)
{
    std::vector<int> bytes{static_cast<int>(data.size()), address >> 8, address, type};
    bytes.insert(bytes.end(), data.begin(), data.end());
    return ":" + HexDigits(bytes, [](int sum) { return -sum; });
}

/// An S-record likewise; the address has four digits, or six for type 2.
inline std::string SRecord(int type, int address, const std::vector<int>& data)
{
    std::vector<int> bytes{static_cast<int>(data.size()) + (type == 2 ? 4 : 3)};
    if (type == 2) bytes.push_back(address >> 16);
    bytes.insert(bytes.end(), {address >> 8, address});
    bytes.insert(bytes.end(), data.begin(), data.end());
    return "S" + std::to_string(type) + HexDigits(bytes, [](int sum) { return 255 - sum; });
}

struct Bench {
    explicit Bench(int board, const std::string& name = {}, bool fast = false)
        : antenna(*sim::FindUnit(board, name)), wire(antenna, fast)
    {
        wire.SetBaud(antenna.Kind().baud);
    }

    /// Lets time pass; gives what the antenna said meanwhile.
    std::string Wait(double seconds) { return wire.Read(now += seconds); }

    /// Sends and gives what came back within a second.
    std::string Ask(const std::string& text, double seconds = 1)
    {
        wire.Write(text, now);
        return Wait(seconds);
    }

    void Power(bool on)
    {
        wire.Advance(now);
        antenna.SetPower(on, now);
    }

    bool Fault(const std::string& words)
    {
        std::string why;
        return antenna.SetFault(words, why);
    }

    /// Power, sign-on, program command, erase: the next thing to send is a line. Gives what the antenna said.
    std::string StartFlash()
    {
        Power(false);
        Power(true);
        std::string said = Wait(1);
        const bool plain = antenna.Kind().lines == sim::Lines::Ordinary;
        return said += Ask(antenna.Kind().command + std::string(plain ? "" : "\r"), antenna.Kind().eraseSeconds + 2);
    }

    sim::Antenna antenna;
    sim::Wire wire;
    double now = 0;
};
