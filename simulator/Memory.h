#pragma once
// The flash memory of a board, and the records that fill it.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

/// A flat memory that is 0xFF where nothing was written.
class Memory {
public:
    static constexpr std::uint32_t Size = 0x200000;  // bytes that the board has

    void Erase();

    /// False, and nothing is written, when the bytes don't fit into the memory.
    bool Write(std::uint32_t address, const std::vector<std::uint8_t>& bytes);

    /// From address 0 up to the last byte that was written.
    std::vector<std::uint8_t> Image() const;

    bool WasWritten(std::uint32_t address) const { return address < written_.size() && written_[address]; }

    /// How many different bytes were written since the erase.
    std::uint32_t BytesWritten() const { return count_; }

private:
    std::vector<std::uint8_t> bytes_;
    std::vector<bool> written_;
    std::uint32_t count_ = 0;
};

/// One Intel HEX record.
struct HexRecord {
    int type = 0;  // 0 data, 1 end, 2 segment, 4 upper address
    std::uint16_t address = 0;
    std::vector<std::uint8_t> data;
};

/// Reads a record, line end left out. Nothing when it is damaged in any way: no colon, a digit that is none, more or
/// fewer characters than its count says, an unknown type, a wrong checksum; `why` tells which.
std::optional<HexRecord> ReadHexRecord(std::string_view line, std::string& why);

/// One S-record.
struct SRecord {
    int type = 0;  // 0 header, 1 to 3 data, 5 and 6 count, 7 to 9 end
    std::uint32_t address = 0;
    std::vector<std::uint8_t> data;
};

/// Reads a record as ReadHexRecord does.
std::optional<SRecord> ReadSRecord(std::string_view line, std::string& why);

}  // namespace sim
