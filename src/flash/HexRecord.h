#pragma once
// Intel HEX records as text: ":LLAAAATTDD...CC". The parsers never know their file.

#include <cstdint>
#include <string_view>
#include <vector>

/// What stands in one line of a .HEX file.
struct HexRecord {
    std::uint32_t address = 0;  // 16 bits
    int type = 0;               // 0 data, 1 end of file, 2 and 4 extended address, 3 and 5 start address
    std::vector<std::uint8_t> data;
};

inline constexpr int HexData = 0;
inline constexpr int HexEndOfFile = 1;
inline constexpr int HexExtendedSegment = 2;
inline constexpr int HexExtendedLinear = 4;

/// Reads a line that is one record and nothing else. Raises std::invalid_argument that says what is wrong with it; the
/// checksum is the two's complement of the sum of all bytes before it.
HexRecord ParseHexRecord(std::string_view line);
