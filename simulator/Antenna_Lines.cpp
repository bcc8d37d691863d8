// The boot loader takes lines of Intel HEX.

#include "simulator/Antenna.h"

namespace sim {

namespace {

constexpr std::size_t longestLine = 1 + 2 * (255 + 5);
constexpr int linesBetweenReports = 500;

}  // namespace

void Antenna::TakeLineByte(char byte, double now)
{
    const bool strict = unit_.lines == Lines::Strict;
    if (byte == '\n' && !strict) return;
    if (byte != '\r') {
        if (input_.size() <= longestLine) input_ += byte;
        return;
    }
    std::string line;
    line.swap(input_);
    if (line.empty() && !strict) return;
    Work(now, [this, line](double then) { TakeLine(line, then); });
}

void Antenna::TakeLine(const std::string& line, double now)
{
    const int number = goodLines_ + 1;
    lastLineGood_ = false;
    if (LosesPower("power-lost", number, now)) return;
    if (faults_.Strikes("silent", number)) {
        report("line " + std::to_string(number) + " is lost");
        return;
    }
    std::string why = "on request";
    if (faults_.Strikes("refuse", number) || !Store(line, why)) {
        ++refusedLines_;
        report("line " + std::to_string(number) + " refused: " + why);
        Acknowledge("1", now);
        return;
    }
    ++goodLines_;
    lastLineGood_ = true;
    if (number == 1 || number % linesBetweenReports == 0) report(std::to_string(number) + " lines taken");
    Acknowledge(faults_.Strikes("both", number) ? "$1" : "$", now);
}

bool Antenna::Store(const std::string& line, std::string& why)
{
    const auto record = ReadHexRecord(line, why);
    if (!record) return false;
    const auto word = [&] { return static_cast<std::uint32_t>(record->data[0] * 256 + record->data[1]); };
    switch (record->type) {
    case 2: upper_ = word() << 4; return true;
    case 4: upper_ = word() << 16; return true;
    case 0: break;
    default: return true;
    }
    if (parts_[0].memory.Write(upper_ + record->address, record->data)) return true;
    why = "beyond the end of the memory";
    return false;
}

}  // namespace sim
