// STATE_BOOT_UPGRADE: the old boot loader of board 1 takes its own successor, 64 bytes for each "$". The old loader may
// be slow, and must not be left half written: it gets half a minute for each block.

#include <stdexcept>

#include "display/Display.h"
#include "flash/Acknowledgements.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "flash/SRecord.h"
#include "forms/frmWizard.h"
#include "knowledge/Utilities.h"
#include "persistence/Logs.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

constexpr std::int32_t firstByte = 1024;  // what lies ahead of it stays as it is
constexpr std::int32_t behindLast = 32256;
constexpr std::int32_t blockLength = 64;

/// The high copy of the boot block is folded down to the low one. Sums aren't tested here; that is on purpose.
void StoreRecord(const std::string& line)
{
    const SRecord record = ParseSRecord(line);
    if (record.type != 1) return;
    std::uint32_t address = record.address >= 33792 ? record.address - 32768 : record.address;
    for (const std::uint8_t byte : record.data) {
        if (address >= Session.flash.BootUpgradeImage.size())
            throw Failure{FAIL_SUBSCRIPT, Session.config->sBootloaderUpgradeFile + ": address " +
                                              text::Hex(record.address, 4) + " lies beyond the boot loader"};
        Session.flash.BootUpgradeImage[address++] = byte;
    }
}

void LoadUpgradeFile()
{
    long records = 0;
    while (!FlashFileAtEnd()) {
        const std::string line = GetLine();
        if (!IsSRecord(line)) continue;
        frmWizard.lblBytesSent[1].Caption = text::Num(++records);
        StoreRecord(line);
    }
    Session.attempt.lBootBytePos = firstByte;
    CloseFlashFile();
}

void SendBootUpgradeBlock()
{
    ShowProgress(PercentOf(Session.attempt.lBootBytePos, behindLast));
    const auto begin = Session.flash.BootUpgradeImage.begin() + Session.attempt.lBootBytePos;
    Session.attempt.lBootBytePos += blockLength;
    BeginUnit();
    NoteSend();
    // In one piece: the old loader needs no pause inside a block.
    MSComm1->Output(std::string(begin, begin + blockLength));
}

void EndUpgrade()
{
    Session.flash.bBootloaderUpgraded = true;
    Session.link.iCommMode = STATE_WAIT_RESET;
    Session.link.iWaitTicks = 0;
    SetNavCmds(STEP_5);
    ShowBanner(0,
               "*** Boot loader for " + BoardNameForLog() + " upgraded. Please cycle power to the antenna to continue. ***",
               PaleYellow, Red);
    ShowMsgBox(30, "CommHandler", BoardNameForLog());
    frmWizard.lblFlashStatus[0].Visible = true;
    frmWizard.lblStep[5].Caption = "Flashing RF board with file " + text::Trim(StageInHand().sFlashFile);
    ShowAllCommsTextUpdate("Please cycle power to the antenna to continue.\r\n");
}

}  // namespace

bool SetupBootloaderUpgrade()
{
    bool loaded = false;
    Guarded("SetupBootloaderUpgrade", [&] {
        Session.flash.BootUpgradeImage.fill(255);
        frmWizard.lblStep[5].Caption = "Upgrading boot loader... ";
        const std::string& file = Session.config->sBootloaderUpgradeFile;
        WriteLogLine("Bootloader will be upgraded to file " + file + ".");
        if (!ProgramFileExists(file)) {
            ShowMsgBox(5, "SetupBootloaderUpgrade, after Dir(" + file + ") failed.");
            return;
        }
        if (OpenFlashFile(file) != FILE_OPENED) {
            Session.flash.bFlashFileBad = true;
            ShowMsgBox(20, "SetupBootloaderUpgrade, after discovering bootloader upgrade file to be corrupt.");
            return;
        }
        LoadUpgradeFile();
        loaded = true;
    });
    return loaded;
}

void OnUpgradeReply(const std::string& chunk)
{
    if (!text::Holds(chunk, "$")) return;
    NoteAnswers({1, 0});
    Session.link.iWaitTicks = UpgradePatience;
    if (Session.attempt.lBootBytePos < behindLast) return SendBootUpgradeBlock();
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
