// The test of all files of a flash, ahead of the first byte that goes to the antenna.

#include "display/Display.h"
#include "flash/FileTest.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/ProgramFiles.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

bool IsThere(const std::string& file, const std::string& what)
{
    if (ProgramFileExists(file)) return true;
    Session.flash.bFlashFileBad = true;
    const std::string name =
        file.empty() ? "FLASHCFG.TXT names no " + what : "the " + what + " " + file + " is missing";
    StatusTextUpdate("This board can't be flashed: " + name + ". Nothing was sent to the antenna.");
    ShowMsgBox(5, "StartFlash, after Dir(" + file + ") failed.");
    return false;
}

void Announce(const std::string& file)
{
    WriteLogLine("++>Checksumming flash file: " + file);
    frmWizard.lblBytesSent[0].Caption = "Record:";
}

void TestImageFile(const std::string& file, int boardType, std::int32_t addressBias)
{
    if (!text::Holds(file, ".S19")) {
        Session.flash.refusal = file + " is no .S19 file, and this board takes no other";
        StatusTextUpdate(Session.flash.refusal + ". Click Back to choose another file.");
        Session.flash.bFlashFileBad = true;
        return;
    }
    CheckS19File(file, addressBias, boardType, S19File::Software);
}

/// The files of all stages; later ones are flashed behind a power cycle each, and none may be missing then.
void TestStages(const Board& board)
{
    for (const FlashStage& stage : Session.plan->stages) {
        const std::string& file = stage.sFlashFile;
        WriteLogLine("File to flash is " + file + ".");
        if (!IsThere(file, "flash file")) return;
        Announce(file);
        CheckFlashFile(file, board.type, Session.plan->FirstFile.AddressOffset);
        if (Session.flash.bFlashFileBad) return;
    }
}

/// Laid over the image that the flash file has filled.
void TestSecondFile(const Board& board)
{
    const std::string& file = Session.plan->sFlashFileName;
    if (file.empty() || !IsThere(file, "second flash file")) return;
    Announce(file);
    CheckHexImageFile(file, Session.plan->SecondFile, board.type);
}

/// The boot area is laid over both.
void TestBootloaderFile(const Board& board)
{
    const std::string& file = Session.plan->sNewRFBootloaderFile;
    WriteLogLine("Bootloader file is " + file + ".");
    if (!IsThere(file, "boot loader file")) return;
    Announce(file);
    CheckS19File(file, 0, board.type, S19File::BootLoader);
}

/// Which loader the board has is known when it has been reset into it; that would be too late.
void TestUpgradeFile(const Board& board)
{
    const std::string& file = Session.config->sBootloaderUpgradeFile;
    if (!board.hasOldLoader || file.empty()) return;
    WriteLogLine("Bootloader upgrade file is " + file + ".");
    if (!IsThere(file, "boot loader upgrade file")) return;
    Announce(file);
    CheckUpgradeFile(file);
    if (Session.flash.bFlashFileBad)
        ShowMsgBox(20, "StartFlash, after discovering bootloader upgrade file to be corrupt.");
}

/// What is odd may be right all the same; that is for the user to know.
bool UserTakesOddFiles()
{
    if (Session.flash.warnings.empty()) return true;
    std::string words = "There is something odd about what is to be flashed:\n\n";
    for (const std::string& warning : Session.flash.warnings) words += warning + ".\n\n";
    words += "Nothing was sent to the antenna yet. Do you want to flash it all the same?";
    const Answer answer = computer->MsgBox(words, Buttons::YesNo, Icon::Exclamation, ODD_FILES_TITLE, Answer::No);
    WriteLogLine(answer == Answer::Yes ? "++>The user takes the odd files."
                                       : "++>The user doesn't take the odd files.");
    if (answer == Answer::Yes) return true;
    StatusTextUpdate("Nothing was sent to the antenna. Click Back to choose another file, or get this one again.");
    Session.flash.bFlashFileBad = true;
    return false;
}

}  // namespace

void CheckFlashFile(const std::string& fileName, int boardType, std::int32_t addressBias)
{
    if (BoardOf(boardType).group == BoardGroup::Line)
        CheckHexFile(fileName);
    else
        TestImageFile(fileName, boardType, addressBias);
}

bool FlashFilesAreSound()
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    Session.flash.bFlashFileBad = false;
    TestStages(board);
    if (board.group == BoardGroup::Block) {
        for (const auto test : {TestSecondFile, TestBootloaderFile, TestUpgradeFile})
            if (!Session.flash.bFlashFileBad) test(board);
    }
    return !Session.flash.bFlashFileBad && UserTakesOddFiles();
}
