// The start of a flash: the file is tested, then the link is set going. Nothing waits here.

#include <algorithm>

#include "display/Display.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/ProgramFiles.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

/// The parameters were read before the first stage; a later one must not lose them.
void ResetForFlash(bool laterStage)
{
    EnableCmdEntry();
    frmWizard.lblFlashStatus[0].Visible = false;
    ClearCommBuffers();
    Session.iPreflashCmdIdx = 0;
    if (!laterStage) {
        Session.sCapturedParams.assign(1, "");  // element 0 stays unused
        Session.iCapturedParamCount = 0;
    }
    Session.iWaitTicks = 0;
    Session.iFlashPhase = FLASH_RUNNING;
    Session.iCommMode = STATE_IDLE;
}

bool IsThere(const std::string& file, const std::string& told)
{
    if (ProgramFileExists(file)) return true;
    Session.bFlashFileBad = true;
    ShowMsgBox(5, told);
    return false;
}

void TestImageFile(const std::string& file)
{
    if (!text::Holds(file, ".S19")) {
        StatusTextUpdate(file + " is no .S19 file, and this board takes no other. Click Back to choose another file.");
        Session.bFlashFileBad = true;
        return;
    }
    CheckS19File(file, Session.FirstFile.AddressOffset, true, true);
    if (!Session.bFlashFileBad) CheckS19File(file, Session.FirstFile.AddressOffset, false, false);
}

void TestSecondFile(const std::string& file)
{
    WriteLogLine("++>Checksumming flash file: " + file);
    const FileArguments& arguments = Session.SecondFile;
    for (const bool first : {true, false})
        if (!Session.bFlashFileBad)
            CheckHexImageFile(file, arguments.ImageSize, arguments.AddressOffset, arguments.CheckValue, first, first);
}

/// The boot area is laid over the image that the flash file has filled.
void TestBootloaderFile(const std::string& file)
{
    WriteLogLine("Bootloader file is " + file + ".");
    if (!IsThere(file, "StartFlash, after Dir(" + file + ") failed.")) return;
    WriteLogLine("++>Checksumming flash file: " + file);
    frmWizard.lblBytesSent[0].Caption = "Record:";
    if (text::Holds(file, ".S19")) CheckS19File(file, 0, true, true);
}

/// True when all files that go to the board may be sent. What is wrong with one has been told, and nothing is tested
/// behind it.
bool FlashFilesAreSound(const Board& board)
{
    const std::string file = Session.sFlashFile;
    Session.bFlashFileBad = false;
    WriteLogLine("File to flash is " + file + ".");
    if (!IsThere(file, "StartFlash, after Dir(" + file + " failed.")) return false;
    WriteLogLine("++>Checksumming flash file: " + file);
    frmWizard.lblBytesSent[0].Caption = "Record:";
    if (board.group != BoardGroup::Line || !IsSettingTrue(SETTING_DRY_RUN)) CheckFlashFile(file);
    if (board.group == BoardGroup::Line) return !Session.bFlashFileBad;
    if (!Session.bFlashFileBad && !Session.sFlashFileName.empty()) TestSecondFile(Session.sFlashFileName);
    if (!Session.bFlashFileBad && board.group == BoardGroup::Block) TestBootloaderFile(Session.sNewRFBootloaderFile);
    return !Session.bFlashFileBad;
}

void ShowEverywhere(const std::string& words)
{
    StatusTextUpdate(words);
    ShowAllCommsTextUpdate(words + "\r\n");
}

/// A later stage of board 21: its loader starts at 9600 again when the power comes back.
void AwaitNextStage()
{
    const std::string done = Session.iRF7PrevStage == 2 ? "FPGA flash complete! " : "Main flash complete! ";
    if (Session.iRF7Stage == 2)
        ShowEverywhere((Session.bSkipParams ? "Main flash complete!  " : "") +
                       std::string("Power cycle to start FPGA flash!"));
    else
        ShowEverywhere((Session.bSkipParams ? done : "") +
                       std::string("Power cycle to start Acquisition Processor flash!"));
    if (IsSettingTrue(SETTING_USE_FAST_BAUD)) ReopenAt("9600,N,8,1");
    StatusTextUpdate("*** Please cycle power to the antenna to reset. ***");
    AskForPowerCycle("*** Please cycle power to the antenna to reset. ***");
    Session.iCommMode = STATE_WAIT_RESET;
    Session.iWaitTicks = 0;
    Session.bRFBootDone = false;
}

/// Without parameters to save the flash begins with the reset: some boards take it as a command, the others need the
/// user's hand.
void AwaitReset(const Board& board)
{
    StatusTextUpdate("Waiting for reset");
    if (board.takesFlasha) {
        ShowAllCommsTextUpdate("==>flasha\r\n");
        MSComm1->Output("flasha\r");
        // One without power or software doesn't hear it.
        AskForPowerCycle("*** Waiting for the antenna to reset. If nothing happens, cycle its power. ***");
    } else {
        AskForPowerCycle("*** Please cycle power to the antenna to reset. ***");
    }
    Session.iCommMode = STATE_WAIT_RESET;
    Session.iWaitTicks = 0;
    Session.bRFBootDone = false;
}

}  // namespace

void CheckFlashFile(const std::string& fileName)
{
    if (BoardOf(Session.iBoardType).group == BoardGroup::Line)
        CheckHexFile(fileName);
    else
        TestImageFile(fileName);
}

void StartFlash()
{
    const Board& board = BoardOf(Session.iBoardType);
    const bool laterStage = board.group == BoardGroup::MultiStage && Session.iRF7Stage > 1;
    ResetForFlash(laterStage);
    if (board.group == BoardGroup::None || !FlashFilesAreSound(board)) return;
    if (board.holdsNoParams) Session.bSkipParams = true;
    if (laterStage) {
        AwaitNextStage();
    } else if (Session.bSkipParams) {
        AwaitReset(board);
    } else {
        StatusTextUpdate("Getting antenna parameters before flashing.");
        Session.iCommMode = STATE_PREFLASH;
        Session.iWaitTicks = 10;
    }
    WriteLogLine("++>Starting " + std::string(board.name) + " flashing, sending commands to antenna");
}

void AskForPowerCycle(const std::string& words) { ShowBanner(0, words, PaleYellow, Red); }

bool RowIsOneOf(std::initializer_list<const char*> names)
{
    const auto row = static_cast<std::size_t>(Session.iAntennaIdx);
    if (row >= Session.AntennaTable.size()) return false;
    const AntennaRecord& antenna = Session.AntennaTable[row];
    return std::any_of(names.begin(), names.end(), [&](const char* name) {
        return text::Equal(text::Trim(antenna.BoardIdWords), name) || text::Equal(antenna.AntennaName, name);
    });
}
