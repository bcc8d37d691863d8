// STATE_BAUD_SELECT and STATE_SEND_RF7: board 21, whose loader takes S-records as text, in up to three stages.

#include "display/Display.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "platform/ProgramFiles.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

constexpr int maxBadReplies = 5;

void AnswerBaudQuestion(const std::string& answer)
{
    ShowAllCommsTextUpdate("==>" + answer + "\r\n");
    MSComm1->Output(answer + "\r\n");
}

constexpr const char* fpgaFamily = "F61340A.S19";
constexpr const char* bapiFamily = "F61357A.S19";

/// True when the revision on the antenna is older than that of the newest file, in the order of texts; a stage without
/// any file is left out.
bool IsStageDue(const std::string& revision, const std::string& latest, const char* family)
{
    return text::Compare(revision, latest) < 0 && !FindLatestFile(family).empty();
}

/// The next stage begins with a power cycle, which StartFlash asks for.
void BeginStage(int stage)
{
    Session.iRF7PrevStage = Session.iRF7Stage;
    Session.iRF7Stage = stage;
    SetStep(STEP_5);
}

void EndOfStage()
{
    CloseFlashFile();
    if (Session.iRF7Stage < 2 && IsStageDue(Session.sFPGARev, Session.sLatestFPGARev, fpgaFamily))
        BeginStage(2);
    else if (Session.iRF7Stage < 3 && IsStageDue(Session.sBAPIRev, Session.sLatestBAPIRev, bapiFamily))
        BeginStage(3);
    else
        EndOfImage();
}

}  // namespace

void OnBaudQuestion(const std::string&)
{
    if (!text::Holds(Session.sCommBuffer, "?BAUDRATE")) return;
    if (IsSettingTrue(SETTING_USE_FAST_BAUD)) {
        AnswerBaudQuestion("BAUDRATE=C");
        ReopenAt("38400,N,8,1");  // the answer has left at the old speed when this returns
    } else {
        AnswerBaudQuestion("BAUDRATE=A");
    }
    Session.iWaitTicks = 100;
    Session.iCommMode = STATE_WAIT_ERASE;
    Session.sCommBuffer.clear();
}

void PrepareNextRecord()
{
    Session.vCurrentLine = GetLine();
    const auto length = static_cast<std::int32_t>(Session.vCurrentLine.size() & 0xFF);
    Session.lFlashBlockPos += length;
    Session.lFlashPos += length;
    Session.lBytesSent = Session.lFlashPos;
    Session.vCurrentLine += "\r\n";
}

void OnRecordReply(const std::string& chunk)
{
    Session.iWaitTicks = 10;
    Session.sCommLine += chunk;
    // The line end of the reply before may come behind the third character that was enough to judge it.
    Session.sCommLine.erase(0, Session.sCommLine.find_first_not_of("\r\n"));
    if (Session.sCommLine.size() <= 2) return;
    const bool acknowledged = text::StartsWith(Session.sCommLine, "SA");
    ClearCommBuffers();
    if (!acknowledged) {
        if (++Session.iBadReplies <= maxBadReplies) SendLine(Session.vCurrentLine);
        return;
    }
    Session.iBadReplies = 0;
    if (FlashFileAtEnd()) {
        EndOfStage();
        return;
    }
    PrepareNextBlock();
    SendLine(Session.vCurrentLine);
}

void InitRF7FPGAFlash()
{
    Session.sFlashCmd = "PGM_RF7_FPGA";
    Session.sFlashFile = FindLatestFile(fpgaFamily);
}

void InitBAPIFlash()
{
    Session.sFlashCmd = "PGM_RF7_BAPI";
    Session.sFlashFile = FindLatestFile(bapiFamily);
}
