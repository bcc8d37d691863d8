#include "flash/RecordBytes.h"

#include <stdexcept>
#include <string>

namespace {

int DigitOf(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c == '\r') throw std::invalid_argument("there is a CR without its LF");
    const bool shown = c > ' ' && c <= '~';
    throw std::invalid_argument(shown ? std::string("\"") + c + "\" is no hexadecimal digit"
                                      : "there is a character that is no hexadecimal digit");
}

}  // namespace

std::vector<std::uint8_t> RecordBytes(std::string_view digits)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(digits.size() / 2);
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2)
        bytes.push_back(static_cast<std::uint8_t>(DigitOf(digits[at]) << 4 | DigitOf(digits[at + 1])));
    if (digits.size() % 2 != 0) throw std::invalid_argument("the line ends in half a byte");
    return bytes;
}

std::uint32_t RecordNumber(const std::vector<std::uint8_t>& bytes, std::size_t first, std::size_t count)
{
    std::uint32_t number = 0;
    for (std::size_t at = first; at < first + count; ++at) number = number << 8 | bytes.at(at);
    return number;
}
