// The start of a flash: the file is tested, then the link is set going. Nothing waits here.

#include "display/Display.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/ProgramFiles.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

bool IsThere(const std::string& file, const std::string& told)
{
    if (ProgramFileExists(file)) return true;
    Session.flash.bFlashFileBad = true;
    ShowMsgBox(5, told);
    return false;
}

void TestImageFile(const std::string& file, int boardType, std::int32_t addressBias)
{
    if (!text::Holds(file, ".S19")) {
        StatusTextUpdate(file + " is no .S19 file, and this board takes no other. Click Back to choose another file.");
        Session.flash.bFlashFileBad = true;
        return;
    }
    CheckS19File(file, addressBias, boardType, S19File::Software);
}

void TestSecondFile(const std::string& file)
{
    WriteLogLine("++>Checksumming flash file: " + file);
    CheckHexImageFile(file, Session.plan->SecondFile, Session.plan->iBoardType);
}

/// The boot area is laid over the image that the flash file has filled.
void TestBootloaderFile(const std::string& file)
{
    WriteLogLine("Bootloader file is " + file + ".");
    if (!IsThere(file, "StartFlash, after Dir(" + file + ") failed.")) return;
    WriteLogLine("++>Checksumming flash file: " + file);
    frmWizard.lblBytesSent[0].Caption = "Record:";
    if (text::Holds(file, ".S19")) CheckS19File(file, 0, Session.plan->iBoardType, S19File::BootLoader);
}

/// True when all files that go to the board may be sent. What is wrong with one has been told, and nothing is tested
/// behind it.
bool FlashFilesAreSound(const Board& board)
{
    const std::string& file = StageInHand().sFlashFile;
    Session.flash.bFlashFileBad = false;
    WriteLogLine("File to flash is " + file + ".");
    if (!IsThere(file, "StartFlash, after Dir(" + file + " failed.")) return false;
    WriteLogLine("++>Checksumming flash file: " + file);
    frmWizard.lblBytesSent[0].Caption = "Record:";
    if (board.group != BoardGroup::Line || !IsSettingTrue(SETTING_DRY_RUN))
        CheckFlashFile(file, board.type, Session.plan->FirstFile.AddressOffset);
    if (board.group == BoardGroup::Line) return !Session.flash.bFlashFileBad;
    if (!Session.flash.bFlashFileBad && !Session.plan->sFlashFileName.empty())
        TestSecondFile(Session.plan->sFlashFileName);
    if (!Session.flash.bFlashFileBad && board.group == BoardGroup::Block)
        TestBootloaderFile(Session.plan->sNewRFBootloaderFile);
    return !Session.flash.bFlashFileBad;
}

void ShowEverywhere(const std::string& words)
{
    StatusTextUpdate(words);
    ShowAllCommsTextUpdate(words + "\r\n");
}

/// A later stage of board 21: its loader starts at 9600 again when the power comes back.
void AwaitNextStage()
{
    const FlashStage& stage = StageInHand();
    ShowEverywhere((Session.flash.bSkipParams ? stage.done : "") + stage.request);
    if (IsSettingTrue(SETTING_USE_FAST_BAUD)) SetLinkSettings(BoardOf(Session.plan->iBoardType).link);
    StatusTextUpdate("*** Please cycle power to the antenna to reset. ***");
    AskForPowerCycle("*** Please cycle power to the antenna to reset. ***");
    Session.link.iCommMode = STATE_WAIT_RESET;
    Session.link.iWaitTicks = 0;
    Session.flash.bRFBootDone = false;
    SetNavCmds(STEP_5);
}

/// Without parameters to save the flash begins with the reset: some boards take it as a command, the others need the
/// user's hand.
void AwaitReset(const Board& board)
{
    StatusTextUpdate("Waiting for reset");
    if (board.takesFlasha) {
        ShowAllCommsTextUpdate("==>flasha\r\n");
        Session.flash.bAtRisk = true;
        MSComm1->Output("flasha\r");
        // One without power or software doesn't hear it.
        AskForPowerCycle("*** Waiting for the antenna to reset. If nothing happens, cycle its power. ***");
    } else {
        AskForPowerCycle("*** Please cycle power to the antenna to reset. ***");
    }
    Session.link.iCommMode = STATE_WAIT_RESET;
    Session.link.iWaitTicks = 0;
}

/// The link rests while the files are tested.
void BeginStage()
{
    EnableCmdEntry();
    frmWizard.lblFlashStatus[0].Visible = false;
    ClearCommBuffers();
    Session.link.iWaitTicks = 0;
    Session.link.iCommMode = STATE_IDLE;
    Session.flash.iFlashPhase = FLASH_RUNNING;
    Session.flash.dFlashStart = computer->Seconds();
}

void TellStart(const Board& board)
{
    WriteLogLine("++>Starting " + std::string(board.name) + " flashing, sending commands to antenna");
}

}  // namespace

const FlashStage& StageInHand() { return Session.plan->stages.at(Session.flash.stage); }

void CheckFlashFile(const std::string& fileName, int boardType, std::int32_t addressBias)
{
    if (BoardOf(boardType).group == BoardGroup::Line)
        CheckHexFile(fileName);
    else
        TestImageFile(fileName, boardType, addressBias);
}

void StartFlash()
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    Session.captured = {};
    Session.flash = {};
    Session.attempt = {};
    Session.flash.bSkipParams = Session.plan->bSkipParams;
    BeginStage();
    if (board.group == BoardGroup::None || !FlashFilesAreSound(board)) return;
    if (Session.flash.bSkipParams) {
        AwaitReset(board);
    } else {
        StatusTextUpdate("Getting antenna parameters before flashing.");
        Session.link.iCommMode = STATE_PREFLASH;
        Session.link.iWaitTicks = 10;
    }
    TellStart(board);
}

void StartNextStage()
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    ++Session.flash.stage;
    BeginStage();
    if (!FlashFilesAreSound(board)) return;
    AwaitNextStage();
    TellStart(board);
}

void AskForPowerCycle(const std::string& words) { ShowBanner(0, words, PaleYellow, Red); }
