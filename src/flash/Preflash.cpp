// STATE_PREFLASH: the commands that read the antenna's parameters, one after the other, and at last the reset into the
// boot loader.

#include "display/Display.h"
#include "flash/CommandLists.h"
#include "flash/FlashMainboard.h"
#include "flash/Phases.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "platform/Computer.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

constexpr int notRead = 41, notAnswered = 42, silent = 44;  // the questions

/// Nothing is erased yet: another try, or another board, can still be chosen.
void Stop()
{
    StatusTextUpdate("RETRIED 5 TIMES, CANNOT CONTINUE FLASH");
    StatusTextUpdate("NOTHING WAS ERASED. CLICK BACK TO TRY AGAIN, OR CANCEL TO END BURNLINE ASSISTANT");
    EnableCmdEntry();
    Session.link.iCommMode = STATE_IDLE;
    Session.link.iWaitTicks = 10;
}

/// The user takes the risk, and hasn't ended the program instead.
bool UserGoesOn(int question, const std::string& detail)
{
    return ShowMsgBox(question, "TimerHandler", detail) == Answer::Yes && !IsExitRequested();
}

/// The command was asked in vain. What is lost without its answer is the user's to decide, ahead of the erase.
bool GoesOnWithout(const std::string& command)
{
    const bool lost = IsRestored(command);
    const bool agreed = UserGoesOn(lost ? notRead : notAnswered, lost ? NameOf(command) : command);
    if (Session.captured.command.bReplySeen) return !IsExitRequested();  // it came while the user was asked
    if (!agreed) return false;
    StatusTextUpdate("RETRIED 5 TIMES, WILL CONTINUE WITHOUT " + command);
    if (lost) Session.captured.notRead.push_back(command);
    return true;
}

/// Nothing was answered, as by an antenna that waits in its boot loader: one question for all commands.
void GoOnWithoutParameters()
{
    std::string lost;
    for (const std::string& command : Session.plan->sPreflashCmds)
        if (IsRestored(command)) lost += (lost.empty() ? "" : ", ") + NameOf(command);
    if (!lost.empty() && !UserGoesOn(silent, lost)) return Stop();
    StatusTextUpdate("RETRIED 5 TIMES, WILL CONTINUE WITHOUT");
    StatusTextUpdate("RETRIEVING ANTENNA PARAMETERS");
    Session.flash.bSkipParams = true;
    AwaitReset();
}

bool IsResetCommand(const std::string& entry)
{
    return text::Equal(entry, "ZAP") || text::Equal(entry, "flashx") || text::Equal(entry, "flashr") ||
           text::Equal(entry, "flasha");
}

void ResetByCommand(const std::string& entry)
{
    StatusTextUpdate(".....Parameters retrieved.");
    StatusTextUpdate("Resetting the antenna to begin flashing");
    Session.flash.bAtRisk = true;
    SendCommandLine(entry);
    const bool slow = BoardOf(Session.plan->iBoardType).slowReset;
    if (slow) ClearCommBuffers();
    Session.link.iCommMode = STATE_WAIT_RESET;
    Session.link.iWaitTicks = slow ? 200 : 30;
}

/// The user cuts the power; nothing is armed, there is no hurry.
void ResetByHand()
{
    Session.link.iWaitTicks = 0;
    ClearCommBuffers();
    Session.link.iCommMode = STATE_WAIT_RESET;
    StatusTextUpdate(".....Parameters retrieved.");
    StatusTextUpdate("Please cycle power to the antenna to reset");
    StatusTextUpdate("Waiting for reset");
    AskForPowerCycle("*** Please cycle power to the antenna to reset ***");
}

void SendReadCommand(const std::string& entry)
{
    SendCommandLine(entry);
    Session.captured.command.sSent = entry;
    if (text::Equal(entry, "RESET")) Session.captured.command.bReplySeen = true;  // a resetting antenna owes no answer
    ++Session.captured.iPreflashCmdIdx;
    ClearCommBuffers();
}

}  // namespace

void OnPreflashReply(const std::string&) { CapturePreflashReply(); }

void NextPreflashStep()
{
    DisableCmdEntry();
    const Previous previous = JudgePrevious(Session.captured.iPreflashCmdIdx, Session.captured.command);
    if (previous == Previous::GivenUp) {
        if (!Session.captured.bAnswered) return GoOnWithoutParameters();
        if (!GoesOnWithout(Session.captured.command.sSent)) return Stop();
        Session.captured.command = {};
        Session.link.iWaitTicks = 10;
    }
    if (previous == Previous::Again) {
        StatusTextUpdate("Did not receive expected response to command: " +
                         ListEntry(Session.plan->sPreflashCmds, Session.captured.iPreflashCmdIdx));
        StatusTextUpdate("Resending command...");
    }
    const std::string entry = ListEntry(Session.plan->sPreflashCmds, Session.captured.iPreflashCmdIdx);
    int seconds = 0;
    if (IsWaitEntry(entry, seconds)) {
        ShowAllCommsTextUpdate("==>Waiting " + text::Num(seconds) + " seconds\r\n");
        Session.link.iWaitTicks = TicksOf(seconds);
        ++Session.captured.iPreflashCmdIdx;
        return;
    }
    if (IsResetCommand(entry)) return ResetByCommand(entry);
    if (entry.empty() || text::Equal(entry, "RESET_BY_HAND")) return ResetByHand();
    SendReadCommand(entry);
}
