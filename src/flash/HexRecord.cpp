#include "flash/HexRecord.h"

#include <stdexcept>

#include "text/Text.h"

HexRecord ParseHexRecord(std::string_view line)
{
    if (line.empty() || (line.front() != ':' && !IsShortContinuation(line)))
        throw std::invalid_argument("the line is no Intel HEX record");
    HexRecord record;
    record.count = static_cast<int>(text::HexField(line, 2, 2));
    record.address = text::HexField(line, 4, 4);
    const std::string type = text::Mid(line, 8, 2);
    if (type.size() != 2 || type.find_first_not_of("0123456789") != std::string::npos)
        throw std::invalid_argument("the record type is no number");
    record.type = static_cast<int>(text::Val(type));
    if (record.type != HexData && record.type != HexExtendedSegment) return record;

    const auto checksumAt = static_cast<std::size_t>(record.count) * 2 + 10;
    std::uint32_t sum = 0;
    for (std::size_t at = 2; at < checksumAt; at += 2) sum += text::HexField(line, at, 2);
    const std::uint32_t expected = (256 - sum % 256) % 256;
    const std::uint32_t found = text::HexField(line, checksumAt, 2);
    if (found != expected)
        throw std::invalid_argument("the checksum is " + text::Hex(found, 2) + ", the data give " +
                                    text::Hex(expected, 2));
    if (!text::Trim(line.substr(checksumAt + 1)).empty())
        throw std::invalid_argument("there is text behind the record");
    return record;
}

bool IsShortContinuation(std::string_view line)
{
    return line.size() >= 8 && line[0] == '0' && (line[1] == '1' || line[1] == '2') && line[6] == '0' && line[7] == '0';
}

std::string MergeShortRecord(const std::string& previous, const std::string& current)
{
    const std::size_t digits = text::Mid(current, 2, 1) == "1" ? 2 : 4;
    std::string merged = text::Left(previous, previous.size() < 2 ? 0 : previous.size() - 2);
    merged += text::Mid(current, 9, digits);
    // Colon, count, address and type are nine characters; the two of the checksum are still to come.
    const std::size_t length = merged.size() < 11 ? 11 : merged.size();
    const std::string count = text::Hex(static_cast<std::uint32_t>((length - 11) / 2), 2);
    return RecalcLineChecksum(text::Left(merged, 1) + count + text::Mid(merged, 4));
}

std::string RecalcLineChecksum(const std::string& line)
{
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < line.size(); at += 2)
        if (line[at] >= '0' && line[at] <= '9') sum += static_cast<std::uint32_t>(line[at] - '0');
    return line + text::Hex(((sum ^ 255U) + 1U) & 0xFFFFU, 2);
}
