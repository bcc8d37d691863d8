#pragma once
// Motorola S-records as text: "S1LLAAAADD...CC". The parsers never know their file.

#include <cstdint>
#include <string_view>
#include <vector>

/// One S-record's fields. The address has 16 bits in records of type 1 and 9, 24 bits in all others; `data` excludes
/// address and checksum.
struct SRecord {
    int type = 0;
    std::uint32_t address = 0;
    std::vector<std::uint8_t> data;  // of types 1 and 2
    bool checksumFits = true;        // of types 1 and 2: the complement of the sum of all bytes before it
};

/// True when the line is a record at all; lines of another kind are passed over.
bool IsSRecord(std::string_view line);

/// Reads a record. Raises std::invalid_argument that says what is wrong: a field that is no number, a count beyond the
/// line. The checksum is told, not tested, since a record that a board has no use for may have a wrong one.
SRecord ParseSRecord(std::string_view line);
