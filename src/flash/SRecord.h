#pragma once
// Motorola S-records as text: "S1LLAAAADD...CC". The parsers never know their file.

#include <cstdint>
#include <string_view>
#include <vector>

/// One S-record's fields. The address has 16 bits in records of type 0, 1, 5 and 9, 24 bits in those of type 2, 6 and
/// 8, 32 bits in those of type 3 and 7; `data` excludes address and checksum.
struct SRecord {
    int type = 0;
    std::uint32_t address = 0;  // of types 5 and 6: how many data records there are
    std::vector<std::uint8_t> data;
};

/// Reads a line that is one record and nothing else. Raises std::invalid_argument that says what is wrong with it; the
/// checksum is the complement of the sum of all bytes before it.
SRecord ParseSRecord(std::string_view line);
