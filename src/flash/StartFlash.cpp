// The start of a flash: all its files are tested, then the link is set going. Nothing waits here.

#include "display/Display.h"
#include "flash/FileTest.h"
#include "flash/FlashMainboard.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

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

void AwaitReset()
{
    const Board& board = BoardOf(Session.plan->iBoardType);
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

void StartFlash()
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    Session.captured = {};
    Session.flash = {};
    Session.attempt = {};
    Session.flash.bSkipParams = Session.plan->bSkipParams;
    BeginStage();
    if (board.group == BoardGroup::None || !FlashFilesAreSound()) return;
    if (IsSettingTrue(SETTING_DRY_RUN)) {
        StatusTextUpdate("DryRunMode is on in Burnline.ini: nothing is sent to the antenna.");
        Session.link.iWaitTicks = 2;
        return;
    }
    if (Session.flash.bSkipParams) {
        AwaitReset();
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
    WriteLogLine("File to flash is " + StageInHand().sFlashFile + ".");
    AwaitNextStage();
    TellStart(board);
}

void AskForPowerCycle(const std::string& words) { ShowBanner(0, words, PaleYellow, Red); }
