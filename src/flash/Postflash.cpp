// STATE_POSTFLASH and STATE_WAIT_PORT_BACK: the antenna restarts and gets its parameters back.

#include "display/Display.h"
#include "flash/CommandLists.h"
#include "flash/FlashMainboard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

constexpr int maxCalibrations = 5;

// --- what the antenna says -----------------------------------------------------------------------------------------

/// Boards that need nothing but to be up again: no self-test is to be awaited.
bool IsReadyAtOnce(int type)
{
    const BoardGroup group = BoardOf(type).group;
    return group == BoardGroup::Block || group == BoardGroup::MultiStage;
}

bool IsRestartText(const std::string& heard)
{
    const int type = Session.iBoardType;
    if (type == 15 || type == 16) return true;
    if (type == 1) return text::Holds(heard, Session.sNewRFSignOn) || text::Holds(heard, Session.sSignOn);
    if (BoardOf(type).group == BoardGroup::None) return false;
    return Session.bUSBLink || (text::Holds(heard, Session.sBoardSignOn) && !text::Holds(heard, "RF:"));
}

void NoteRestart()
{
    frmWizard.lblStep[6].Caption = "Antenna Restarted";
    AddParamsSent("Antenna restarted, waiting for full initialization.\r\n");
    frmWizard.lblFlashStatus[1].Visible = false;
    Session.bRestartSeen = true;
    Session.bSwitchTestSeen = false;
    ShowAllCommsTextUpdate("==> Antenna restarted, waiting for full initialization.\r\n");
    if (IsReadyAtOnce(Session.iBoardType)) {
        Session.bAntennaInitDone = true;
        Session.bSwitchTestSeen = true;
        if (Session.iBoardType == 15 || Session.iBoardType == 16) Session.iWaitTicks = 30;
    }
    ClearCommBuffers();
}

void FinishInitialization(std::int16_t waitTicks)
{
    Session.bAntennaInitDone = true;
    Session.bWaitInitFlag = false;
    Session.iWaitTicks = waitTicks;
    ClearCommBuffers();
}

/// Reads the start-up text for the end of the self-test; what isn't understood yet stays in the buffer.
void WatchInitialization(const std::string& heard)
{
    const bool limitSwitch = text::Holds(heard, "Switch") && text::Holds(heard, "Limit");
    if (limitSwitch && !Session.bSwitchTestSeen && text::Holds(heard, "Test")) {
        ClearCommBuffers();
        Session.bSwitchTestSeen = true;
    } else if (limitSwitch && Session.bSwitchTestSeen && text::Holds(heard, "PASS")) {
        FinishInitialization(10);
    } else if (text::Holds(heard, "AZ") && text::Holds(heard, "*** ERROR:") && text::Holds(heard, "FOG") &&
               RowIsOneOf({"HOLMSS", "HOLM", "JARL"})) {
        FinishInitialization(30);  // no limit switch test here: the start-up ends with this error line
    }
}

// --- what goes out -------------------------------------------------------------------------------------------------

void Show(const std::string& words)
{
    ShowAllCommsTextUpdate(words);
    AddParamsSent(words);
}

void ShowWaiting(bool shown)
{
    frmWizard.lblWaiting_SecondsLeft.Visible = shown;
    frmWizard.lblWaiting1.Visible = shown;
    frmWizard.lblWaiting2.Visible = shown;
}

void StartWait(int seconds)
{
    Session.iWaitTicks = TicksOf(seconds);
    AddParamsSent("Waiting " + text::Num(Session.iWaitTicks / 10) + " seconds\r\n");
    frmWizard.lblWaiting1.Caption = "Waiting for antenna to complete command.";
    frmWizard.lblWaiting_SecondsLeft.Caption = text::Num(Session.iWaitTicks / 10);
    ShowWaiting(true);
    Session.bWaitInitFlag = true;
}

void SendRestoreCommand(const std::string& entry)
{
    Session.bWaitInitFlag = false;
    MSComm1->Output(entry + "\r");
    Show("==>" + entry + "\r\n");
    Session.sExpectedReply = ExpectedReplyFor(entry);
}

/// The wait for the antenna's start-up has no limit; one that lasts gets advice.
std::string WaitingWords()
{
    constexpr int patience = 60;  // looks, a second apart
    if (++Session.iInitLooks < patience) return "Waiting for full initialization.";
    return "Waiting for full initialization. If this goes on, check cable and power, then switch the antenna off and "
           "on "
           "once more.";
}

/// One entry of the common list of the board's group; false when the list is through.
bool CommonListStep()
{
    const bool main = BoardOf(Session.iBoardType).group == BoardGroup::Line;
    const bool none = BoardOf(Session.iBoardType).group == BoardGroup::None;
    std::int16_t& index = main ? Session.iCommonPostflashMainIdx : Session.iCommonPostflashRFIdx;
    const std::string entry = ListEntry(main ? Session.sCommonPostflashMain : Session.sCommonPostflashRF, index);
    if (none || entry.empty()) return false;
    int seconds = 0;
    if (IsWaitEntry(entry, seconds)) {
        StartWait(Session.iBoardType == 21 ? seconds + 15 : seconds);
        ++index;
        return true;
    }
    // A plain entry stays where it is and arms nothing, on purpose: common lists are meant to hold WAIT entries.
    SendRestoreCommand(entry);
    return true;
}

/// A calibration repeats itself with the command and the WAIT behind it until it has run five times. Nothing ever calls
/// it successful; that is on purpose.
void CheckGyroCalibration()
{
    if (!Session.bCalGyroPending || Session.bCalGyroOK) return;
    Session.bCalGyroPending = false;
    if (Session.iCalGyroTries >= maxCalibrations) {
        ShowMsgBox(17, "TimerHandler");
        return;
    }
    Session.iPostflashCmdIdx = static_cast<std::int16_t>(Session.iPostflashCmdIdx - 2);
    if (Session.iPostflashCmdIdx < 0) Session.iPostflashCmdIdx = 0;
    Show("==>CALGYRO Command failed, retrying.\r\n");
}

/// What is still to be restored, so that it can be done by hand: it is held nowhere else.
void ListCommandsLeft()
{
    Show("These commands were not confirmed. Restart the antenna and enter them in the Command Line:\r\n");
    for (std::size_t at = Session.iPostflashCmdIdx - 1; at < Session.sPostflashCmds.size(); ++at) {
        const std::string& left = Session.sPostflashCmds[at];
        if (!left.empty() && !text::StartsWith(left, "WAIT")) Show(left + "\r\n");
    }
}

void GiveUpOnRestore()
{
    AddParamsSent("RETRIED 5 TIMES, CANNOT CONTINUE FLASH\r\n");
    AddParamsSent("CLICK CANCEL BUTTON TO END BURNLINE ASSISTANT\r\n");
    WriteLogLine("++>RETRIED 5 TIMES, CANNOT CONTINUE FLASH");
    ListCommandsLeft();
    EnableCmdEntry();
    Session.iCommMode = STATE_IDLE;
    Session.iWaitTicks = 10;
}

void FinishRestore()
{
    Session.bWaitInitFlag = false;
    Session.iCommMode = STATE_IDLE;
    SetNavCmds(13);
    EnableCmdEntry();
    frmWizard.lblStep[7].Caption = "Update Complete";
    AddParamsSent("Parameter Upload Successful and antenna restarted.  Click Next to continue.\r\n");
    Session.iWaitTicks = 10;
    ShowMsgBox(14, "TimerHandler");
}

void RestoreListStep()
{
    std::string entry = ListEntry(Session.sPostflashCmds, Session.iPostflashCmdIdx);
    if (entry.empty()) return FinishRestore();
    int seconds = 0;
    if (IsWaitEntry(entry, seconds)) {
        StartWait(seconds);
        Session.bReplySeen = true;
        ++Session.iPostflashCmdIdx;
        return;
    }
    CheckGyroCalibration();
    const Previous previous = JudgePrevious(Session.iPostflashCmdIdx);
    if (previous == Previous::GivenUp) return GiveUpOnRestore();
    if (previous == Previous::Again)
        AddParamsSent("Did not receive expected response to command: " +
                      ListEntry(Session.sPostflashCmds, Session.iPostflashCmdIdx) + "\r\nResending command...\r\n");
    entry = ListEntry(Session.sPostflashCmds, Session.iPostflashCmdIdx);
    SendRestoreCommand(entry);
    if (text::Equal(entry, "=CALGYRO")) {
        Session.bCalGyroPending = true;
        Session.bCalGyroOK = false;
        ++Session.iCalGyroTries;
    }
    ++Session.iPostflashCmdIdx;
}

}  // namespace

void OnPostflashReply(const std::string&)
{
    Session.sCommLine = Session.sCommBuffer;
    if (!text::Holds(Session.sCommLine, text::CrLf)) return;
    if (!Session.bAntennaInitDone && !Session.bRestartSeen && IsRestartText(Session.sCommLine)) {
        NoteRestart();
        return;
    }
    if (IsMainBoard(Session.iBoardType) && !Session.bAntennaInitDone) {
        WatchInitialization(Session.sCommLine);
        return;
    }
    if (!Session.bAntennaInitDone || Session.iPostflashCmdIdx < 1 || Session.sCommLine.size() < 6) return;
    if (!Session.sExpectedReply.empty() && !text::Holds(Session.sCommLine, Session.sExpectedReply)) return;
    ClearCommBuffers();
    Session.bReplySeen = true;
}

void NextPostflashStep()
{
    DisableCmdEntry();
    ShowWaiting(false);
    // The list is built from the captured replies on STEP_6; before that it would read instead of restore.
    if (frmWizard.iCurrentStep != STEP_6) {
        Session.iWaitTicks = 10;
        return;
    }
    if (!Session.bAntennaInitDone) {
        Session.iWaitTicks = 10;
        frmWizard.lblWaiting1.Caption = WaitingWords();
        frmWizard.lblWaiting1.Visible = true;
        return;
    }
    if (!CommonListStep()) RestoreListStep();
}

void OnPortBackReply(const std::string&) { Session.iCommMode = STATE_POSTFLASH; }

/// Looks once a second whether the port has gone with the antenna's power, and whether it has come back.
void TestPortBack()
{
    const int result = computer->TestCommPort(Session.iCommPort);
    if (result == PORT_USABLE && Session.bPortWentAway) InitAndOpenComm();
    if (result == PORT_MISSING && !Session.bPortWentAway) {
        Session.bPortWentAway = true;
        AddParamsSent("COM" + text::Num(Session.iCommPort) +
                      " has gone with the antenna's power. Turn the antenna back on; if the port stays away, check the "
                      "USB cable.\r\n");
    }
    Session.iWaitTicks = 10;
}
