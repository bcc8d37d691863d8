// STATE_PREFLASH: the commands that read the antenna's parameters, one after the other, and at last the reset into the
// boot loader.

#include "display/Display.h"
#include "flash/CommandLists.h"
#include "flash/FlashMainboard.h"
#include "flash/Phases.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

/// The command stayed silent five times: a main board can be flashed without its parameters, any other can't.
void GiveUpOnCommand()
{
    if (IsMainBoard(Session.plan->iBoardType)) {
        StatusTextUpdate("RETRIED 5 TIMES, WILL CONTINUE WITHOUT");
        StatusTextUpdate("RETRIEVING ANTENNA PARAMETERS");
        StatusTextUpdate("Resetting the antenna to begin flashing");
        Session.flash.bAtRisk = true;
        SendCommandLine("flasha");
        Session.flash.bSkipParams = true;
        Session.link.iWaitTicks = 200;
        Session.link.iCommMode = STATE_WAIT_RESET;
        return;
    }
    StatusTextUpdate("RETRIED 5 TIMES, CANNOT CONTINUE FLASH");
    StatusTextUpdate("CLICK CANCEL BUTTON TO END BURNLINE ASSISTANT");
    EnableCmdEntry();
    Session.link.iCommMode = STATE_IDLE;
    Session.link.iWaitTicks = 10;
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
    Session.captured.command.sExpectedReply = ExpectedReplyFor(entry);
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
    if (previous == Previous::GivenUp) return GiveUpOnCommand();
    if (previous == Previous::Again) {
        StatusTextUpdate("Did not receive expected response to command: " +
                         ListEntry(Session.plan->sPreflashCmds, Session.captured.iPreflashCmdIdx));
        StatusTextUpdate("Resending command...");
    }
    if (IsSettingTrue(SETTING_DRY_RUN)) return;  // the machine keeps ticking, nothing leaves
    const std::string entry = ListEntry(Session.plan->sPreflashCmds, Session.captured.iPreflashCmdIdx);
    int seconds = 0;
    if (IsWaitEntry(entry, seconds)) {
        ShowAllCommsTextUpdate("==>Waiting " + text::Num(seconds) + " seconds\r\n");
        Session.link.iWaitTicks = TicksOf(seconds);
        ++Session.captured.iPreflashCmdIdx;
        Session.captured.command.bReplySeen = true;
        return;
    }
    // Behind its end the list has no reset command: the command before counts as unanswered and goes out again.
    if (entry.empty()) return;
    if (IsResetCommand(entry)) return ResetByCommand(entry);
    if (text::Equal(entry, "RESET_BY_HAND")) return ResetByHand();
    SendReadCommand(entry);
}
