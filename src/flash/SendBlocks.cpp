// STATE_RF_BOOT_BLOCKS and STATE_SEND_BLOCKS: 64 raw bytes of the image, without address or frame, and their
// acknowledgement.

#include "display/Display.h"
#include "flash/Acknowledgements.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

constexpr std::int32_t blockLength = 64;

const BlockLayout& Layout() { return *BoardOf(Session.plan->iBoardType).layout; }

void PrepareNextBlock()
{
    ShowProgress(PercentOf(Session.attempt.lFlashPos, Session.attempt.lFlashTotalBytes));
    const auto begin = Session.flash.FlashImage.begin() + Session.attempt.lFlashBlockPos;
    Session.attempt.vCurrentLine.assign(begin, begin + blockLength);
    Session.attempt.lFlashBlockPos += blockLength;
    int sum = 0;
    for (const char byte : Session.attempt.vCurrentLine) sum += static_cast<unsigned char>(byte);
    Session.attempt.bExpectedChecksum = static_cast<std::int16_t>(255 - sum % 256);
}

/// The echo is one byte. An equal one that comes before the block can have left was doubled by the line.
bool IsExpectedEcho(const std::string& chunk)
{
    return chunk == std::string(1, static_cast<char>(Session.attempt.bExpectedChecksum));
}

void SendNextBlock()
{
    PrepareNextBlock();
    BeginUnit();
    NoteSend();
    SendLine(Session.attempt.vCurrentLine);
}

void CountBlock()
{
    Session.attempt.lFlashPos += blockLength;
    Session.attempt.lBytesSent += blockLength;
}

/// The board has no boot area, or not now: it signs on afresh.
bool FallsBack()
{
    const FallBack fallBack = BoardOf(Session.plan->iBoardType).fallBack;
    return fallBack == FallBack::Always || (fallBack == FallBack::Once && !Session.flash.bRFBootDone);
}

void EndBootLeg()
{
    ShowProgress(100);
    Session.link.iWaitTicks = 30;
    StatusTextUpdate(".....Starting flash now.");
    WriteLogLine("++>.....RF board bootloader successfully flashed (RF board Bootloading phase). Starting flash now.");
    Session.link.iCommMode = STATE_WAIT_ERASE;
    ClearCommBuffers();
    AddParamsSent("Waiting for flash erase\r\n");
}

}  // namespace

void StartBootLeg()
{
    Session.attempt.lFlashPos = 0;
    Session.attempt.lFlashBlockPos = Layout().bootStart;
    Session.attempt.lFlashTotalBytes = Layout().bootEnd;
    SendNextBlock();
    Session.link.iCommMode = STATE_RF_BOOT_BLOCKS;
}

void StartMainLeg()
{
    Session.attempt.lFlashPos = 0;
    Session.attempt.lFlashBlockPos = Layout().mainStart;
    Session.attempt.lFlashTotalBytes = Layout().mainEnd;
    SendNextBlock();
}

void OnBootBlockReply(const std::string& chunk)
{
    Session.link.iWaitTicks = 100;
    if (!IsExpectedEcho(chunk)) {
        if (!FallsBack()) {
            Session.link.iWaitTicks = 10;  // the time-out then fails the flash
            return;
        }
        Session.flash.bRFBootDone = true;
        Session.link.iCommMode = STATE_WAIT_RESET;
        return;
    }
    if (NoteAnswers({1, 0}) != Standing::In) return;
    if (Session.attempt.lFlashBlockPos >= Layout().bootEnd) {
        EndBootLeg();
        return;
    }
    CountBlock();
    Session.attempt.iLineRetries = 0;
    SendNextBlock();
}

void OnBlockReply(const std::string& chunk)
{
    if (Session.attempt.bAtEnd) {
        // Echoes run ahead of their blocks only where they are all the same; anything else is noise.
        if (IsExpectedEcho(chunk)) FailOnSurplus();
        return;
    }
    Session.link.iWaitTicks = 100;
    if (!IsExpectedEcho(chunk)) {
        Session.link.iWaitTicks = 10;  // the time-out then fails the flash
        return;
    }
    if (NoteAnswers({1, 0}) != Standing::In) return;
    if (Session.attempt.lFlashBlockPos >= Layout().mainEnd) {
        ShowProgress(100);
        Session.attempt.bAtEnd = true;
        Session.link.iWaitTicks = QuietTicks();
        return;
    }
    Session.attempt.iLineRetries = 0;
    SendNextBlock();
    CountBlock();
    computer->DoEvents();
}

/// A block can't be sent again: it has no address. At the end the line has been quiet: no echo is missing.
void OnBlockTimeOut()
{
    if (Session.attempt.bAtEnd)
        EndOfImage();
    else
        FailFlash();
}

void EndOfImage()
{
    ShowProgress(100);
    EndOfTransfer(
        {".....Please click Next.", "++>.....Flashing RF Board successful", "*** Please click Next. ***", 10});
    Session.link.sCommBuffer.clear();
}
