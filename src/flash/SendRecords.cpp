// STATE_BAUD_SELECT and STATE_SEND_RF7: board 21, whose loader takes S-records as text, in up to three stages.

#include <algorithm>
#include <array>

#include "display/Display.h"
#include "flash/Acknowledgements.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

constexpr int maxBadReplies = 5;

void AnswerBaudQuestion(const std::string& answer)
{
    ShowAllCommsTextUpdate("==>" + answer + "\r\n");
    MSComm1->Output(answer + "\r\n");
}

void EndOfStage()
{
    CloseFlashFile();
    if (Session.flash.stage + 1 == Session.plan->stages.size()) return EndOfImage();
    frmWizard.lblStep[5].Caption = "Updating Software";
    SetNavCmds(STEP_5);
    StartNextStage();
}

void PrepareNextRecord()
{
    ShowProgress(PercentOf(Session.attempt.lFlashPos, Session.attempt.lFlashTotalBytes));
    Session.attempt.vCurrentLine = GetLine();
    const auto length = static_cast<std::int32_t>(Session.attempt.vCurrentLine.size() & 0xFF);
    Session.attempt.lFlashPos += length;
    Session.attempt.lBytesSent = Session.attempt.lFlashPos;
    Session.attempt.vCurrentLine += "\r\n";
}

void SendNextRecord()
{
    PrepareNextRecord();
    BeginUnit();
    SendCurrentLine();
    Session.link.iWaitTicks = PatienceTicks(10);
}

/// What the loader calls a record that it doesn't take.
bool IsErrorWord(const std::string& line)
{
    constexpr std::array words{"ERR", "BAD", "FAIL", "NAK"};
    return std::any_of(words.begin(), words.end(), [&](const char* word) { return text::Holds(line, word); });
}

/// Counts the answers in what was heard and takes them out; the beginning of one stays. "SA" counts with its third
/// character, whatever single bytes the line has put ahead of it, an error word with the end of its line.
Answers TakeAnswers(std::string& heard)
{
    Answers answers;
    constexpr std::size_t judged = 3, mostNoise = 2;
    for (;;) {
        heard.erase(0, heard.find_first_not_of("\r\n"));
        const std::size_t end = heard.find_first_of("\r\n");
        const std::string line = heard.substr(0, end);
        const std::size_t answer = line.find("SA");
        const bool isSA = answer <= mostNoise;
        if (end == std::string::npos && !(isSA && heard.size() >= answer + judged)) return answers;
        if (isSA)
            ++answers.acknowledged;
        else if (IsErrorWord(line))
            ++answers.refused;
        heard.erase(0, end);
    }
}

/// A record that was refused goes out again, five times at most; then the time-out fails the flash.
void OnBadRecord()
{
    Session.link.iWaitTicks = PatienceTicks(10);
    if (++Session.attempt.iBadReplies > maxBadReplies) return BeginUnit();
    SendCurrentLine();
}

void GoOn(Standing standing)
{
    if (standing == Standing::Unanswered) return;
    if (standing == Standing::Refused) return OnBadRecord();
    Session.attempt.iBadReplies = 0;
    if (!FlashFileAtEnd()) return SendNextRecord();
    Session.attempt.bAtEnd = true;
    Session.link.iWaitTicks = QuietTicks();
}

}  // namespace

void OnBaudQuestion(const std::string&)
{
    if (!text::Holds(Session.link.sCommBuffer, "?BAUDRATE")) return;
    if (IsSettingTrue(SETTING_USE_FAST_BAUD)) {
        AnswerBaudQuestion("BAUDRATE=C");
        SetLinkSettings("38400,N,8,1");  // the answer has left at the old speed when this returns
    } else {
        AnswerBaudQuestion("BAUDRATE=A");
    }
    Session.link.iWaitTicks = 100;
    Session.link.iCommMode = STATE_WAIT_ERASE;
    Session.link.sCommBuffer.clear();
}

void StartRecordLeg()
{
    Session.attempt.lFlashPos = 0;
    Session.attempt.lFlashTotalBytes = Session.flash.lFlashFileSize;
    SendNextRecord();
    Session.link.iWaitTicks = 100;
}

/// Any text puts off the time-out: the antenna is there. Only words of the loader are answers.
void OnRecordReply(const std::string& chunk)
{
    Session.link.iWaitTicks = PatienceTicks(10);
    Session.link.sCommLine += chunk;
    const Answers answers = TakeAnswers(Session.link.sCommLine);
    if (answers.acknowledged + answers.refused == 0) return;
    if (Session.attempt.bAtEnd) return FailOnSurplus();
    const Standing standing = NoteLineAnswers(answers);
    if (standing == Standing::Unanswered) Session.link.iWaitTicks = QuietTicks();
    GoOn(standing);
}

void OnRecordTimeOut()
{
    if (Session.attempt.bAtEnd) return EndOfStage();
    const Standing standing = StandingNow();
    if (standing != Standing::Unanswered) return GoOn(standing);
    ResendLine();
}
