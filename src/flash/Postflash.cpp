// STATE_POSTFLASH and STATE_WAIT_PORT_BACK: the antenna restarts and gets its parameters back.

#include "display/Display.h"
#include "flash/CommandLists.h"
#include "flash/FlashMainboard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
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
    const Board& board = BoardOf(Session.plan->iBoardType);
    if (board.anyTextIsRestart) return true;
    if (board.hasOldLoader)
        return text::Holds(heard, Session.config->sNewRFSignOn) || text::Holds(heard, Session.config->sSignOn);
    if (board.group == BoardGroup::None) return false;
    return Session.plan->bUSBLink || (text::Holds(heard, Session.plan->sBoardSignOn) && !text::Holds(heard, "RF:"));
}

void NoteRestart()
{
    frmWizard.lblStep[6].Caption = "Antenna Restarted";
    AddParamsSent("Antenna restarted, waiting for full initialization.\r\n");
    frmWizard.lblFlashStatus[1].Visible = false;
    Session.restore.bRestartSeen = true;
    Session.restore.bSwitchTestSeen = false;
    ShowAllCommsTextUpdate("==> Antenna restarted, waiting for full initialization.\r\n");
    if (IsReadyAtOnce(Session.plan->iBoardType)) {
        Session.restore.bAntennaInitDone = true;
        Session.restore.bSwitchTestSeen = true;
        if (BoardOf(Session.plan->iBoardType).anyTextIsRestart) Session.link.iWaitTicks = 30;
    }
    ClearCommBuffers();
}

void FinishInitialization(std::int16_t waitTicks)
{
    Session.restore.bAntennaInitDone = true;
    Session.restore.bWaitInitFlag = false;
    Session.link.iWaitTicks = waitTicks;
    ClearCommBuffers();
}

/// Reads the start-up text for the end of the self-test; what isn't understood yet stays in the buffer.
void WatchInitialization(const std::string& heard)
{
    const bool limitSwitch = text::Holds(heard, "Switch") && text::Holds(heard, "Limit");
    if (limitSwitch && !Session.restore.bSwitchTestSeen && text::Holds(heard, "Test")) {
        ClearCommBuffers();
        Session.restore.bSwitchTestSeen = true;
    } else if (limitSwitch && Session.restore.bSwitchTestSeen && text::Holds(heard, "PASS")) {
        FinishInitialization(10);
    } else if (text::Holds(heard, "AZ") && text::Holds(heard, "*** ERROR:") && text::Holds(heard, "FOG") &&
               Session.plan->facts.startsWithFogError) {
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
    Session.link.iWaitTicks = TicksOf(seconds);
    AddParamsSent("Waiting " + text::Num(Session.link.iWaitTicks / 10) + " seconds\r\n");
    frmWizard.lblWaiting1.Caption = "Waiting for antenna to complete command.";
    frmWizard.lblWaiting_SecondsLeft.Caption = text::Num(Session.link.iWaitTicks / 10);
    ShowWaiting(true);
    Session.restore.bWaitInitFlag = true;
}

void SendRestoreCommand(const std::string& entry)
{
    Session.restore.bWaitInitFlag = false;
    MSComm1->Output(entry + "\r");
    Show("==>" + entry + "\r\n");
    Session.restore.command.sSent = entry;
    Session.restore.command.bReplySeen = false;
    ClearCommBuffers();
}

/// The wait for the antenna's start-up has no limit; one that lasts gets advice.
std::string WaitingWords()
{
    constexpr int patience = 60;  // looks, a second apart
    if (++Session.restore.iInitLooks < patience) return "Waiting for full initialization.";
    return "Waiting for full initialization. If this goes on, check cable and power, then switch the antenna off and "
           "on "
           "once more.";
}

/// Start-up text that came damaged would be waited for without an end. Software that runs answers Enter with its
/// prompt; a boot loader doesn't.
void ProbeForPrompt()
{
    constexpr int patience = 60, every = 5;  // looks, a second apart
    if (Session.restore.iInitLooks < patience || Session.restore.iInitLooks % every != 0) return;
    Session.restore.bPromptAsked = true;
    ClearCommBuffers();
    MSComm1->Output("\r");
}

/// One entry of the common list of the board's group; false when the list is through.
bool CommonListStep()
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    std::int16_t& index = Session.restore.iCommonPostflashIdx;
    const std::string entry = ListEntry(GroupOf(*Session.config, board.type).sCommonPostflash, index);
    if (entry.empty()) return false;
    int seconds = 0;
    if (IsWaitEntry(entry, seconds)) {
        StartWait(seconds + board.extraCommonWait);
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
    if (!Session.restore.bCalGyroPending) return;
    Session.restore.bCalGyroPending = false;
    if (Session.restore.iCalGyroTries >= maxCalibrations) {
        ShowMsgBox(17, "TimerHandler");
        return;
    }
    Session.restore.command = {};
    Session.restore.iPostflashCmdIdx = static_cast<std::int16_t>(Session.restore.iPostflashCmdIdx - 2);
    if (Session.restore.iPostflashCmdIdx < 0) Session.restore.iPostflashCmdIdx = 0;
    Show("==>CALGYRO Command failed, retrying.\r\n");
}

bool IsWait(std::int16_t index)
{
    int seconds = 0;
    return IsWaitEntry(ListEntry(Session.restore.sPostflashCmds, index), seconds);
}

/// From behind the command that waits for its answer to the command itself: its WAITs belong to it.
void GoBackToCommand()
{
    while (Session.restore.iPostflashCmdIdx > 0 && IsWait(Session.restore.iPostflashCmdIdx))
        --Session.restore.iPostflashCmdIdx;
}

/// A command that isn't confirmed stands back for those that the antenna may take.
void GoOnWithout(CommandInFlight& command)
{
    const bool silent = JudgeReply(command.sSent, Session.link.sCommBuffer) == Verdict::Silent;
    Session.restore.iSilences = silent ? Session.restore.iSilences + 1 : 0;
    Session.restore.unconfirmed.push_back(command.sSent);
    AddParamsSent("RETRIED 5 TIMES, WILL CONTINUE WITHOUT " + command.sSent + "\r\n");
    WriteLogLine("++>RETRIED 5 TIMES, WILL CONTINUE WITHOUT " + command.sSent);
    command = {};
    Session.link.iWaitTicks = 10;
}

/// An antenna that leaves two commands unanswered isn't kept for the others; none of them is in.
void LeaveTheRest()
{
    const std::vector<std::string>& listed = Session.restore.sPostflashCmds;
    for (std::size_t at = static_cast<std::size_t>(Session.restore.iPostflashCmdIdx); at < listed.size(); ++at)
        if (!listed[at].empty() && !text::StartsWith(listed[at], "WAIT"))
            Session.restore.unconfirmed.push_back(listed[at]);
    EndOfRestore();
}

void RestoreListStep()
{
    std::int16_t& index = Session.restore.iPostflashCmdIdx;
    std::string entry = ListEntry(Session.restore.sPostflashCmds, index);
    int seconds = 0;
    if (IsWaitEntry(entry, seconds)) {  // the command ahead of it has time for its answer until the wait is over
        StartWait(seconds);
        ++index;
        return;
    }
    if (!entry.empty()) CheckGyroCalibration();
    const Previous previous = JudgePrevious(index, Session.restore.command);
    if (previous == Previous::Done) Session.restore.iSilences = 0;
    if (previous == Previous::GivenUp) GoOnWithout(Session.restore.command);
    if (Session.restore.iSilences > 1) return LeaveTheRest();
    if (previous == Previous::Again) {
        GoBackToCommand();
        AddParamsSent("Did not receive expected response to command: " +
                      ListEntry(Session.restore.sPostflashCmds, index) + "\r\nResending command...\r\n");
    }
    entry = ListEntry(Session.restore.sPostflashCmds, index);
    if (entry.empty()) return EndOfRestore();
    SendRestoreCommand(entry);
    if (text::Equal(entry, "=CALGYRO")) {
        Session.restore.bCalGyroPending = true;
        ++Session.restore.iCalGyroTries;
    }
    ++index;
}

}  // namespace

void OnPostflashReply(const std::string&)
{
    Session.link.sCommLine = Session.link.sCommBuffer;
    if (Session.restore.bPromptAsked && !Session.restore.bAntennaInitDone && text::Holds(Session.link.sCommLine, ">")) {
        if (!Session.restore.bRestartSeen) NoteRestart();
        return FinishInitialization(10);
    }
    if (!text::Holds(Session.link.sCommLine, text::CrLf)) return;
    if (!Session.restore.bAntennaInitDone && !Session.restore.bRestartSeen && IsRestartText(Session.link.sCommLine)) {
        NoteRestart();
        return;
    }
    if (IsMainBoard(Session.plan->iBoardType) && !Session.restore.bAntennaInitDone) {
        WatchInitialization(Session.link.sCommLine);
        return;
    }
    CommandInFlight& command = Session.restore.command;
    if (Session.restore.bAntennaInitDone && !command.sSent.empty())
        command.bReplySeen = JudgeReply(command.sSent, Session.link.sCommBuffer) == Verdict::Confirmed;
}

void NextPostflashStep()
{
    DisableCmdEntry();
    ShowWaiting(false);
    // The list is built from the captured replies on STEP_6; before that it would read instead of restore.
    if (frmWizard.iCurrentStep != STEP_6) {
        Session.link.iWaitTicks = 10;
        return;
    }
    if (!Session.restore.bAntennaInitDone) {
        Session.link.iWaitTicks = 10;
        frmWizard.lblWaiting1.Caption = WaitingWords();
        frmWizard.lblWaiting1.Visible = true;
        ProbeForPrompt();
        return;
    }
    if (!CommonListStep()) RestoreListStep();
}

void OnPortBackReply(const std::string&) { Session.link.iCommMode = STATE_POSTFLASH; }

/// Looks once a second whether the port has gone with the antenna's power, and whether it has come back.
void TestPortBack()
{
    const int result = computer->TestCommPort(Session.link.iCommPort);
    if (result == PORT_USABLE && Session.restore.bPortWentAway) InitAndOpenComm();
    if (result == PORT_MISSING && !Session.restore.bPortWentAway) {
        Session.restore.bPortWentAway = true;
        AddParamsSent("COM" + text::Num(Session.link.iCommPort) +
                      " has gone with the antenna's power. Turn the antenna back on; if the port stays away, check the "
                      "USB cable.\r\n");
    }
    Session.link.iWaitTicks = 10;
}
