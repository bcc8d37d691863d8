#pragma once
// Intel HEX records as text: ":LLAAAATTDD...CC". The parsers never know their file.

#include <cstdint>
#include <string>
#include <string_view>

/// What stands in one line of a .HEX file.
struct HexRecord {
    int count = 0;              // data bytes
    std::uint32_t address = 0;  // 16 bits
    int type = 0;               // 0 data, 1 end of file, 2 and 4 extended address
};

inline constexpr int HexData = 0;
inline constexpr int HexEndOfFile = 1;
inline constexpr int HexExtendedSegment = 2;

/// Reads the fixed fields of a line and, for data and extended segment records, tests its checksum: the two's
/// complement of the sum of all bytes before it. Raises std::invalid_argument that says what is wrong.
HexRecord ParseHexRecord(std::string_view line);

/// True for the short continuation that some linkers write: one or two data bytes, without the leading colon.
bool IsShortContinuation(std::string_view line);

/// `previous` with the data of the short continuation `current` behind its own and a new count and checksum.
std::string MergeShortRecord(const std::string& previous, const std::string& current);

/// `line` with a checksum behind it. It adds up single decimal digits, which isn't the sum of an Intel HEX record; that
/// is on purpose.
std::string RecalcLineChecksum(const std::string& line);
