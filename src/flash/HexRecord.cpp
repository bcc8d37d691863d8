#include "flash/HexRecord.h"

#include <array>
#include <numeric>
#include <stdexcept>

#include "flash/RecordBytes.h"
#include "text/Text.h"

namespace {

/// Data bytes by type; -1: any number.
constexpr std::array<int, 6> dataBytes{-1, 0, 2, 4, 2, 4};
constexpr std::size_t fixedBytes = 5;  // count, address, type, checksum

}  // namespace

HexRecord ParseHexRecord(std::string_view line)
{
    if (!line.starts_with(':')) throw std::invalid_argument("the line is no Intel HEX record");
    const std::vector<std::uint8_t> bytes = RecordBytes(line.substr(1));
    if (bytes.empty() || bytes.size() < bytes[0] + fixedBytes)
        throw std::invalid_argument("the line is shorter than its count says");
    if (bytes.size() > bytes[0] + fixedBytes) throw std::invalid_argument("the line is longer than its count says");
    const unsigned expected = (256 - std::accumulate(bytes.begin(), bytes.end() - 1, 0U) % 256) % 256;
    if (bytes.back() != expected)
        throw std::invalid_argument("the checksum is " + text::Hex(bytes.back(), 2) + ", the data give " +
                                    text::Hex(expected, 2));
    const std::uint8_t type = bytes[3];
    if (type >= dataBytes.size()) throw std::invalid_argument("there is no Intel HEX record of this type");
    if (dataBytes[type] >= 0 && bytes[0] != dataBytes[type])
        throw std::invalid_argument("the count doesn't fit the type of the record");
    return {RecordNumber(bytes, 1, 2), type, {bytes.begin() + 4, bytes.end() - 1}};
}
