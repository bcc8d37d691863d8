#include "simulator/Flood.h"

#include <array>
#include <cstdio>

namespace sim {

std::string FloodText(std::size_t bytes)
{
    constexpr std::array<const char*, 4> tails{"", " SEARCHING", " AZ MOTOR 12 EL MOTOR 31 SKEW MOTOR 4",
                                               " LOCKED DVB"};
    constexpr std::size_t longestLine = 96;
    std::string text;
    text.reserve(bytes + longestLine);
    for (unsigned line = 1; text.size() < bytes; ++line) {
        std::array<char, longestLine> words{};
        std::snprintf(words.data(), words.size(), "%06u AZ %u.%u EL %u.%u SIG %u%s\r\n", line, line * 7 % 360,
                      line % 10, line * 3 % 90, line * 7 % 10, line * 11 % 100, tails[line * line / 3 % tails.size()]);
        text += words.data();
    }
    text.resize(bytes);
    return text;
}

}  // namespace sim
