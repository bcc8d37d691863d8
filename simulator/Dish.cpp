#include "simulator/Dish.h"

#include <algorithm>
#include <cmath>

#include "simulator/Fields.h"

namespace sim {

namespace {

// Degrees.
constexpr double step = 0.5;
constexpr double turn = 360;
constexpr double zenith = 90;

/// The number behind the name of an axis.
std::optional<double> Angle(const std::string& field, const std::string& axis)
{
    return Upper(field).starts_with(axis) ? Number(field.substr(axis.size())) : std::nullopt;
}

}  // namespace

void Dish::Start() { *this = {}; }

std::string Dish::Position() const { return "AZ " + Tenths(azimuth_) + " EL " + Tenths(elevation_); }

std::string Dish::Answer(const std::string& command)
{
    const std::string word = Upper(command.substr(0, command.find(',')));
    if (word == "GOTO") return GoTo(command);
    if (word != Upper(command)) return {};
    if (word == "STATE") return std::string("STATE = ") + (follows_ ? "TRACKING" : "HALTED") + ", " + Position();
    if (word == "HALT") {
        follows_ = false;
        return word;
    }
    return word.size() == 1 ? Step(word.front()) : std::string();
}

std::string Dish::GoTo(const std::string& command)
{
    const Fields fields = Split(command);
    if (fields.size() != 3) return Refusal("GOTO");
    const auto azimuth = Angle(fields[1], "AZ"), elevation = Angle(fields[2], "EL");
    const bool reached =
        azimuth && elevation && *azimuth >= 0 && *azimuth < turn && *elevation >= 0 && *elevation <= zenith;
    if (!reached) return Refusal("GOTO");
    azimuth_ = *azimuth;
    elevation_ = *elevation;
    return Position();
}

std::string Dish::Step(char key)
{
    switch (key) {
    case '8': elevation_ = std::min(zenith, elevation_ + step); break;
    case '2': elevation_ = std::max(0.0, elevation_ - step); break;
    case '4': azimuth_ = std::fmod(azimuth_ - step + turn, turn); break;
    case '6': azimuth_ = std::fmod(azimuth_ + step, turn); break;
    default: return {};
    }
    return Position();
}

}  // namespace sim
