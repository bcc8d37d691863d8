// The boot loader of the board of three parts: a command for each part, a speed, S-records as text lines.

#include <array>

#include "simulator/Antenna.h"

namespace sim {

namespace {

constexpr std::size_t longestLine = 600;
constexpr int recordsBetweenReports = 500;
constexpr double speedPause = 0.1;       // seconds in which both ends change their speed
constexpr std::size_t familyLength = 6;  // of "F61340B", whose rest is the revision

/// One command for each part, in the order of the parts.
constexpr std::array<const char*, 3> partCommands{"PGM_RF7", "PGM_RF7_FPGA", "PGM_RF7_BAPI"};

struct Speed {
    const char* word;
    int baud;
};
constexpr std::array<Speed, 2> speeds{{{"BAUDRATE=A", 9600}, {"BAUDRATE=C", 38400}}};

}  // namespace

/// True when the line is complete: its end is CR LF, and nothing less. The line comes without it.
bool Antenna::TakeWholeLine(char byte, std::string& line)
{
    if (input_.size() <= longestLine) input_ += byte;
    if (byte != '\n' || !input_.ends_with("\r\n")) return false;
    line.swap(input_);
    input_.clear();
    line.resize(line.size() - 2);
    return true;
}

void Antenna::AwaitStageCommand(char byte, double now)
{
    std::string line;
    if (!TakeWholeLine(byte, line)) return;
    for (std::size_t part = 0; part < partCommands.size(); ++part) {
        const std::string_view command = partCommands[part];
        if (!line.ends_with(command)) continue;
        strayBytes_ += static_cast<int>(line.size() - command.size());
        report("program command for part " + std::to_string(part + 1) + " taken");
        timers_.clear();
        part_ = part;
        state_ = State::AwaitingSpeed;
        Answer("\r\n?BAUDRATE\r\n", now);
        return;
    }
    strayBytes_ += static_cast<int>(line.size());
    report("no program command: " + line);
}

void Antenna::AwaitSpeed(char byte, double now)
{
    std::string line;
    if (!TakeWholeLine(byte, line)) return;
    for (const Speed& speed : speeds) {
        if (line != speed.word) continue;
        baud_ = speed.baud;
        report("goes on at " + std::to_string(speed.baud) + " baud, erasing");
        Wipe();
        At(now + speedPause, [this](double then) { Erase(then); });
        state_ = State::Erasing;
        return;
    }
    report("no speed: " + line);
    Answer("\r\n?BAUDRATE\r\n", now);
}

void Antenna::TakeRecordByte(char byte, double now)
{
    std::string line;
    if (TakeWholeLine(byte, line) && !line.empty()) Work(now, [this, line](double then) { TakeRecord(line, then); });
}

void Antenna::TakeRecord(const std::string& line, double now)
{
    const int number = goodLines_ + 1;
    lastLineGood_ = false;
    if (LosesPower("power-lost", number, now)) return;
    if (faults_.Strikes("silent", number)) {
        report("record " + std::to_string(number) + " is lost");
        return;
    }
    std::string why = "on request";
    if (faults_.Strikes("refuse", number) || !StoreRecord(line, why)) {
        ++refusedLines_;
        report("record " + std::to_string(number) + " refused: " + why);
        Acknowledge("ERROR\r\n", now);
        return;
    }
    goodLines_ = number;
    lastLineGood_ = true;
    if (number == 1 || number % recordsBetweenReports == 0) report(std::to_string(number) + " records taken");
    Acknowledge("SA\r\n", now);
}

bool Antenna::StoreRecord(const std::string& line, std::string& why)
{
    const auto record = ReadSRecord(line, why);
    if (!record) return false;
    Part& part = parts_[part_];
    if (record->type == 0) {
        const std::string header(record->data.begin(), record->data.end());
        if (header.size() > familyLength) part.revision = header.substr(familyLength);
    }
    if (record->type < 1 || record->type > 3 || part.memory.Write(record->address, record->data)) return true;
    why = "beyond the end of the memory";
    return false;
}

}  // namespace sim
