// STATE_SEND_LINES: a line of the .HEX file, its "$", the next line.

#include "display/Display.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

constexpr int maxLineRetries = 5;

/// These boards take a line with a single CR and nothing of the file's line ends. "JARL GL" isn't among them, though it
/// takes the lone CR behind its program command.
bool TakesBareLines() { return BoardOf(Session.iBoardType).plainLines || RowIsOneOf({"HOLM", "HOLMSS", "JARL"}); }

void PauseBetweenLines()
{
    if (Session.iLinePauseTicks <= 0) return;
    Session.iDelayTicks = Session.iLinePauseTicks;
    while (Session.iDelayTicks > 0 && frmWizard.Timer2.Enabled && !IsExitRequested()) computer->WaitForEvent();
}

void SendNextLine()
{
    if (!ReadNextHexLine()) {
        CloseFlashFile();
        EndOfTransfer({".....PLEASE PRESS NEXT", "++>.....PLEASE PRESS NEXT", "*** PLEASE PRESS NEXT  ***", 20});
        return;
    }
    PauseBetweenLines();
    SendCurrentLine();
    computer->DoEvents();
    Session.lBytesSent += static_cast<std::int32_t>(Session.vCurrentLine.size());
    Session.iLineRetries = 0;
    Session.iWaitTicks = 10;
}

/// The line in flight once more, with the counters and the line shown.
void SendLineAgain()
{
    ++Session.iLineRetries;
    ++Session.iTotalRetries;
    SendCurrentLine();
    frmWizard.lblRetries[1].Caption = text::Str(Session.iLineRetries);
    frmWizard.lblTotalRetries[1].Caption = text::Str(Session.iTotalRetries);
    ShowAllCommsTextUpdate(Session.vCurrentLine + "\r\n");
}

/// A refused line goes out again, five times at most: a board that goes on refusing would be asked for ever.
void OnRefusal()
{
    if (Session.iLineRetries >= maxLineRetries) {
        StatusTextUpdate("The antenna refused a line " + text::Num(maxLineRetries + 1) + " times.");
        FailFlash();
        return;
    }
    SendLineAgain();
    Session.iWaitTicks = Session.iLineRetries < maxLineRetries ? 100 : 10;
}

}  // namespace

void SendCurrentLine()
{
    if (!TakesBareLines()) {
        SendLine(Session.vCurrentLine);
        return;
    }
    std::erase_if(Session.vCurrentLine, [](char c) { return c == '\r' || c == '\n'; });
    SendLine(Session.vCurrentLine + "\r");
}

void OnLineReply(const std::string& chunk)
{
    if (Session.iFlashPhase != FLASH_RUNNING) return;
    if (text::Holds(chunk, "$")) {
        SendNextLine();
    } else if (text::Holds(chunk, "1")) {
        OnRefusal();
    }
}

/// The wait for an acknowledgement is over: the line goes out once more, five times at most. The last of them isn't
/// waited for; it leaves the antenna in its boot loader, from where a flash can start again.
void ResendLine()
{
    SendLineAgain();
    WriteLogLine("++>Retrying sending line, retry#:" + text::Num(Session.iLineRetries) +
                 " , total # of retries:" + text::Num(Session.iTotalRetries));
    if (Session.iLineRetries < maxLineRetries) {
        Session.iWaitTicks = 100;  // ten seconds: the antenna may still be writing the line before
        return;
    }
    FailFlash();
}

void EndOfTransfer(const TransferEnd& end)
{
    Session.iFlashPhase = FLASH_FINISHED;
    StatusTextUpdate(end.status);
    WriteLogLine(end.log);
    StatusTextUpdate("Click Next button to continue");
    ShowBanner(0, end.banner, White, Blue);
    ShowAllCommsTextUpdate("==>PLEASE PRESS NEXT<==\r\n");
    EnableCmdEntry();
    frmWizard.mnuFile.Enabled = true;
    frmWizard.mnuHelp.Enabled = true;
    if (Session.bSkipParams) {
        Session.iCommMode = STATE_IDLE;
    } else {
        constexpr const char* request =
            "Please power off the antenna, wait ten seconds, and then turn the antenna back on.";
        Session.iCommMode = Session.bUSBLink ? STATE_WAIT_PORT_BACK : STATE_POSTFLASH;
        if (Session.bUSBLink) CloseComm();  // a USB adapter's port goes with the antenna's power
        Session.bRestartSeen = false;
        AddParamsSent(std::string(request) + "\r\n");
        ShowBanner(1, std::string("*** ") + request + " ***", PaleYellow, Red);
        Session.iInitLooks = 0;
        Session.iCommonPostflashMainIdx = 0;
        Session.iCommonPostflashRFIdx = 0;
        Session.iPostflashCmdIdx = 0;
    }
    Session.iWaitTicks = end.waitTicks;
    SetNavCmds(12);
}
