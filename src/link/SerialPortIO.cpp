// The port: opening, closing, its state on the form. What is sent and received stands in Transmitter and CommHandler.

#include "link/SerialPortIO.h"

#include "display/Display.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "persistence/INIUtilities.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

void ShowPortState(const std::string& words, bool needsAttention)
{
    Control& label = frmWizard.lblCommPortStatus;
    label.Caption = words;
    label.Bold = needsAttention;
    label.Enlarged = needsAttention;
    label.BackColor = needsAttention ? White : Standard;
    label.ForeColor = Standard;
    label.ToolTipText = "";
    label.Visible = true;
}

/// True when the port was opened. It may have gone or been taken since it was tested.
bool OpenPort()
{
    try {
        MSComm1->SetCommPort(Session.iCommPort);
        MSComm1->SetSettings(GetSetting(SETTING_BAUD_RATE) + ",N,8,1");
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
    SetNavCmds(step == STEP_5 && Session.iFlashPhase == FLASH_FINISHED ? 12 : step);
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
    const int result = computer->TestCommPort(Session.iCommPort);
    if (result == PORT_MISSING) return;
    // The system's number is the message's: a port in use shows the words of message 5. That is on purpose.
    if (result == PORT_IN_USE || result == FAIL_PORT_LOST) {
        ShowMsgBox(result, "InitAndOpenComm");
        return;
    }
    if (result != PORT_USABLE) {
        ShowMsgBox(27, "InitAndOpenComm");
        return;
    }
    if (Session.iCommID != 0) return;
    if (!OpenPort()) {
        ShowMsgBox(27, "InitAndOpenComm");
        return;
    }
    Session.iCommID = static_cast<std::int16_t>(MSComm1->CommID());
    if (Session.iCommID <= 0) return;
    Session.bPortOpened = true;
    ShowWaitingOnPort();
}

void CloseComm()
{
    if (Session.iCommID <= 0) return;
    MSComm1->SetPortOpen(false);
    Session.iCommID = 0;
}

void ShowWaitingOnPort()
{
    SetNavCmds(14);
    if (!Session.bUSBLink) Session.bPortReady = false;
    ShowPortState("COM port: \r\nWaiting on COM" + text::Num(Session.iCommPort), true);
    frmWizard.lblCommPortStatus.ToolTipText =
        "Nothing has come from the antenna yet. Switch it on, or press Enter in the Command Line to make it answer.";
    frmWizard.lblRedoCOMMPort.Visible = false;
}

void CheckPortReady()
{
    if (Session.bPortReady || BytesWaiting() < 1) return;
    EnableCmdEntry();
    if (!Session.bUSBLink) RestoreNavigation();
    ShowPortState("COM port: COM" + text::Num(Session.iCommPort) + " ready", false);
    Session.bPortReady = true;
}

void ShowPortError() { ShowPortState("COM port error (COM" + text::Num(Session.iCommPort) + ").", true); }

void SetLinkSettings(const std::string& settings) { MSComm1->SetSettings(settings); }

void ReopenAt(const std::string& settings)
{
    MSComm1->SetPortOpen(false);
    MSComm1->SetSettings(settings);
    MSComm1->SetPortOpen(true);
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
    if (IsSettingTrue(SETTING_USE_FAST_BAUD) && Session.iBoardType == 21) ReopenAt("9600,N,8,1");
}
