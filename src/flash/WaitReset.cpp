// STATE_WAIT_RESET: the board's boot loader signs on and is told to program. Which loader it is decides how.

#include "display/Display.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "persistence/Logs.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

/// These boards want a lone CR behind the program command.
bool WantsCrAfterCommand()
{
    return BoardOf(Session.iBoardType).plainLines || RowIsOneOf({"HOLM", "HOLMSS", "JARL", "JARL GL"});
}

/// What has signed on.
enum class Loader { None, Present, OldOfBoard1 };

Loader LoaderIn(const std::string& heard)
{
    const Board& board = BoardOf(Session.iBoardType);
    const bool signedOn = text::Holds(heard, Session.sBoardSignOn);
    if (board.group == BoardGroup::Line) return signedOn ? Loader::Present : Loader::None;
    if (board.group == BoardGroup::None) return Loader::None;
    if (signedOn && board.type == 1) return Session.bUpgradeBootloader ? Loader::OldOfBoard1 : Loader::None;
    return signedOn || text::Holds(heard, Session.sNewRFSignOn) ? Loader::Present : Loader::None;
}

void NothingIsSent(const std::string& file)
{
    Session.iCommMode = STATE_IDLE;
    Session.iWaitTicks = 2;
    ShowMsgBox(5, "OnSignOnReply, after Dir(" + file + ") failed.");
}

/// Opens the file and reads its first line, before the antenna is told to erase anything. False when it has gone since
/// its test: the link rests.
bool FileIsOpenForSending()
{
    if (OpenFlashFile(Session.sFlashFile) != FILE_OPENED) {
        NothingIsSent(Session.sFlashFile);
        return false;
    }
    Session.sFirstLine = GetLine();
    ReadNextHexLine();
    return true;
}

void SendProgramCommand(const std::string& command, const std::string& lineEnd)
{
    ShowAllCommsTextUpdate("==>" + command + "\r\n");
    MSComm1->Output(command + lineEnd);
}

void ClearCounters()
{
    ClearCommBuffers();
    Session.iFlashPhase = FLASH_RUNNING;
    Session.lBytesSent = 0;
    Session.iLineRetries = 0;
    Session.iTotalRetries = 0;
}

void AwaitErase()
{
    ClearCounters();
    Session.iCommMode = STATE_WAIT_ERASE;
    Session.iWaitTicks = 200;
    if (Session.bRFBootPhase) StartBootLeg();
    if (!Session.bRFBootDone) {
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
    SendProgramCommand(Session.sFlashCmd, "");
    if (WantsCrAfterCommand()) MSComm1->Output("\r");
    AwaitErase();
}

/// A Block board first takes its boot area; the new loader of board 1 has a program command of its own.
void StartBlocks()
{
    if (!Session.bRFBootDone) StatusTextUpdate(".....Antenna reset.");
    SendProgramCommand(Session.iBoardType == 1 ? Session.sNewRFFlashOK : Session.sFlashCmd, "");
    AwaitErase();
}

void StartRecords()
{
    if (!Session.bRFBootDone) StatusTextUpdate(".....Antenna reset.");
    SendProgramCommand(Session.sFlashCmd, "\r\n");
    if (Session.iRF7Stage == 0) Session.iRF7Stage = 1;
    ShowBanner(0, TransferBanner("\r\n"), White, Red);
    ClearCounters();
    Session.iCommMode = STATE_BAUD_SELECT;
    Session.iWaitTicks = 10;
    Session.lFlashTotalBytes = Session.lFlashFileSize;
}

/// The link is idle while the new loader is read; without it nothing is sent to the old one.
void StartUpgrade()
{
    Session.iCommMode = STATE_IDLE;
    StatusTextUpdate(".....Antenna reset.");
    StatusTextUpdate("Upgrading Boot Loader");
    ShowBanner(0, "*** UPGRADING BOOTLOADER. DO NOT POWER OFF ANTENNA ***", White, Red);
    WriteLogLine("++>Upgrading Boot Loader");
    if (!SetupBootloaderUpgrade()) {
        frmWizard.lblFlashStatus[0].Visible = false;
        Session.iWaitTicks = 2;
        return;
    }
    ClearCommBuffers();
    MSComm1->Output("PGM_908OK");
    StatusTextUpdate("===>PGM_908OK");
    Session.iCommMode = STATE_BOOT_UPGRADE;
    SetNavCmds(STEP_5);
}

}  // namespace

void OnSignOnReply(const std::string&)
{
    Session.sCommLine = Session.sCommBuffer;  // the sign-on may come in pieces
    const Loader loader = LoaderIn(Session.sCommLine);
    if (loader == Loader::None) return;
    Session.iWaitTicks = 0;
    const BoardGroup group = BoardOf(Session.iBoardType).group;
    Session.bRFBootPhase = group != BoardGroup::Line && loader == Loader::Present;
    if (loader == Loader::OldOfBoard1) return StartUpgrade();
    if (Session.iBoardType != 1) Session.bUpgradeBootloader = false;
    switch (group) {
    case BoardGroup::Line: return StartLines();
    case BoardGroup::Block: return StartBlocks();
    case BoardGroup::MultiStage: return StartRecords();
    case BoardGroup::None: return;
    }
}
