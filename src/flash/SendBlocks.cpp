// STATE_RF_BOOT_BLOCKS and STATE_SEND_BLOCKS: 64 raw bytes of the image, without address or frame, and their
// acknowledgement.

#include "display/Display.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "frame/SessionState.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "text/Text.h"

namespace {

constexpr std::int32_t blockLength = 64;

const BlockLayout& Layout() { return *BoardOf(Session.iBoardType).layout; }

void PrepareNextImageBlock()
{
    const BoardImage& image = Session.bRFBootPhase ? Session.FlashImage : Session.FlashImageVerify;
    const auto begin = image.begin() + Session.lFlashBlockPos;
    Session.vCurrentLine.assign(begin, begin + blockLength);
    Session.lFlashBlockPos += blockLength;
    if (!Session.bRFBootPhase) return;
    int sum = 0;
    for (const char byte : Session.vCurrentLine) sum += static_cast<unsigned char>(byte);
    Session.bExpectedChecksum = static_cast<std::int16_t>(255 - sum % 256);
}

/// The echo is one byte, compared as a character: the case of a letter's code doesn't matter.
bool IsExpectedEcho(const std::string& chunk)
{
    return text::Equal(chunk, std::string(1, static_cast<char>(Session.bExpectedChecksum)));
}

void CountBlock()
{
    Session.lFlashPos += blockLength;
    Session.lBytesSent += blockLength;
}

/// The board has no boot area, or not now: it signs on afresh.
bool FallsBack()
{
    const FallBack fallBack = BoardOf(Session.iBoardType).fallBack;
    return fallBack == FallBack::Always || (fallBack == FallBack::Once && !Session.bRFBootDone);
}

void EndBootLeg()
{
    ShowProgress(100);
    Session.iWaitTicks = 30;
    StatusTextUpdate(".....Starting flash now.");
    WriteLogLine("++>.....RF board bootloader successfully flashed (RF board Bootloading phase). Starting flash now.");
    Session.iCommMode = STATE_WAIT_ERASE;
    ClearCommBuffers();
    AddParamsSent("Waiting for flash erase\r\n");
}

}  // namespace

void PrepareNextBlock()
{
    ShowProgress(PercentOf(Session.lFlashPos, Session.lFlashTotalBytes));
    if (BoardOf(Session.iBoardType).group == BoardGroup::MultiStage)
        PrepareNextRecord();
    else
        PrepareNextImageBlock();
}

void StartBootLeg()
{
    Session.lFlashPos = 0;
    Session.lFlashBlockPos = Layout().bootStart;
    Session.lFlashTotalBytes = Layout().bootEnd;
    PrepareNextBlock();
    SendLine(Session.vCurrentLine);
    Session.iCommMode = STATE_RF_BOOT_BLOCKS;
}

void StartMainLeg()
{
    Session.lFlashPos = 0;
    Session.lFlashBlockPos = Layout().mainStart;
    const bool records = BoardOf(Session.iBoardType).group == BoardGroup::MultiStage;
    Session.lFlashTotalBytes = records ? Session.lFlashFileSize : Layout().mainEnd;
    PrepareNextBlock();
    SendLine(Session.vCurrentLine);
}

void OnBootBlockReply(const std::string& chunk)
{
    Session.iWaitTicks = 100;
    if (!IsExpectedEcho(chunk)) {
        if (!FallsBack()) {
            Session.iWaitTicks = 10;  // the time-out then fails the flash
            return;
        }
        Session.bRFBootDone = true;
        Session.iCommMode = STATE_WAIT_RESET;
        return;
    }
    if (Session.lFlashBlockPos >= Layout().bootEnd) {
        EndBootLeg();
        return;
    }
    CountBlock();
    Session.iLineRetries = 0;
    PrepareNextBlock();
    SendLine(Session.vCurrentLine);
}

void OnBlockReply(const std::string& chunk)
{
    Session.iWaitTicks = 100;
    const bool acknowledged = Session.bRFBootPhase ? IsExpectedEcho(chunk) : text::Holds(chunk, "$");
    if (!acknowledged) {
        if (Session.bRFBootPhase)
            Session.iWaitTicks = 10;
        else
            Session.sCommLine += chunk;
        return;
    }
    if (Session.lFlashBlockPos >= Layout().mainEnd) {
        EndOfImage();
        return;
    }
    Session.iLineRetries = 0;
    PrepareNextBlock();
    SendLine(Session.vCurrentLine);
    CountBlock();
    computer->DoEvents();
}

void EndOfImage()
{
    ShowProgress(100);
    EndOfTransfer(
        {".....Please click Next.", "++>.....Flashing RF Board successful", "*** Please click Next. ***", 10});
    Session.sCommBuffer.clear();
}
