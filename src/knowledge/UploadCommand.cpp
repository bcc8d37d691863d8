#include "knowledge/UploadCommand.h"

#include <array>
#include <charconv>
#include <cmath>

#include "knowledge/BoardTable.h"
#include "text/Text.h"

namespace {

/// A captured reply and the command that it may answer. `element` is the command as an earlier reply left it.
struct Told {
    const std::string& command;
    const std::string& label;
    const std::string& element;
    const std::string& reply;  // without CR and LF
    const UploadFacts& facts;
};

using Form = std::optional<std::string>;

/// The shortest decimal notation that reads back as the same number.
template <class Number>
std::string Shortest(Number value)
{
    std::array<char, 512> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return std::string(digits.data(), end.ptr);
}

/// The trimmed text `skip` characters behind the first "=" at or behind `from`; none without an "=".
Form ValueBehindEquals(const std::string& reply, std::size_t from, std::size_t skip)
{
    const std::size_t equals = text::Find(reply, "=", from);
    if (equals == 0) return std::nullopt;
    return text::Trim(text::Mid(reply, equals + skip));
}

Form AddValue(const std::string& element, const Form& value)
{
    return value ? Form(element + "," + *value) : std::nullopt;
}

/// "Azimuth Bias = 1.5"
Form LabelledValue(const Told& told)
{
    const std::size_t at = text::Find(told.reply, told.label);
    return at == 0 ? std::nullopt : AddValue(told.element, ValueBehindEquals(told.reply, at, 2));
}

/// "INSTANT=ON"
Form SwitchValue(const Told& told)
{
    if (!text::Holds(told.reply, told.label)) return std::nullopt;
    return AddValue(told.element, ValueBehindEquals(told.reply, 1, 1));
}

/// "RFGAIN = 12"
Form SpacedValue(const Told& told)
{
    const std::size_t mark = text::Find(told.reply, " = ");
    if (!text::Holds(told.reply, told.label) || mark == 0) return std::nullopt;
    return AddValue(told.element, text::Mid(told.reply, mark + 3));
}

Form SerialNumber(const Told& told)
{
    const std::size_t at = text::Find(told.reply, told.label);
    return at == 0 ? std::nullopt : Form("=SERNUM," + text::Mid(told.reply, at + told.label.size()));
}

/// The antenna reports the angle 30 lower than the command takes it. The sum is made in 32 bits and in this order, so
/// that the same angle always gives the same digits.
Form CalUp(const Told& told)
{
    const std::size_t at = text::Find(told.reply, told.label);
    if (at == 0) return std::nullopt;
    const std::string value = ValueBehindEquals(told.reply, at, 2).value_or("");
    const float angle = (static_cast<float>(text::Val(value)) * 10.0F + 300.0F) / 10.0F;
    if (!text::IsNumeric(value) || !std::isfinite(angle)) return "=CALUP,0.0";
    const std::string digits = Shortest(angle);
    return "=CALUP," + digits + (digits.find('.') == std::string::npos ? ".0" : "");
}

/// ">GPS,39.12,N,105.02,W,(ACTIVE)" gives "GPS,39,N,105,W".
Form WholeDegrees(const std::string& reply)
{
    std::string position = reply;
    for (const char* word : {" ", ">", "(ACTIVE)", "(DEFAULT)"}) position = text::Replace(position, word, "");
    const std::size_t lastComma = position.rfind(',');
    if (!text::Holds(reply, "GPS") || lastComma == std::string::npos) return std::nullopt;
    position.erase(lastComma);
    for (int coordinate = 0; coordinate < 2; ++coordinate) {
        const std::size_t point = position.find('.');
        if (point == std::string::npos) break;
        const std::size_t comma = position.find(',', point);
        position.erase(point, comma == std::string::npos ? comma : comma - point);
    }
    return position;
}

/// ">GPS = 42.5N 71.2W" gives "GPS,42.5,N,71.2,W". A position with only one coordinate restores nothing.
Form DecimalDegrees(const Told& told)
{
    if (!text::Holds(told.reply, told.label)) return std::nullopt;
    const std::vector<std::string> words = text::Split(told.reply, " ");
    std::string command = "GPS";
    int coordinates = 0;
    for (std::size_t i = 1; i < words.size() && coordinates < 2; ++i) {
        const double degrees = text::Val(words[i]);
        if (!(degrees > 0)) continue;
        command += "," + Shortest(degrees) + "," + words[i].back();
        ++coordinates;
    }
    return coordinates == 2 ? Form(command) : std::nullopt;
}

Form Position(const Told& told) { return told.facts.isJarl ? WholeDegrees(told.reply) : DecimalDegrees(told); }

/// "SATINSTALL,01,A,02,B,03,C" gives "SATINSTALL,01,02", or all three: two characters for each satellite, five places
/// apart.
Form SatelliteNumbers(const std::string& reply, std::size_t begin, bool three)
{
    const std::size_t comma = text::Find(reply, ",", begin);
    if (comma == 0) return std::nullopt;
    std::string command = "SATINSTALL";
    for (std::size_t satellite = 0; satellite < (three ? 3U : 2U); ++satellite)
        command += "," + text::Trim(text::Mid(reply, comma + 1 + satellite * 5, 2));
    return command;
}

Form SatInstall(const Told& told)
{
    const std::size_t begin = text::Find(told.reply, told.label);
    if (begin == 0) return std::nullopt;
    const UploadFacts& facts = told.facts;
    if (BoardOf(facts.boardType).numbersSatellites) return SatelliteNumbers(told.reply, begin, facts.satInstallFound);
    if (!IsMainBoard(facts.boardType)) return std::nullopt;
    if (facts.satInstallFound && !facts.satInstallCmd.empty()) return facts.satInstallCmd;
    return text::Trim(text::Mid(told.reply, begin));
}

/// The value behind a mark like "CW =" and one more character, up to position `end`, or to the text's end when that
/// stands ahead; none without the mark.
Form Turn(const std::string& reply, std::size_t begin, std::size_t markSize, std::size_t end)
{
    if (begin == 0) return std::nullopt;
    const std::size_t length = end > begin ? end - begin : std::string::npos;
    return text::Trim(text::Mid(text::Mid(reply, begin, length), markSize + 1));
}

/// "Azimuth Gyro Scale Factor: CW = -0.001000  CCW = -0.001000", or "Azimuth Gyro Scale Factor = -0.001000". The
/// command asks for one turn, "GYROSFAZ,CW", or for all there is.
Form GyroScale(const Told& told)
{
    const std::size_t at = text::Find(told.reply, told.label + ": ");
    if (at == 0) {
        const std::string label = told.label + " = ";
        return LabelledValue({told.command, label, told.element, told.reply, told.facts});
    }
    const std::string factors = text::Mid(told.reply, at);
    const std::size_t ccwBegin = text::Find(factors, "CCW =");
    std::size_t cwBegin = text::Find(factors, "CW =");
    if (ccwBegin > 0 && cwBegin == ccwBegin + 1) cwBegin = text::Find(factors, "CW =", cwBegin + 1);
    const Form cw = Turn(factors, cwBegin, 4, ccwBegin);
    const Form ccw = Turn(factors, ccwBegin, 5, cwBegin);
    const std::string turn = text::Mid(told.command, told.command.find(',') + 2);
    if (turn == "CW") return AddValue(told.element, cw);
    if (turn == "CCW") return AddValue(told.element, ccw);
    if (!cw || !ccw) return std::nullopt;
    return told.element + ",CW," + *cw + ",CCW," + *ccw;
}

struct Parameter {
    const char* command;
    const char* label;  // marks its reply
    Form (*write)(const Told&);
};

constexpr std::array<Parameter, 22> parameters{{
    {"RFGAIN", "RFGAIN", SpacedValue},
    {"RFOFFSET", "RFOFFSET", SpacedValue},
    {"INSTANT", "INSTANT", SwitchValue},
    {"SLEEP", "SLEEP", SwitchValue},
    {"SKEWMTR", "SKEWMTR", SwitchValue},
    {"DEW", "DEW", SwitchValue},
    {"=SERNUM", "SN = ", SerialNumber},
    {"BIASAZ", "AZIMUTH BIAS = ", LabelledValue},
    {"BIASEL", "ELEVATION BIAS = ", LabelledValue},
    {"GYROANGLE", "ROLL GYRO ANGLE = ", LabelledValue},
    {"=CALUP", "CALUP = ", CalUp},
    {"GPS", "GPS = ", Position},
    {"SATINSTALL", "SATINSTALL", SatInstall},
    {"GYROSFAZ", "AZIMUTH GYRO SCALE FACTOR", GyroScale},
    {"GYROSFAZ,CW", "AZIMUTH GYRO SCALE FACTOR", GyroScale},
    {"GYROSFAZ,CCW", "AZIMUTH GYRO SCALE FACTOR", GyroScale},
    {"GYROSFEL", "ELEVATION GYRO SCALE FACTOR", GyroScale},
    {"GYROSFEL,CW", "ELEVATION GYRO SCALE FACTOR", GyroScale},
    {"GYROSFEL,CCW", "ELEVATION GYRO SCALE FACTOR", GyroScale},
    {"GYROSFSKEW", "SKEW GYRO SCALE FACTOR", GyroScale},
    {"GYROSFSKEW,CW", "SKEW GYRO SCALE FACTOR", GyroScale},
    {"GYROSFSKEW,CCW", "SKEW GYRO SCALE FACTOR", GyroScale},
}};

}  // namespace

std::optional<std::string> UploadCommandFrom(const std::string& command, const std::string& element,
                                             const std::string& captured, const UploadFacts& facts)
{
    for (const Parameter& parameter : parameters) {
        if (command != parameter.command) continue;
        const std::string reply = text::Replace(text::Replace(captured, "\r", ""), "\n", "");
        const std::string label = parameter.label;
        return parameter.write({command, label, element, reply, facts});
    }
    return std::nullopt;
}
