// STATE_WAIT_RESET: the board's boot loader signs on and is told to program. Which loader it is decides how.

#include "display/Display.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "persistence/Logs.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

/// What has signed on.
enum class Loader { None, Present, Old };

Loader LoaderIn(const std::string& heard)
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    const bool signedOn = text::Holds(heard, Session.plan->sBoardSignOn);
    if (board.group == BoardGroup::Line) return signedOn ? Loader::Present : Loader::None;
    if (board.group == BoardGroup::None) return Loader::None;
    if (signedOn && board.hasOldLoader) return Session.flash.bBootloaderUpgraded ? Loader::None : Loader::Old;
    return signedOn || text::Holds(heard, Session.config->sNewRFSignOn) ? Loader::Present : Loader::None;
}

void NothingIsSent(const std::string& file)
{
    Session.link.iCommMode = STATE_IDLE;
    Session.link.iWaitTicks = 2;
    ShowMsgBox(5, "OnSignOnReply, after Dir(" + file + ") failed.");
}

/// Opens the file as it was tested and takes its first line, before the antenna is told to erase anything. False when
/// it wasn't tested: the link rests.
bool FileIsOpenForSending()
{
    if (OpenFlashFile(StageInHand().sFlashFile) != FILE_OPENED) {
        NothingIsSent(StageInHand().sFlashFile);
        return false;
    }
    Session.attempt.sFirstLine = GetLine();
    ReadNextHexLine();
    return true;
}

void SendProgramCommand(const std::string& command, const std::string& lineEnd)
{
    Session.flash.bAtRisk = Session.flash.bErased = true;
    ShowAllCommsTextUpdate("==>" + command + "\r\n");
    MSComm1->Output(command + lineEnd);
}

void AwaitErase()
{
    ClearCommBuffers();
    Session.link.iCommMode = STATE_WAIT_ERASE;
    Session.link.iWaitTicks = 200;
    if (BoardOf(Session.plan->iBoardType).group == BoardGroup::Block) StartBootLeg();
    if (!Session.flash.bRFBootDone) {
        StatusTextUpdate("Erasing Flash ROM");
        for (Control& banner : frmWizard.lblFlashStatus) {
            banner.BackColor = White;
            banner.Visible = false;
            banner.Caption = "Erasing Flash ROM";
        }
    }
    SetNavCmds(STEP_5);
}

void StartLines()
{
    if (!FileIsOpenForSending()) return;
    StatusTextUpdate(".....Antenna reset.");
    SendProgramCommand(StageInHand().sFlashCmd, "");
    if (Session.plan->facts.returnBehindCommand) MSComm1->Output("\r");
    AwaitErase();
}

/// A Block board first takes its boot area; the new loader of board 1 has a program command of its own.
void StartBlocks()
{
    if (!Session.flash.bRFBootDone) StatusTextUpdate(".....Antenna reset.");
    const bool upgraded = BoardOf(Session.plan->iBoardType).hasOldLoader;
    SendProgramCommand(upgraded ? Session.config->sNewRFFlashOK : StageInHand().sFlashCmd, "");
    AwaitErase();
}

void StartRecords()
{
    if (!Session.flash.bRFBootDone) StatusTextUpdate(".....Antenna reset.");
    SendProgramCommand(StageInHand().sFlashCmd, "\r\n");
    ShowBanner(0, TransferBanner("\r\n"), White, Red);
    ClearCommBuffers();
    Session.link.iCommMode = STATE_BAUD_SELECT;
    Session.link.iWaitTicks = 100;
    SetNavCmds(STEP_5);
    Session.attempt.lFlashTotalBytes = Session.flash.lFlashFileSize;
}

/// The link is idle while the new loader is read; without it nothing is sent to the old one.
void StartUpgrade()
{
    Session.link.iCommMode = STATE_IDLE;
    StatusTextUpdate(".....Antenna reset.");
    StatusTextUpdate("Upgrading Boot Loader");
    ShowBanner(0, "*** UPGRADING BOOTLOADER. DO NOT POWER OFF ANTENNA ***", White, Red);
    WriteLogLine("++>Upgrading Boot Loader");
    if (!SetupBootloaderUpgrade()) {
        frmWizard.lblFlashStatus[0].Visible = false;
        Session.link.iWaitTicks = 2;
        return;
    }
    ClearCommBuffers();
    Session.flash.bAtRisk = Session.flash.bErased = true;
    MSComm1->Output("PGM_908OK");
    StatusTextUpdate("===>PGM_908OK");
    Session.link.iCommMode = STATE_BOOT_UPGRADE;
    Session.link.iWaitTicks = UpgradePatience;
    SetNavCmds(STEP_5);
}

}  // namespace

void OnSignOnReply(const std::string&)
{
    Session.link.sCommLine = Session.link.sCommBuffer;  // the sign-on may come in pieces
    const Loader loader = LoaderIn(Session.link.sCommLine);
    if (loader == Loader::None) return;
    Session.link.iWaitTicks = 0;
    const BoardGroup group = BoardOf(Session.plan->iBoardType).group;
    Session.attempt = {};
    Session.flash.iFlashPhase = FLASH_RUNNING;
    if (loader == Loader::Old) return StartUpgrade();
    switch (group) {
    case BoardGroup::Line: return StartLines();
    case BoardGroup::Block: return StartBlocks();
    case BoardGroup::MultiStage: return StartRecords();
    case BoardGroup::None: return;
    }
}
