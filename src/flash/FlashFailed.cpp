// STATE_FLASH_FAILED: a wait of the flash has run out. The whole flash is tried again, in silence first, then by the
// user's word.

#include "display/Display.h"
#include "flash/FlashMainboard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"

namespace {

void ResetIntoLoader()
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    // A loader that was asked for another speed starts at its own again: at the speed of the transfer its sign-on would
    // be noise, at every retry.
    if (board.asksSpeed && IsSettingTrue(SETTING_USE_FAST_BAUD)) SetLinkSettings(board.link);
    if (board.takesFlasha) MSComm1->Output("flasha\r");
}

/// The whole flash starts again at the antenna's sign-on; there is no time limit, since the user may have to climb.
void RetryFlash()
{
    if (Session.link.bPortOpened) EnableCmdEntry();
    Session.link.iCommMode = STATE_WAIT_RESET;
    Session.link.iWaitTicks = 0;
    frmWizard.cmdNav[0].Enabled = true;
    if (BoardOf(Session.plan->iBoardType).takesFlasha) {
        // It resets on command; if it has lost its power or its software, only the user's hand helps.
        AskForPowerCycle("*** Waiting for the antenna to reset. If nothing happens, cycle its power. ***");
    } else {
        StatusTextUpdate("Please cycle power to the antenna to reset");
        AskForPowerCycle("*** Please cycle power to the antenna to reset. ***");
    }
    StatusTextUpdate("Waiting for reset");
    WriteLogLine("\r\n++>FLASHING_ERROR_CAN_RETRY: Will retry entire flash");
    ResetIntoLoader();
}

void RetryFlashSilently()
{
    LogMsg(29, "TimerHandler");
    Session.link.iCommMode = STATE_WAIT_RESET;
    Session.link.iWaitTicks = 10;
    SetNavCmds(STEP_5);
    WriteLogLine("\r\n++>FLASHING_ERROR_AUTO_RETRY: Will retry entire flash");
    ResetIntoLoader();
}

/// The settings may take the first question as answered.
Answer AskForRetry()
{
    if (!IsSettingTrue(SETTING_AUTO_RETRY_ONCE) || Session.flash.bAutoRetryUsed) return ShowMsgBox(15, "TimerHandler");
    Session.flash.bAutoRetryUsed = true;
    LogMsg(15, "TimerHandler");
    return Answer::Retry;
}

/// A flash that has failed is tried again, or the program ends: who doesn't want to leave after all is asked anew.
void AskUntilDecided()
{
    const bool retries = BoardOf(Session.plan->iBoardType).retriesFlash;
    while (!IsExitRequested()) {
        if (retries && AskForRetry() == Answer::Retry) return RetryFlash();
        if (!retries) ShowMsgBox(16, "TimerHandler");
        CleanUpForShutdown(1);
    }
}

}  // namespace

void FailFlash()
{
    Session.link.iCommMode = STATE_FLASH_FAILED;
    Session.flash.iFlashPhase = FLASH_FAILED;
    Session.link.iWaitTicks = 10;
}

void ReportFlashFailure()
{
    constexpr int maxSilentRetries = 3;
    EnableCmdEntry();
    if (Session.flash.iFlashPhase != FLASH_FAILED) return;
    Session.link.iWaitTicks = 0;
    if (BoardOf(Session.plan->iBoardType).retriesFlash && Session.flash.iFlashAutoRetries <= maxSilentRetries) {
        ++Session.flash.iFlashAutoRetries;
        return RetryFlashSilently();
    }
    AskUntilDecided();
}

void ShutDownFinished() { CleanUpForShutdown(2); }
