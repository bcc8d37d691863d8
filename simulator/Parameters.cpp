#include "simulator/Parameters.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace sim {

namespace {

/// The command takes the calibration angle 30 degrees higher than the antenna tells it.
constexpr double calUpOffset = 30;

/// A parameter with one value, as a command reads and writes it.
struct Simple {
    const char* word;   // the command
    const char* name;   // of the parameter
    const char* label;  // ahead of the value in the answer
    bool numeric;
};

constexpr std::array<Simple, 10> simple{{
    {"BIASAZ", "BIASAZ", "Azimuth Bias = ", true},
    {"BIASEL", "BIASEL", "Elevation Bias = ", true},
    {"GYROANGLE", "GYROANGLE", "Roll Gyro Angle = ", true},
    {"=SERNUM", "SERNUM", "SN = ", true},
    {"INSTANT", "INSTANT", "INSTANT=", false},
    {"SLEEP", "SLEEP", "SLEEP=", false},
    {"SKEWMTR", "SKEWMTR", "SKEWMTR=", false},
    {"DEW", "DEW", "DEW=", false},
    {"RFGAIN", "RFGAIN", "RFGAIN = ", true},
    {"RFOFFSET", "RFOFFSET", "RFOFFSET = ", true},
}};

struct Gyro {
    const char* word;
    const char* axis;
};

constexpr std::array<Gyro, 3> gyros{{{"GYROSFAZ", "Azimuth"}, {"GYROSFEL", "Elevation"}, {"GYROSFSKEW", "Skew"}}};

struct ThreeSatellites {
    const char* word;
    const char* satellites;
};

/// Three satellites are installed by one word for all of them.
constexpr std::array<ThreeSatellites, 6> triples{{
    {"DSS", "DSS_101,DSS_119,DSS_110"},
    {"EWB", "HOTBIRDWB,ASTRA1,ASTRA2S"},
    {"EUR", "HOTBIRD,ASTRA1,ASTRA2S"},
    {"SCN", "HOTBIRDWB,SIRIUS,THOR"},
    {"DISH", "ECHO_119,ECHO_110,ECHO_129"},
    {"DISH61", "ECHO_119,ECHO_110,ECHO_61"},
}};

struct Default {
    const char* name;
    const char* factory;
    const char* installed;
};

/// A satellite of the user's own that nobody has defined.
constexpr const char* noUser = "NONE";

constexpr std::array<Default, 23> defaults{{
    {"BIASAZ", "0.00", "1.25"},
    {"BIASEL", "0.00", "-0.75"},
    {"GYROSFAZ,CW", "0.000000", "-0.001250"},
    {"GYROSFAZ,CCW", "0.000000", "-0.001310"},
    {"GYROSFEL,CW", "0.000000", "0.000980"},
    {"GYROSFEL,CCW", "0.000000", "0.001020"},
    {"GYROSFSKEW,CW", "0.000000", "0.000440"},
    {"GYROSFSKEW,CCW", "0.000000", "0.000450"},
    {"GYROANGLE", "0.0", "2.5"},
    {"CALUP", "30.0", "42.5"},
    {"SATINSTALL", "NONE,NONE", ""},
    {"GPS", "1,N,1,W", "42,N,71,W"},
    {"SERNUM", "000000000", "123456789"},
    {"INSTANT", "OFF", "ON"},
    {"SLEEP", "OFF", "ON"},
    {"SKEWMTR", "OFF", "ON"},
    {"DEW", "OFF", "ON"},
    {"RFGAIN", "0", "12"},
    {"RFOFFSET", "0", "-3"},
    {"FECHITS1", "0000", "0417"},
    {"FECHITS2", "0000", "1A2F"},
    {"USER1", noUser, noUser},
    {"USER2", noUser, noUser},
}};

constexpr std::string_view hitsWord = "FECHITS";

/// What an RF board keeps; a main board keeps the rest, and those that both have.
constexpr std::array<std::string_view, 5> rfNames{"SATINSTALL", "RFGAIN", "RFOFFSET", "FECHITS1", "FECHITS2"};

bool IsOnOrOff(const std::string& text) { return Upper(text) == "ON" || Upper(text) == "OFF"; }

}  // namespace

Parameters::Parameters(const Unit& unit) : position_(unit.position), keeps_(unit.keeps)
{
    if (keeps_ == Keeps::Nothing) return;
    for (const Default& value : defaults) {
        const bool ofRFBoard = std::find(rfNames.begin(), rfNames.end(), std::string_view(value.name)) != rfNames.end();
        const bool ofMainBoard = !std::string_view(value.name).starts_with(hitsWord);
        if (keeps_ == Keeps::OfRFBoard ? ofRFBoard : ofMainBoard) values_.emplace_back(value.name, value.installed);
    }
    Set("SATINSTALL", unit.satellites);
    if (position_ == Position::Words && keeps_ == Keeps::OfMainBoard) Set("GPS", "42.5,N,71.2,W");
}

void Parameters::Lose()
{
    for (const Default& one : defaults) {
        // The user's satellites lie in the EEPROM, which no flash touches.
        if (std::string_view(one.factory) != noUser) Set(one.name, one.factory);
    }
    if (keeps_ == Keeps::OfRFBoard) Set("SATINSTALL", "0,0");
}

void Parameters::Clear()
{
    Lose();
    for (const char* user : {"USER1", "USER2"}) Set(user, noUser);
}

bool Parameters::Has(const std::string& name) const
{
    return std::any_of(values_.begin(), values_.end(), [&](const auto& value) { return value.first == name; });
}

std::string Parameters::Value(const std::string& name) const
{
    const auto at =
        std::find_if(values_.begin(), values_.end(), [&](const auto& value) { return value.first == name; });
    return at == values_.end() ? std::string() : at->second;
}

void Parameters::Set(const std::string& name, const std::string& value)
{
    const auto at = std::find_if(values_.begin(), values_.end(), [&](const auto& one) { return one.first == name; });
    if (at != values_.end()) at->second = value;
}

std::string Parameters::Answer(const std::string& command)
{
    if (values_.empty()) return {};
    Fields fields = Split(Trim(command));
    if (fields.empty()) return {};
    const std::string word = Upper(fields.front());
    fields.erase(fields.begin());

    for (const Simple& one : simple) {
        if (word != one.word || !Has(one.name)) continue;
        if (fields.empty()) return one.label + Value(one.name);
        if (fields.size() != 1 || !(one.numeric ? Number(fields[0]).has_value() : IsOnOrOff(fields[0])))
            return Refusal(word);
        Set(one.name, one.numeric ? fields[0] : Upper(fields[0]));
        return one.label + Value(one.name);
    }
    for (const Gyro& gyro : gyros) {
        if (word == gyro.word && Has(word + ",CW")) return AnswerGyro(word, gyro.axis, fields);
    }
    if (word.starts_with(hitsWord) && Has(word)) return AnswerHits(word, fields);
    if (word == "SATINSTALL" && keeps_ == Keeps::OfRFBoard) return AnswerSatelliteNumbers(fields);
    if (word == "SATINSTALL") return AnswerSatellites(fields);
    if (word == "=CALUP" && Has("CALUP")) return AnswerCalUp(fields);
    if (word == "GPS" && Has(word)) return AnswerPosition(fields);
    if (word == "SATCONFIG" && Has("USER1")) return AnswerUserSatellite(fields);
    return {};
}

std::string Parameters::AnswerGyro(const std::string& word, const std::string& axis, const Fields& fields)
{
    const std::string cw = word + ",CW", ccw = word + ",CCW";
    const auto tell = [&] { return axis + " Gyro Scale Factor: CW = " + Value(cw) + "  CCW = " + Value(ccw); };
    if (fields.empty()) return tell();
    if (fields.size() == 1 && Number(fields[0])) {
        Set(cw, fields[0]);
        Set(ccw, fields[0]);
        return tell();
    }
    if (fields.size() == 1 && (Upper(fields[0]) == "CW" || Upper(fields[0]) == "CCW")) return tell();
    // Directions and values in pairs, all tested before any is set.
    if (fields.size() % 2 != 0) return Refusal(word);
    for (std::size_t i = 0; i < fields.size(); i += 2) {
        const std::string direction = Upper(fields[i]);
        if ((direction != "CW" && direction != "CCW") || !Number(fields[i + 1])) return Refusal(word);
    }
    for (std::size_t i = 0; i < fields.size(); i += 2) Set(word + "," + Upper(fields[i]), fields[i + 1]);
    return tell();
}

std::string Parameters::AnswerCalUp(const Fields& fields)
{
    if (!fields.empty()) {
        const auto angle = fields.size() == 1 ? Number(fields[0]) : std::nullopt;
        if (!angle) return Refusal("=CALUP");
        Set("CALUP", Tenths(*angle));
    }
    return "CALUP = " + Tenths(*Number(Value("CALUP")) - calUpOffset);
}

std::string Parameters::AnswerSatellites(const Fields& fields)
{
    const auto tell = [&] { return "SATINSTALL," + Value("SATINSTALL"); };
    if (fields.empty()) return tell();
    const bool complete = std::none_of(fields.begin(), fields.end(), [](const auto& name) { return name.empty(); });
    if (!complete || fields.size() < 2 || fields.size() > 4) return Refusal("SATINSTALL");
    if (Upper(fields[0]) != "TRISAT") {
        std::string names = fields[0];
        for (std::size_t i = 1; i < fields.size(); ++i) names += "," + fields[i];
        Set("SATINSTALL", names);
        return tell();
    }
    for (const ThreeSatellites& triple : triples) {
        if (Upper(fields[1]) != triple.word) continue;
        Set("SATINSTALL", triple.satellites);
        return tell();
    }
    return Refusal("SATINSTALL");
}

/// USER1 or USER2, longitude, E or W, decode type 1 to 3, polarization C or L.
std::string Parameters::AnswerUserSatellite(const Fields& fields)
{
    const auto oneOf = [&](std::size_t field, std::string_view letters) {
        return fields[field].size() == 1 && letters.find(Upper(fields[field])) != std::string_view::npos;
    };
    if (fields.size() != 5) return Refusal("SATCONFIG");
    const auto longitude = Number(fields[1]);
    const std::string user = Upper(fields[0]);
    const bool valid = (user == "USER1" || user == "USER2") && longitude && *longitude >= 0 && *longitude <= 180 &&
                       oneOf(2, "EW") && oneOf(3, "123") && oneOf(4, "CL");
    if (!valid) return Refusal("SATCONFIG");
    Set(user, fields[1] + "," + Upper(fields[2]) + "," + fields[3] + "," + Upper(fields[4]));
    return "SATCONFIG," + user + "," + Value(user);
}

/// An RF board knows satellites by numbers: it takes "12,7" and tells "12,A, 7,A", two places for each number.
std::string Parameters::AnswerSatelliteNumbers(const Fields& fields)
{
    const bool valid = fields.size() == 2 || fields.size() == 3;
    const bool numbers = std::all_of(fields.begin(), fields.end(), [](const std::string& field) {
        return !field.empty() && field.size() <= 2 && field.find_first_not_of("0123456789") == std::string::npos;
    });
    if (!fields.empty() && (!valid || !numbers)) return Refusal("SATINSTALL");
    if (!fields.empty()) Set("SATINSTALL", fields[0] + "," + fields[1] + (fields.size() == 3 ? "," + fields[2] : ""));
    std::string told = "SATINSTALL";
    for (const std::string& number : Split(Value("SATINSTALL"))) {
        told += "," + std::string(2 - number.size(), ' ') + number + ",A";
    }
    return told;
}

/// Counters of four digits. 0000 only asks: a counter is never set back over the line.
std::string Parameters::AnswerHits(const std::string& word, const Fields& fields)
{
    const bool valid = fields.size() == 1 && fields[0].size() == 4 &&
                       fields[0].find_first_not_of("0123456789ABCDEF") == std::string::npos;
    if (!fields.empty() && !valid) return Refusal(word);
    if (valid && fields[0] != "0000") Set(word, fields[0]);
    return "FEC Hits " + word.substr(hitsWord.size()) + ": " + Value(word);
}

std::string Parameters::AnswerPosition(const Fields& fields)
{
    if (fields.empty()) return TellPosition();
    if (fields.size() != 4) return Refusal("GPS");
    const auto latitude = Number(fields[0]), longitude = Number(fields[2]);
    const std::string northSouth = Upper(fields[1]), eastWest = Upper(fields[3]);
    const bool valid = latitude && *latitude >= 0 && *latitude <= 90 && longitude && *longitude >= 0 &&
                       *longitude <= 180 && (northSouth == "N" || northSouth == "S") &&
                       (eastWest == "E" || eastWest == "W");
    if (!valid) return Refusal("GPS");
    Set("GPS", fields[0] + "," + northSouth + "," + fields[2] + "," + eastWest);
    return TellPosition();
}

std::string Parameters::TellPosition() const
{
    const Fields held = Split(Value("GPS"));
    if (position_ == Position::Words) return "GPS = " + held[0] + held[1] + " " + held[2] + held[3];
    // These antennas keep whole degrees and tell them with a decimal.
    return "GPS," + Tenths(*Number(held[0])) + "," + held[1] + "," + Tenths(*Number(held[2])) + "," + held[3] +
           ",(ACTIVE)";
}

}  // namespace sim
