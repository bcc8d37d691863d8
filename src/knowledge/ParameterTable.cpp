#include "knowledge/ParameterTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "text/Text.h"

namespace {

using Fields = std::vector<std::string>;
using Form = std::optional<std::string>;

// --- what a value can be ---------------------------------------------------------------------------------------------

bool Holds(const std::string& field, const char* characters)
{
    return !field.empty() && field.find_first_not_of(characters) == std::string::npos;
}

bool IsNumber(const std::string& field) { return Holds(field, "+-.0123456789") && text::IsNumeric(field); }

bool IsOneOf(const std::string& field, std::initializer_list<const char*> words)
{
    return std::any_of(words.begin(), words.end(), [&](const char* word) { return text::Equal(field, word); });
}

bool IsName(const std::string& field)
{
    return Holds(text::Upper(field), "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+./ ");
}

bool AreNumbers(const Fields& value) { return value.size() == 1 && IsNumber(value[0]); }

bool AreSwitches(const Fields& value) { return value.size() == 1 && IsOneOf(value[0], {"ON", "OFF"}); }

bool AreSerialNumbers(const Fields& value)
{
    constexpr std::size_t shortest = 7;
    return value.size() == 1 && value[0].size() >= shortest &&
           Holds(text::Upper(value[0]), "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-");
}

bool AreHits(const Fields& value)
{
    return value.size() == 1 && value[0].size() == 4 && Holds(text::Upper(value[0]), "0123456789ABCDEF");
}

bool AreScales(const Fields& value)
{
    const bool both = value.size() == 4 && IsOneOf(value[0], {"CW"}) && IsOneOf(value[2], {"CCW"});
    return AreNumbers(value) || (both && IsNumber(value[1]) && IsNumber(value[3]));
}

bool IsAngle(const std::string& field, double highest)
{
    return IsNumber(field) && text::Val(field) >= 0 && text::Val(field) <= highest;
}

bool ArePositions(const Fields& value)
{
    return value.size() == 4 && IsAngle(value[0], 90) && IsOneOf(value[1], {"N", "S"}) && IsAngle(value[2], 180) &&
           IsOneOf(value[3], {"E", "W"});
}

bool AreNames(const Fields& value)
{
    return value.size() >= 2 && value.size() <= 4 && std::all_of(value.begin(), value.end(), IsName);
}

// --- from the antenna's words to the command -------------------------------------------------------------------------

/// A line and the command that it may answer.
struct Told {
    const std::string& command;  // upper case
    std::string words;           // what stands behind the label
    const ParameterFacts& facts;
};

Form WithValue(const Told& told, const std::string& value) { return told.command + "," + value; }

/// The text behind "=", blanks aside; none when it doesn't come first.
Form BehindEquals(const std::string& words)
{
    const std::string trimmed = text::Trim(words);
    return text::StartsWith(trimmed, "=") ? Form(text::Trim(text::Mid(trimmed, 2))) : std::nullopt;
}

/// "Azimuth Bias = 1.5", "INSTANT=ON"
Form SingleValue(const Told& told)
{
    const Form value = BehindEquals(told.words);
    return value ? WithValue(told, *value) : std::nullopt;
}

/// Two numbers that differ by no more than what a 32-bit number loses are one number to the antenna.
bool AreSame(double a, double b) { return std::abs(a - b) <= 2.4e-7 * std::max(std::abs(a), std::abs(b)); }

std::string Shortest(double value)
{
    std::array<char, 512> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return std::string(digits.data(), end.ptr);
}

/// With as few digits as name the same number: 21.029999 is 21.03.
std::string Rounded(double value)
{
    for (int digits = 1; digits <= 9; ++digits) {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "%.*e", digits - 1, value);
        const double rounded = std::strtod(text.data(), nullptr);
        if (AreSame(rounded, value)) return Shortest(rounded);
    }
    return Shortest(value);
}

/// The antenna reports the angle 30 lower than the command takes it.
Form CalUp(const Told& told)
{
    const Form value = BehindEquals(told.words);
    if (!value || !IsNumber(*value)) return std::nullopt;
    const std::string angle = Rounded(text::Val(*value) + 30);
    return WithValue(told, angle + (angle.find('.') == std::string::npos ? ".0" : ""));
}

/// "FEC Hits 1: 0A3F" answers "FECHITS1,0000", which only reads.
Form Hits(const Told& told) { return told.command.substr(0, told.command.find(',')) + "," + text::Trim(told.words); }

/// ">GPS,39.12,N,105.02,W,(ACTIVE)" gives "GPS,39,N,105,W".
Form WholeDegrees(const Told& told)
{
    Fields fields = text::Split(text::Replace(told.words, " ", ""), ",");
    if (fields.size() < 5 || !IsNumber(fields[1]) || !IsNumber(fields[3])) return std::nullopt;
    for (const std::size_t coordinate : {1U, 3U})
        fields[coordinate] = fields[coordinate].substr(0, fields[coordinate].find('.'));
    return WithValue(told, fields[1] + "," + fields[2] + "," + fields[3] + "," + fields[4]);
}

/// ">GPS = 42.5N 71.2W" gives "GPS,42.5,N,71.2,W".
Form DecimalDegrees(const Told& told)
{
    const Form position = BehindEquals(told.words);
    if (!position) return std::nullopt;
    std::string value;
    int coordinates = 0;
    for (const std::string& word : text::Split(*position, " ")) {
        if (word.empty() || coordinates == 2) continue;
        if (!IsNumber(text::Left(word, word.size() - 1))) return std::nullopt;
        value += (value.empty() ? "" : ",") + Shortest(text::Val(word)) + "," + word.back();
        ++coordinates;
    }
    return WithValue(told, value);
}

Form Position(const Told& told) { return told.facts.wholeDegrees ? WholeDegrees(told) : DecimalDegrees(told); }

/// "SATINSTALL,12,A, 7,A,31,A" gives "SATINSTALL,12,7,31": two characters for each satellite, five places apart.
Form SatelliteNumbers(const Told& told)
{
    constexpr std::size_t apart = 5;
    const std::string numbers = told.words.substr(1, told.words.find_last_not_of(' '));
    std::string command = told.command;
    std::size_t satellites = 0;
    for (std::size_t at = 1; at <= numbers.size(); at += apart, ++satellites) {
        const std::string number = text::Trim(text::Mid(numbers, at, 2));
        const std::string behind = text::Mid(numbers, at + 2, 3);
        const bool separated = Holds(behind, " ") || behind.empty() ||
                               (behind[0] == ',' && behind.size() > 1 && IsName(behind.substr(1, 1)) &&
                                (behind.size() == 2 || behind[2] == ','));
        if (!Holds(number, "0123456789") || !separated) return std::nullopt;
        command += "," + number;
    }
    return satellites == 2 || satellites == 3 ? Form(command) : std::nullopt;
}

/// Three satellites that the new software knows under one name.
struct Triple {
    const char* satellites;
    const char* name;
};
constexpr std::array<Triple, 6> triples{{
    {"DSS_101,DSS_119,DSS_110", "DSS"},
    {"HOTBIRDWB,ASTRA1,ASTRA2S", "EWB"},
    {"HOTBIRD,ASTRA1,ASTRA2S", "EUR"},
    {"HOTBIRDWB,SIRIUS,THOR", "SCN"},
    {"ECHO_119,ECHO_110,ECHO_129", "DISH"},
    {"ECHO_119,ECHO_110,ECHO_61", "DISH61"},
}};

Form SatInstall(const Told& told)
{
    const Board& board = BoardOf(told.facts.boardType);
    if (!text::StartsWith(told.words, ",")) return std::nullopt;
    if (board.numbersSatellites) return SatelliteNumbers(told);
    Fields names = text::Split(text::Mid(told.words, 2), ",");
    for (std::string& name : names) name = text::Trim(name);
    if (!AreNames(names)) return std::nullopt;
    if (board.renamesSatellites && names.size() == 3) {
        const std::string installed = names[0] + "," + names[1] + "," + names[2];
        for (const Triple& triple : triples)
            if (text::Equal(installed, triple.satellites)) return WithValue(told, std::string("TRISAT,") + triple.name);
        return "";
    }
    std::string command = told.command;
    const bool translated = board.renamesSatellites && told.facts.translateNames && names.size() == 2;
    for (const std::string& name : names) command += "," + (translated ? SatNameNew(name) : name);
    return command;
}

/// The number behind "CW =" or "CCW =", up to the next blank.
Form Turn(const std::string& factors, const char* mark)
{
    const std::size_t at = text::Find(factors, mark);
    if (at == 0) return std::nullopt;
    const std::string value = text::Trim(text::Mid(factors, at + std::string_view(mark).size()));
    return value.substr(0, value.find(' '));
}

/// "Azimuth Gyro Scale Factor: CW = -0.001000  CCW = -0.001000", or "Azimuth Gyro Scale Factor = -0.001000". The
/// command asks for one turn, "GYROSFAZ,CW", or for all there is.
Form GyroScale(const Told& told)
{
    if (!text::StartsWith(told.words, ":")) return SingleValue(told);
    const Form cw = Turn(told.words, " CW ="), ccw = Turn(told.words, " CCW =");
    if (!cw || !ccw || !IsNumber(*cw) || !IsNumber(*ccw)) return std::nullopt;
    const std::string turn = text::Mid(told.command, told.command.find(',') + 2);
    if (turn == "CW") return WithValue(told, *cw);
    if (turn == "CCW") return WithValue(told, *ccw);
    return WithValue(told, "CW," + *cw + ",CCW," + *ccw);
}

struct Parameter {
    const char* command;
    const char* label;               // ahead of the value in what the antenna says
    Form (*write)(const Told&);      // the command that restores it; empty: there is none
    bool (*isValue)(const Fields&);  // what stands behind the command then
    bool isNumber = true;            // a value of digits is a number, not a name
};

constexpr std::array<Parameter, 26> parameters{{
    {"RFGAIN", "RFGAIN", SingleValue, AreNumbers},
    {"RFOFFSET", "RFOFFSET", SingleValue, AreNumbers},
    {"INSTANT", "INSTANT", SingleValue, AreSwitches},
    {"SLEEP", "SLEEP", SingleValue, AreSwitches},
    {"SKEWMTR", "SKEWMTR", SingleValue, AreSwitches},
    {"DEW", "DEW", SingleValue, AreSwitches},
    {"=SERNUM", "SN", SingleValue, AreSerialNumbers, false},
    {"BIASAZ", "Azimuth Bias", SingleValue, AreNumbers},
    {"BIASEL", "Elevation Bias", SingleValue, AreNumbers},
    {"GYROANGLE", "Roll Gyro Angle", SingleValue, AreNumbers},
    {"=CALUP", "CALUP", CalUp, AreNumbers},
    {"GPS", "GPS", Position, ArePositions},
    {"SATINSTALL", "SATINSTALL", SatInstall, AreNames},
    {"FECHITS1,0000", "FEC Hits 1:", Hits, AreHits, false},
    {"FECHITS2,0000", "FEC Hits 2:", Hits, AreHits, false},
    {"FECHITS1", "FEC Hits 1:", Hits, AreHits, false},
    {"FECHITS2", "FEC Hits 2:", Hits, AreHits, false},
    {"GYROSFAZ", "Azimuth Gyro Scale Factor", GyroScale, AreScales},
    {"GYROSFAZ,CW", "Azimuth Gyro Scale Factor", GyroScale, AreScales},
    {"GYROSFAZ,CCW", "Azimuth Gyro Scale Factor", GyroScale, AreScales},
    {"GYROSFEL", "Elevation Gyro Scale Factor", GyroScale, AreScales},
    {"GYROSFEL,CW", "Elevation Gyro Scale Factor", GyroScale, AreScales},
    {"GYROSFEL,CCW", "Elevation Gyro Scale Factor", GyroScale, AreScales},
    {"GYROSFSKEW", "Skew Gyro Scale Factor", GyroScale, AreScales},
    {"GYROSFSKEW,CW", "Skew Gyro Scale Factor", GyroScale, AreScales},
    {"GYROSFSKEW,CCW", "Skew Gyro Scale Factor", GyroScale, AreScales},
}};

const Parameter* RowOf(const std::string& command)
{
    const auto row = std::find_if(parameters.begin(), parameters.end(),
                                  [&](const Parameter& one) { return text::Equal(one.command, command); });
    return row == parameters.end() ? nullptr : row;
}

std::string WordOf(const std::string& command) { return command.substr(0, command.find(',')); }

/// Where a label stands as a word of its own; 0 when it doesn't.
std::size_t FindLabel(const std::string& line, const char* label)
{
    const std::size_t at = text::Find(line, label);
    return at > 1 && IsName(line.substr(at - 2, 1)) && line[at - 2] != ' ' ? 0 : at;
}

}  // namespace

bool IsParameter(const std::string& command, int boardType)
{
    const Parameter* row = RowOf(command);
    if (row == nullptr) return false;
    // Boards that are neither main nor RF boards know no satellites, but two that number them.
    return row->write != SatInstall || IsMainBoard(boardType) || BoardOf(boardType).numbersSatellites;
}

bool AreOfOneParameter(const std::string& command, const std::string& other)
{
    const Parameter *a = RowOf(WordOf(command)), *b = RowOf(WordOf(other));
    return a != nullptr && a == b;
}

std::optional<ToldParameter> ToldBy(const std::string& line, const std::string& command, const ParameterFacts& facts)
{
    const Parameter* row = RowOf(command);
    const std::size_t at = row == nullptr ? 0 : FindLabel(line, row->label);
    if (at == 0) return std::nullopt;
    const std::string upper = text::Upper(command);
    const std::string words = text::Mid(line, at + std::string_view(row->label).size());
    const Form restoring = row->write({upper, words, facts});
    if (!restoring) return std::nullopt;
    const std::string word = row->write == Hits ? WordOf(upper) : upper;
    if (!restoring->empty() && !row->isValue(text::Split(text::Mid(*restoring, word.size() + 2), ",")))
        return std::nullopt;
    const std::size_t value = words.find_first_not_of(" =:,");
    return ToldParameter{text::Trim(value == std::string::npos ? "" : words.substr(value)), *restoring};
}

std::string NameOf(const std::string& command)
{
    const Parameter* row = RowOf(command);
    return text::Upper(row != nullptr && row->write == Hits ? WordOf(command) : command);
}

bool RestoreTheSame(const std::string& command, const std::string& other)
{
    const Fields a = text::Split(command, ","), b = text::Split(other, ",");
    const Parameter* row = RowOf(WordOf(command));
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](const std::string& one, const std::string& two) {
        const bool numbers = row != nullptr && row->isNumber && IsNumber(one) && IsNumber(two);
        if (numbers) return AreSame(text::Val(one), text::Val(two));
        return one == two || (AreSwitches({one}) && text::Equal(one, two));
    });
}

bool IsEchoOf(const std::string& line, const std::string& command)
{
    const Parameter* row = RowOf(WordOf(command));
    return row != nullptr && (FindLabel(line, row->label) > 0 || text::Holds(line, WordOf(command)));
}
