// STATE_BOOT_UPGRADE: the old boot loader of board 1 takes its own successor, 64 bytes for each "$". The old loader may
// be slow, and must not be left half written: it gets half a minute for each block.

#include "display/Display.h"
#include "flash/Acknowledgements.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "knowledge/Utilities.h"
#include "persistence/Logs.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

constexpr std::int32_t blockLength = 64;

void SendBootUpgradeBlock()
{
    ShowProgress(PercentOf(Session.attempt.lBootBytePos, UpgradeEnd));
    const auto begin = Session.flash.BootUpgradeImage.begin() + Session.attempt.lBootBytePos;
    Session.attempt.lBootBytePos += blockLength;
    Session.attempt.vCurrentLine.assign(begin, begin + blockLength);
    BeginUnit();
    NoteSend();
    // In one piece: the old loader needs no pause inside a block.
    MSComm1->Output(Session.attempt.vCurrentLine);
}

void EndUpgrade()
{
    Session.flash.bBootloaderUpgraded = true;
    Session.link.iCommMode = STATE_WAIT_RESET;
    Session.link.iWaitTicks = 0;
    SetNavCmds(STEP_5);
    ShowBanner(
        0, "*** Boot loader for " + BoardNameForLog() + " upgraded. Please cycle power to the antenna to continue. ***",
        PaleYellow, Red);
    ShowMsgBox(30, "CommHandler", BoardNameForLog());
    frmWizard.lblFlashStatus[0].Visible = true;
    frmWizard.lblStep[5].Caption = "Flashing RF board with file " + text::Trim(StageInHand().sFlashFile);
    ShowAllCommsTextUpdate("Please cycle power to the antenna to continue.\r\n");
}

}  // namespace

bool SetupBootloaderUpgrade()
{
    const std::string& file = Session.config->sBootloaderUpgradeFile;
    frmWizard.lblStep[5].Caption = "Upgrading boot loader... ";
    WriteLogLine("Bootloader will be upgraded to file " + file + ".");
    Session.attempt.lBootBytePos = UpgradeFirst;
    if (FlashFileNamed(file)) return true;
    ShowMsgBox(5, "SetupBootloaderUpgrade, after Dir(" + file + ") failed.");
    return false;
}

void OnUpgradeReply(const std::string& chunk)
{
    if (!text::Holds(chunk, "$")) return;
    Session.link.iWaitTicks = Session.attempt.bAtEnd ? QuietTicks() : UpgradePatience;
    const bool begins = Session.attempt.sentAt.empty();  // the first "$" answers the command
    if (!begins && NoteAnswers({1, 0}) != Standing::In) return;
    if (Session.attempt.lBootBytePos < UpgradeEnd) return SendBootUpgradeBlock();
    Session.attempt.bAtEnd = true;
    Session.link.iWaitTicks = QuietTicks();
}

/// Where an answer was doubled on its way, the last one comes while the loader still takes blocks: it must not be told
/// to be whole, and lose its power, before it is.
void OnUpgradeTimeOut()
{
    if (Session.attempt.bAtEnd)
        EndUpgrade();
    else
        FailFlash();
}
