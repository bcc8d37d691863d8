#include "flash/SRecord.h"

#include <array>
#include <numeric>
#include <stdexcept>

#include "flash/RecordBytes.h"
#include "text/Text.h"

namespace {

/// Bytes of the address by type; 0: there is no such type.
constexpr std::array<std::size_t, 10> addressBytes{2, 2, 3, 4, 0, 2, 3, 4, 3, 2};

}  // namespace

SRecord ParseSRecord(std::string_view line)
{
    if (line.size() < 2 || line[0] != 'S') throw std::invalid_argument("the line is no S-record");
    const std::size_t type = static_cast<unsigned char>(line[1]) - std::size_t{'0'};
    if (type >= addressBytes.size() || addressBytes[type] == 0)
        throw std::invalid_argument("there is no S-record of this type");
    const std::vector<std::uint8_t> bytes = RecordBytes(line.substr(2));
    const std::size_t length = addressBytes[type];
    if (bytes.empty() || bytes.size() - 1 < bytes[0])
        throw std::invalid_argument("the line is shorter than its count says");
    if (bytes.size() - 1 > bytes[0]) throw std::invalid_argument("the line is longer than its count says");
    if (bytes[0] < length + 1) throw std::invalid_argument("the count is too small for the address");
    if (type > 3 && bytes[0] > length + 1) throw std::invalid_argument("the count doesn't fit the type of the record");
    const unsigned sum = std::accumulate(bytes.begin(), bytes.end() - 1, 0U);
    if (bytes.back() != 255 - sum % 256)
        throw std::invalid_argument("the checksum is " + text::Hex(bytes.back(), 2) + ", the data give " +
                                    text::Hex(255 - sum % 256, 2));
    return {static_cast<int>(type),
            RecordNumber(bytes, 1, length),
            {bytes.begin() + 1 + static_cast<std::ptrdiff_t>(length), bytes.end() - 1}};
}
