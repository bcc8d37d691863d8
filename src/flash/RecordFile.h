#pragma once
// The records of a flash file in their order: what a line means, and whether it may stand there, depends on those ahead
// of it. Knows neither its file nor the board that it is for.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum class RecordKind { Hex, S };

/// Data of one record and the address of its first byte.
struct DataRecord {
    std::uint32_t address = 0;
    std::vector<std::uint8_t> data;
};

class RecordFile {
public:
    explicit RecordFile(RecordKind kind) : kind_(kind) {}

    /// Takes the next line that isn't blank. Gives the data of a data record, at the address that the extended address
    /// records ahead of it make of its own. Raises std::invalid_argument that says what is wrong with the line.
    std::optional<DataRecord> Take(std::string_view line);

    /// What is wrong with the file as a whole once its last line was taken; empty when nothing is.
    std::string Fault() const;

    /// What one wonders about in sound records, in words.
    std::vector<std::string> Oddities() const;

private:
    std::optional<DataRecord> TakeHex(std::string_view line);
    std::optional<DataRecord> TakeS(std::string_view line);

    RecordKind kind_;
    std::uint32_t base_ = 0;  // of the extended address record in force
    bool holdsData_ = false;
    bool ended_ = false;
    bool lateTitle_ = false;
    std::uint32_t records_ = 0;           // data records so far
    std::optional<std::uint32_t> count_;  // as the file tells it
};
