// STATE_SEND_LINES: a line of the .HEX file, its "$", the next line.

#include "display/Display.h"
#include "flash/Acknowledgements.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/Phases.h"
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

constexpr int maxLineRetries = 5;

void PauseBetweenLines()
{
    if (Session.plan->iLinePauseTicks <= 0) return;
    Session.link.iDelayTicks = Session.plan->iLinePauseTicks;
    while (Session.link.iDelayTicks > 0 && frmWizard.Timer2.Enabled && !IsExitRequested()) computer->WaitForEvent();
}

/// The antenna owes nothing. One answer too many would say that the answers have run ahead of the lines, so it is
/// listened to for as long as an answer may take.
void AwaitQuietEnd()
{
    Session.attempt.bAtEnd = true;
    Session.link.iWaitTicks = QuietTicks();
}

void EndOfLines()
{
    CloseFlashFile();
    EndOfTransfer({".....PLEASE PRESS NEXT", "++>.....PLEASE PRESS NEXT", "*** PLEASE PRESS NEXT  ***", 20});
}

void SendNextLine()
{
    if (!ReadNextHexLine()) return AwaitQuietEnd();
    PauseBetweenLines();
    BeginUnit();
    SendCurrentLine();
    computer->DoEvents();
    Session.attempt.lBytesSent += static_cast<std::int32_t>(Session.attempt.vCurrentLine.size());
    Session.attempt.iLineRetries = 0;
    Session.link.iWaitTicks = PatienceTicks(10);
}

/// The line in flight once more, with the counters and the line shown.
void SendLineAgain()
{
    ++Session.attempt.iLineRetries;
    ++Session.attempt.iTotalRetries;
    SendCurrentLine();
    frmWizard.lblRetries[1].Caption = text::Str(Session.attempt.iLineRetries);
    frmWizard.lblTotalRetries[1].Caption = text::Str(Session.attempt.iTotalRetries);
    ShowAllCommsTextUpdate(Session.attempt.vCurrentLine + "\r\n");
}

/// A refused line goes out again, five times at most: a board that goes on refusing would be asked for ever.
void OnRefusal()
{
    if (Session.attempt.iLineRetries >= maxLineRetries) {
        StatusTextUpdate("The antenna refused a line " + text::Num(maxLineRetries + 1) + " times.");
        FailFlash();
        return;
    }
    SendLineAgain();
    Session.link.iWaitTicks = Session.attempt.iLineRetries < maxLineRetries ? 100 : 10;
}

Answers AnswersIn(const std::string& chunk) { return {text::Count(chunk, '$'), text::Count(chunk, '1')}; }

void GoOn(Standing standing)
{
    switch (standing) {
    case Standing::In: return SendNextLine();
    case Standing::Refused: return OnRefusal();
    case Standing::Unanswered: return;
    }
}

}  // namespace

void SendCurrentLine()
{
    NoteSend();
    if (!Session.plan->facts.bareLines) {
        SendLine(Session.attempt.vCurrentLine);
        return;
    }
    std::erase_if(Session.attempt.vCurrentLine, [](char c) { return c == '\r' || c == '\n'; });
    SendLine(Session.attempt.vCurrentLine + "\r");
}

void FailOnSurplus()
{
    StatusTextUpdate("The antenna has given more answers than it owed, so that it can't be told what has come in.");
    FailFlash();
}

void OnLineReply(const std::string& chunk)
{
    if (Session.flash.iFlashPhase != FLASH_RUNNING) return;
    const Answers answers = AnswersIn(chunk);
    if (answers.acknowledged + answers.refused == 0) return;
    if (Session.attempt.bAtEnd) return FailOnSurplus();
    const Standing standing = NoteLineAnswers(answers);
    if (standing == Standing::Unanswered) Session.link.iWaitTicks = QuietTicks();
    GoOn(standing);
}

/// The wait for an acknowledgement is over. A line that was sent more than once may have been answered in part: what is
/// still missing is lost. An unanswered line goes out once more, five times at most. The last of them isn't waited for;
/// it leaves the antenna in its boot loader, from where a flash can start again.
void OnLineTimeOut()
{
    if (Session.attempt.bAtEnd) return EndOfLines();
    const Standing standing = StandingNow();
    if (standing != Standing::Unanswered) return GoOn(standing);
    ResendLine();
}

void ResendLine()
{
    SendLineAgain();
    WriteLogLine("++>Retrying sending line, retry#:" + text::Num(Session.attempt.iLineRetries) +
                 " , total # of retries:" + text::Num(Session.attempt.iTotalRetries));
    if (Session.attempt.iLineRetries < maxLineRetries) {
        Session.link.iWaitTicks = 100;  // ten seconds: the antenna may still be writing the line before
        return;
    }
    FailFlash();
}

void EndOfTransfer(const TransferEnd& end)
{
    Session.flash.iFlashPhase = FLASH_FINISHED;
    StatusTextUpdate(end.status);
    WriteLogLine(end.log);
    StatusTextUpdate("Click Next button to continue");
    ShowBanner(0, end.banner, White, Blue);
    ShowAllCommsTextUpdate("==>PLEASE PRESS NEXT<==\r\n");
    EnableCmdEntry();
    frmWizard.mnuFile.Enabled = true;
    frmWizard.mnuHelp.Enabled = true;
    const Board& board = BoardOf(Session.plan->iBoardType);
    RestoreAfterFlash();
    if (board.asksSpeed && IsSettingTrue(SETTING_USE_FAST_BAUD)) SetLinkSettings(board.link);
    Session.restore = {};
    if (Session.flash.bSkipParams) {
        Session.link.iCommMode = STATE_IDLE;
        Session.flash.bAtRisk = false;
    } else {
        constexpr const char* request =
            "Please power off the antenna, wait ten seconds, and then turn the antenna back on.";
        Session.link.iCommMode = Session.plan->bUSBLink ? STATE_WAIT_PORT_BACK : STATE_POSTFLASH;
        if (Session.plan->bUSBLink) CloseComm();  // a USB adapter's port goes with the antenna's power
        AddParamsSent(std::string(request) + "\r\n");
        ShowBanner(1, std::string("*** ") + request + " ***", PaleYellow, Red);
    }
    Session.link.iWaitTicks = end.waitTicks;
    SetNavCmds(NAV_WRITTEN);
}
