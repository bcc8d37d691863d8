// STATE_BAUD_SELECT and STATE_SEND_RF7: board 21, whose loader takes S-records as text, in up to three stages.

#include "display/Display.h"
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

}  // namespace

void OnBaudQuestion(const std::string&)
{
    if (!text::Holds(Session.link.sCommBuffer, "?BAUDRATE")) return;
    if (IsSettingTrue(SETTING_USE_FAST_BAUD)) {
        AnswerBaudQuestion("BAUDRATE=C");
        ReopenAt("38400,N,8,1");  // the answer has left at the old speed when this returns
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
    PrepareNextRecord();
    SendLine(Session.attempt.vCurrentLine);
}

void OnRecordReply(const std::string& chunk)
{
    Session.link.iWaitTicks = 10;
    Session.link.sCommLine += chunk;
    // The line end of the reply before may come behind the third character that was enough to judge it.
    Session.link.sCommLine.erase(0, Session.link.sCommLine.find_first_not_of("\r\n"));
    if (Session.link.sCommLine.size() <= 2) return;
    const bool acknowledged = text::StartsWith(Session.link.sCommLine, "SA");
    ClearCommBuffers();
    if (!acknowledged) {
        if (++Session.attempt.iBadReplies <= maxBadReplies) SendLine(Session.attempt.vCurrentLine);
        return;
    }
    Session.attempt.iBadReplies = 0;
    if (FlashFileAtEnd()) {
        EndOfStage();
        return;
    }
    PrepareNextRecord();
    SendLine(Session.attempt.vCurrentLine);
}
