#include "flash/SRecord.h"

#include <stdexcept>

#include "text/Text.h"

namespace {

bool IsData(int type) { return type == 1 || type == 2; }

void ReadData(SRecord& record, std::string_view line)
{
    const std::uint32_t count = text::HexField(line, 3, 2);
    const std::size_t dataAt = static_cast<std::size_t>(record.type) * 2 + 7;
    const std::size_t checksumAt = count * 2 + 3;
    if (checksumAt < dataAt) throw std::invalid_argument("the count is too small for the address");
    std::uint32_t sum = count;
    for (std::size_t at = 5; at < dataAt; at += 2) sum += text::HexField(line, at, 2);
    record.data.reserve((checksumAt - dataAt) / 2);
    for (std::size_t at = dataAt; at < checksumAt; at += 2) {
        record.data.push_back(static_cast<std::uint8_t>(text::HexField(line, at, 2)));
        sum += record.data.back();
    }
    record.checksumFits = text::HexField(line, checksumAt, 2) == 255 - sum % 256;
}

}  // namespace

bool IsSRecord(std::string_view line) { return text::StartsWith(line, "S"); }

SRecord ParseSRecord(std::string_view line)
{
    SRecord record;
    const std::string type = text::Mid(line, 2, 1);
    if (type.empty() || type[0] < '0' || type[0] > '9') throw std::invalid_argument("the record type is no number");
    record.type = type[0] - '0';
    const bool shortAddress = record.type == 1 || record.type == 9;
    text::HexField(line, 3, 2);
    record.address = text::HexField(line, 5, shortAddress ? 4 : 6);
    if (IsData(record.type)) ReadData(record, line);
    return record;
}
