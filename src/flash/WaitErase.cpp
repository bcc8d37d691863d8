// STATE_WAIT_ERASE: the board has erased itself and takes its first line, block or record.

#include "display/Display.h"
#include "flash/Acknowledgements.h"
#include "flash/FileIO.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

void ShowTransferBanner()
{
    const std::string words = TransferBanner("");
    StatusTextUpdate(words);
    ShowBanner(0, words, White, Red);
    ShowAllCommsTextUpdate(words + "\r\n");
    frmWizard.lblBytesSent[0].Caption = "Bytes Sent:";
}

/// Waits for the "1" of a board that announces that it takes lines; `heard` is what it said behind the "$". False when
/// it stays silent for ten seconds or the program is to end.
bool FirstLineIsAnnounced(std::string heard)
{
    const double limit = computer->Seconds() + 10;
    while (!text::Holds(heard, "1")) {
        if (computer->Seconds() > limit || IsExitRequested()) return false;
        computer->Sleep(1);
        computer->DoEvents();
        if (MSComm1->InBufferCount() > 0) heard = MSComm1->Input();
    }
    return true;
}

void SendFirstLine(const std::string& behindDollar)
{
    if (Session.plan->facts.announcesFirstLine && !FirstLineIsAnnounced(behindDollar)) {
        FailFlash();
        return;
    }
    BeginUnit();
    SendCurrentLine();
    Session.attempt.lBytesSent += static_cast<std::int32_t>(Session.attempt.vCurrentLine.size());
    Session.attempt.iLineRetries = 0;
    Session.link.iWaitTicks = 100;  // behind the erase the antenna may take its time
}

CommMode TransferMode(BoardGroup group)
{
    if (group == BoardGroup::Line) return STATE_SEND_LINES;
    return group == BoardGroup::Block ? STATE_SEND_BLOCKS : STATE_SEND_RF7;
}

void BeginTransfer()
{
    const BoardGroup group = BoardOf(Session.plan->iBoardType).group;
    const std::string behindDollar = text::Mid(Session.link.sCommBuffer, text::Find(Session.link.sCommBuffer, "$"));
    if (group == BoardGroup::MultiStage && OpenFlashFile(StageInHand().sFlashFile) != FILE_OPENED) {
        ShowMsgBox(5, "OnEraseReply, after Dir(" + StageInHand().sFlashFile + ") failed.");
        FailFlash();
        return;
    }
    ClearCommBuffers();
    Session.link.iCommMode = TransferMode(group);
    Session.link.iWaitTicks = 100;
    WriteLogLine("++>.....Erase done");
    StatusTextUpdate(".....Erase done");
    DisableCmdEntry();
    frmWizard.mnuFile.Enabled = false;
    frmWizard.mnuHelp.Enabled = false;
    Session.flash.dFlashStart = computer->Seconds();
    ShowTransferBanner();
    switch (group) {
    case BoardGroup::Line: return SendFirstLine(behindDollar);
    case BoardGroup::Block: return StartMainLeg();
    case BoardGroup::MultiStage: return StartRecordLeg();
    case BoardGroup::None: return;
    }
}

/// "$" from most boards; the loader of board 21 says it in words.
bool IsEraseDone()
{
    if (BoardOf(Session.plan->iBoardType).group != BoardGroup::MultiStage)
        return text::Holds(Session.link.sCommBuffer, "$");
    Session.link.sCommLine += Session.link.sCommBuffer;  // the words may come in pieces
    return text::Holds(Session.link.sCommLine, "START_PROGRAM");
}

}  // namespace

std::string TransferBanner(const std::string& lineBreak)
{
    return "*** FLASHING " + StageInHand().banner + lineBreak + "DO NOT POWER OFF ANTENNA ***";
}

void OnEraseReply(const std::string&)
{
    if (IsEraseDone()) {
        BeginTransfer();
        return;
    }
    const bool refused = text::Holds(Session.link.sCommBuffer, "#");
    Session.link.sCommBuffer.clear();  // a refusal is told once, progress talk was shown as it came
    if (refused) ShowMsgBox(18, "CommHandler");
    Session.link.iWaitTicks = 100;
}
