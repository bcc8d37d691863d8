// The panel of antenna commands. Each button sends its line at once; what the antenna answers stands in the terminal.

#include <string>

#include "diagnostics/Diagnostics.h"
#include "diagnostics/Rooms.h"
#include "forms/frmWizard.h"
#include "link/SerialPortIO.h"
#include "text/Text.h"

namespace {

struct Command {
    Control WizardForm::*button;
    const char* line;
    void (*send)(const std::string& line);
};

// clang-format off
constexpr Command commands[] = {
    {&WizardForm::cmdGetState,         "STATE",      SendCommandLine},
    {&WizardForm::cmdGetSigStrength,   "SIGLEVEL",   SendCommandLine},
    {&WizardForm::cmdGetSatsInstalled, "SATINSTALL", SendCommandLine},
    {&WizardForm::cmdGetSerNum,        "=SERNUM",    SendCommandLine},
    {&WizardForm::cmdGetGPS,           "GPS",        SendCommandLine},
    {&WizardForm::cmdHalt,             "HALT",       SendCommandLine},
    {&WizardForm::cmdZAP,              "ZAP",        SendCommandLine},
    {&WizardForm::cmdDebugOn,          "DEBUGON",    SendCommandLine},
    {&WizardForm::cmdUp,               "8",          SendCommandLine},
    {&WizardForm::cmdDown,             "2",          SendCommandLine},
    {&WizardForm::cmdLeft,             "4",          SendCommandLine},
    {&WizardForm::cmdRight,            "6",          SendCommandLine},
    {&WizardForm::cmdCalGyro,          "=CALGYRO",   SendAfterHalt},
    {&WizardForm::cmdCalAZ,            "=CALAZ",     SendAfterHalt},
    {&WizardForm::cmdCalEL,            "=CALEL",     SendAfterHalt},
    {&WizardForm::cmdClrEE,            "CLEAREE",    SendAfterHalt},
};
// clang-format on

/// The main board answers the first, the RF board behind it the second.
void cmdGetVersion_Click()
{
    SendCommandLine("VERSION");
    SendCommandLine("@VER");
}

/// With a field empty a bare CR goes out, on purpose, here and at the GPS setting: the antenna answers with its prompt.
void cmdGoTo_Click()
{
    const std::string azimuth = frmWizard.txtAZ.Text, elevation = frmWizard.txtEl.Text;
    std::string line;
    if (!azimuth.empty() && !elevation.empty()) line = "GOTO,AZ" + text::Trim(azimuth) + ",EL" + text::Trim(elevation);
    SendCommandLine(line);
}

void cmdUpdateGPS_Click()
{
    const std::string latitude = frmWizard.txtLat.Text, longitude = frmWizard.txtLongitude[0].Text;
    const std::string northOrSouth = frmWizard.optSouth.Value == 1 ? "S" : "N";
    const std::string eastOrWest = frmWizard.optEast[0].Value == 1 ? "E" : "W";
    std::string line;
    if (!latitude.empty() && !longitude.empty())
        line = "GPS," + latitude + "," + northOrSouth + "," + longitude + "," + eastOrWest;
    SendCommandLine(line);
}

void cmdSetSerNum_Click()
{
    const std::string number = frmWizard.txtSerNum.Text;
    if (!number.empty()) SendCommandLine("=SERNUM," + text::Trim(number));
}

}  // namespace

void SendAfterHalt(const std::string& command)
{
    frmWizard.cmdHalt.Click();
    frmWizard.cmdDebugOn.Click();
    SendCommandLine(command);
}

void ConnectAntennaCommands()
{
    for (const Command& command : commands)
        (frmWizard.*command.button).Click = [&command] { command.send(command.line); };
    frmWizard.cmdGetVersion.Click = cmdGetVersion_Click;
    frmWizard.cmdGoTo.Click = cmdGoTo_Click;
    frmWizard.cmdUpdateGPS.Click = cmdUpdateGPS_Click;
    frmWizard.cmdSetSerNum.Click = cmdSetSerNum_Click;
}
