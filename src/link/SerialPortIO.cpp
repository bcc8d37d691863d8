// The port: opening, closing, its state on the form. What is sent and received stands in Transmitter and CommHandler.

#include "link/SerialPortIO.h"

#include "display/Display.h"
#include "display/PortStatus.h"
#include "forms/frmWizard.h"
#include "link/PortAway.h"
#include "persistence/INIUtilities.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

struct PortProblem {
    int code;
    const char* status;  // {port} stands for the COM number
};
constexpr PortProblem portProblems[] = {{4, "COM port: COM Port Already in Use. (COM{port})."},
                                        {21, "COM port: None found or all used"},
                                        {27, "COM port: Error with COM Port"}};

void LeavePortClosed()
{
    Session.link.iCommMode = STATE_IDLE;
    UncheckPort();
    DisableCmdEntry();
    SetNavCmds(NAV_BLOCKED);
}

/// For a port that this user may not open: how to be allowed to.
std::string RemedyOf(int code)
{
    if (code != 27 || computer->TestCommPort(Session.link.iCommPort) != PORT_FORBIDDEN) return {};
    return computer->DescribeCommPort(Session.link.iCommPort).remedy;
}

/// True when the port was opened. It may have gone or been taken since it was tested.
bool OpenPort()
{
    try {
        MSComm1->SetCommPort(Session.link.iCommPort);
        const std::string& speed = Session.link.sSettings;
        MSComm1->SetSettings(speed.empty() ? GetSetting(SETTING_BAUD_RATE) + ",N,8,1" : speed);
        MSComm1->SetPortOpen(true);
        return true;
    } catch (const Failure&) {
        return false;
    }
}

/// The buttons for the step at hand, after the port was silent or away.
void RestoreNavigation()
{
    const int step = frmWizard.iCurrentStep;
    if (step == STEP_5 && Session.flash.iFlashPhase == FLASH_FINISHED) return SetNavCmds(NAV_WRITTEN);
    SetNavCmds(step == STEP_6 && Session.restore.bEnded ? NAV_RESTORED : step);
}

/// Bytes that wait. A lost port has none here: CommHandler, which runs next, reports it.
int BytesWaiting()
{
    try {
        return MSComm1->InBufferCount();
    } catch (const Failure&) {
        return 0;
    }
}

}  // namespace

void InitAndOpenComm()
{
    CloseComm();
    const int result = computer->TestCommPort(Session.link.iCommPort);
    if (result == PORT_MISSING) return;
    // The system's number is the message's: a port in use shows the words of message 5. That is on purpose.
    if (result == PORT_IN_USE || result == FAIL_PORT_LOST) {
        ShowMsgBox(result, "InitAndOpenComm");
        return;
    }
    if (result != PORT_USABLE) {
        TellPortProblem(27, "InitAndOpenComm");
        return;
    }
    if (Session.link.iCommID != 0) return;
    if (!OpenCommAgain()) {
        TellPortProblem(27, "InitAndOpenComm");
        return;
    }
    if (Session.link.iCommID <= 0) return;
    Session.link.bPortOpened = true;
    if (IsPortAway()) return EndPortAway();
    ShowWaitingOnPort();
}

bool OpenCommAgain()
{
    if (!OpenPort()) return false;
    Session.link.iCommID = static_cast<std::int16_t>(MSComm1->CommID());
    Session.link.sAdapter = computer->DescribeCommPort(Session.link.iCommPort).toolTip;
    return true;
}

void CloseComm()
{
    if (Session.link.iCommID <= 0) return;
    MSComm1->SetPortOpen(false);
    Session.link.iCommID = 0;
}

void TellPortProblem(int code, const std::string& origin)
{
    const std::string remedy = RemedyOf(code);
    for (const PortProblem& problem : portProblems)
        if (problem.code == code)
            ShowPortStatus(text::Replace(problem.status, "{port}", text::Num(Session.link.iCommPort)), true, remedy);
    const Answer answer = ShowMsgBox(code, origin, remedy.empty() ? remedy : ": " + remedy);
    if (answer == Answer::Cancel) return CleanUpForShutdown(1);
    if (code != 21) LeavePortClosed();
}

void ShowWaitingOnPort()
{
    SetNavCmds(NAV_BLOCKED);
    if (!Session.choice.bUSBLink) Session.link.bPortReady = false;
    ShowPortStatus(
        "COM port: \r\nWaiting on COM" + text::Num(Session.link.iCommPort), true,
        "Nothing has come from the antenna yet. Switch it on, or press Enter in the Command Line to make it answer.");
    HidePortAdvice();
}

void CheckPortReady()
{
    if (Session.link.bPortReady || BytesWaiting() < 1) return;
    EnableCmdEntry();
    if (!Session.choice.bUSBLink) RestoreNavigation();
    ShowPortStatus("COM port: COM" + text::Num(Session.link.iCommPort) + " ready", false);
    Session.link.bPortReady = true;
}

void SetLinkSettings(const std::string& settings)
{
    Session.link.sSettings = settings;
    MSComm1->SetSettings(settings);
}

void RaisePriority()
{
    if (!IsSettingTrue(SETTING_DRY_RUN)) computer->SetHighPriority(true);
}

void RestoreAfterFlash()
{
    if (!IsSettingTrue(SETTING_DRY_RUN)) {
        frmWizard.Self.Enabled = true;
        computer->SetHighPriority(false);
    }
}
