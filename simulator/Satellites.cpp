#include "simulator/Satellites.h"

#include <array>

#include "simulator/Fields.h"

namespace sim {

namespace {

struct Pairs {
    const char* first;
    const char* seconds;
};

constexpr std::array<Pairs, 5> pairs{{
    {"DSS_101", "DSS_119,DSS_110"},
    {"ECHO_119", "ECHO_110,ECHO_129,ECHO_61"},
    {"HOTBIRD", "ASTRA1,ASTRA2S,SIRIUS,THOR"},
    {"ASTRA1", "HOTBIRD,ASTRA2S"},
    {"NILESAT", "ARABSAT"},  // a single one
}};

}  // namespace

std::string AnswerSatelliteList(const std::string& command)
{
    const Fields fields = Split(command);
    const std::string word = fields.empty() ? std::string() : Upper(fields[0]);
    if (word != "SATLISTA" && word != "SATLISTB") return {};
    std::string list = word;
    if (word == "SATLISTA") {
        for (const Pairs& pair : pairs) list += std::string(",") + pair.first;
        return fields.size() == 1 ? list : Refusal(word);
    }
    for (const Pairs& pair : pairs) {
        if (fields.size() == 2 && Upper(fields[1]) == pair.first) return list + "," + pair.seconds;
    }
    return Refusal(word);
}

}  // namespace sim
