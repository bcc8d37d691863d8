// STATE_BOOT_UPGRADE: the old boot loader of board 1 takes its own successor, 64 bytes for each "$". The old loader may
// be slow, and must not be left half written: it gets half a minute for each block.

#include <stdexcept>

#include "display/Display.h"
#include "flash/Acknowledgements.h"
#include "flash/FileIO.h"
#include "flash/FileTest.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "flash/SRecord.h"
#include "forms/frmWizard.h"
#include "knowledge/Utilities.h"
#include "persistence/Logs.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

constexpr std::int32_t firstByte = 1024;  // what lies ahead of it stays as it is
constexpr std::int32_t behindLast = 32256;
constexpr std::int32_t blockLength = 64;

/// The high copy of the boot block is folded down to the low one.
void StoreRecord(const std::string& line)
{
    const SRecord record = ParseSRecord(line);
    if (record.type != 1) return;
    std::uint32_t address = record.address >= 33792 ? record.address - 32768 : record.address;
    for (const std::uint8_t byte : record.data) {
        if (address >= Session.flash.BootUpgradeImage.size())
            throw std::out_of_range("address " + text::Hex(record.address, 4) + " lies beyond the boot loader");
        Session.flash.BootUpgradeImage[address++] = byte;
    }
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

void CheckUpgradeFile(const std::string& fileName)
{
    Session.flash.BootUpgradeImage.fill(255);
    FileTest test;
    test.fileName = fileName;
    test.isRecord = [](const std::string& line) { return IsSRecord(line); };
    test.test = StoreRecord;
    RunFileTest(test);
}

bool SetupBootloaderUpgrade()
{
    const std::string& file = Session.config->sBootloaderUpgradeFile;
    frmWizard.lblStep[5].Caption = "Upgrading boot loader... ";
    WriteLogLine("Bootloader will be upgraded to file " + file + ".");
    Session.attempt.lBootBytePos = firstByte;
    if (FlashFileNamed(file)) return true;
    ShowMsgBox(5, "SetupBootloaderUpgrade, after Dir(" + file + ") failed.");
    return false;
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
