// "Calculate antenna pointing angles": the position of the antenna, a satellite, three angles. Nothing is sent.

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "diagnostics/CalcAzElSkew.h"
#include "diagnostics/Rooms.h"
#include "forms/frmWizard.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

struct Satellite {
    const char* name;
    int tenths;  // its longitude in tenths of a degree, east positive
};

constexpr Satellite satellites[] = {
    {"ASTRA1", 192},     {"HOTBIRD1", 130},   {"ASTRA2N", 282},    {"ASTRA2S", 282},    {"THOR", -8},
    {"SIRIUS", 50},      {"HISPASAT", -300},  {"TURKSAT1C", 420},  {"HOTBIRDWB", 130},  {"ARABSAT", 260},
    {"NILESAT", -70},    {"OPTUS_B1", 1600},  {"OPTUS_C1", 1560},  {"EXPRESSVU", -820}, {"ECHO_61", -615},
    {"ECHO_110", -1100}, {"ECHO_119", -1190}, {"ECHO_148", -1480}, {"DSS_72", -720},    {"DSS_101", -1010},
    {"DSS_110", -1100},  {"DSS_119", -1190},  {"GALAXY3CN", -950}, {"GALAXY3CS", -950}, {"EXPRESSTV", -910},
    {"PAS_9", -580},
};

/// The number in a box. Raises Failure with words for the user when there is none.
double NumberIn(const Control& box, const std::string& name)
{
    const std::string words = text::Trim(box.Text());
    const std::string shown = "the " + name + " \"" + text::Left(box.Text(), 40) + "\" is ";
    if (!text::IsNumeric(words))
        throw Failure{FAIL_TYPE_MISMATCH, "Type mismatch: " + shown +
                                              "no number. Degrees are written with digits and a point only, such as "
                                              "42.5."};
    double number = 0;
    const char* first = words.data() + (words[0] == '+' ? 1 : 0);
    if (std::from_chars(first, words.data() + words.size(), number).ec == std::errc::result_out_of_range)
        throw Failure{FAIL_OVERFLOW, "Overflow: " + shown + "too long a number. Degrees lie between 0 and 360."};
    return number;
}

double SatelliteLongitude()
{
    const int sign = frmWizard.optEast[1].Value == 1 ? 1 : -1;
    // A typed longitude wins over the satellite that is picked in the list.
    if (!frmWizard.txtSatLongitude.Text().empty())
        return NumberIn(frmWizard.txtSatLongitude, "satellite's longitude") * sign;
    return frmWizard.dSatLongitude;
}

void Calculate()
{
    if (frmWizard.txtLat.Text().empty() || frmWizard.txtLongitude[0].Text().empty()) return;
    const double sat = SatelliteLongitude();
    const double lat = NumberIn(frmWizard.txtLat, "latitude") * (frmWizard.optSouth.Value == 1 ? -1 : 1);
    const double lon = NumberIn(frmWizard.txtLongitude[0], "longitude") * (frmWizard.optEast[0].Value == 1 ? 1 : -1);

    const double azimuth = CalcAzimuth(lat, lon, sat);
    const double elevation = CalcElevation(lat, lon, sat);
    const double skew = CalcSkew(lat, lon, sat);
    if (!std::isfinite(azimuth + elevation + skew))
        throw Failure{FAIL_OVERFLOW, "Overflow: with the latitude \"" + text::Left(frmWizard.txtLat.Text(), 40) +
                                         "\" and the longitudes entered no angle can be calculated. Degrees lie "
                                         "between 0 and 360."};
    frmWizard.dAzimuth = azimuth;
    frmWizard.dElevation = elevation;
    frmWizard.dSkew = skew;
    frmWizard.bAnglesKnown = true;
    frmWizard.lblCalculatedAngle[0].Caption = "Azimuth: " + AngleText(azimuth);
    frmWizard.lblCalculatedAngle[1].Caption = "Elev: " + AngleText(elevation);
    frmWizard.lblCalculatedAngle[2].Caption = "Skew: " + AngleText(skew);
}

/// What is wrong, in words for the user.
std::string WordsOf(const Failure& failure)
{
    if (failure.number != FAIL_DIVISION) return failure.what;
    return "Division by zero: at the latitude \"" + text::Left(frmWizard.txtLat.Text(), 40) +
           "\" and the longitude \"" + text::Left(frmWizard.txtLongitude[0].Text(), 40) +
           "\" the antenna stands right under the satellite, where no azimuth exists. The dish looks straight up; for "
           "figures enter a latitude a little off, such as 0.01.";
}

/// A numeric fault ends the program, on purpose and in order: the words are read, the port and the log are closed.
void cmdCalcAzElSkew_Click()
{
    constexpr int reasonFault = 0;
    try {
        Calculate();
    } catch (const Failure& failure) {
        const std::string words = WordsOf(failure);
        WriteLogLine("\r\n++>CalcAzElSkew: failure #" + text::Num(failure.number) + ": " + words);
        computer->MsgBox(words + "\n\nThe program ends now; the antenna is as it was. Please start the program again.",
                         Buttons::OK, Icon::Critical, "QEL Burnline Assistant - Pointing Angles", Answer::OK);
        CleanUpForShutdown(reasonFault);
    }
}

void cboSatListWithLongitude_Click()
{
    const int index = frmWizard.cboSatListWithLongitude.ListIndex;
    if (index != -1) frmWizard.dSatLongitude = satellites[index].tenths / 10.0;
}

bool txtSatLongitude_KeyPress(int key)
{
    constexpr int backspace = 8, enter = 13;
    if (key == backspace) return false;
    if (key < ' ') return key == enter;  // Tab, and the keys of the clipboard, write no character
    return key > '~' || std::string_view("1234567890.-").find(static_cast<char>(key)) == std::string_view::npos;
}

}  // namespace

void ConnectPointing()
{
    frmWizard.cmdCalcAzElSkew.Click = cmdCalcAzElSkew_Click;
    frmWizard.cboSatListWithLongitude.Click = cboSatListWithLongitude_Click;
    frmWizard.txtSatLongitude.KeyPress = txtSatLongitude_KeyPress;
}

void LoadPointing()
{
    std::vector<std::string> names;
    for (const Satellite& satellite : satellites) names.push_back(satellite.name);
    frmWizard.cboSatListWithLongitude.List = names;
    frmWizard.cboSatListWithLongitude.Select(0);
    // The hemispheres that count as long as none is chosen are the ones that are seen to be chosen.
    SelectOption(frmWizard.Self, frmWizard.optNorth);
    SelectOption(frmWizard.Self, frmWizard.optWest[0]);
    SelectOption(frmWizard.Self, frmWizard.optWest[1]);
}
