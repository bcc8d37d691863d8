// The one procedure that reads what the antenna says. There are no frames: it prints lines for people, and single
// characters during a flash, so what a text means depends on the mode of the link alone.

#include "display/Display.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "link/Mode.h"
#include "link/SerialPortIO.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

/// Before anything was heard: the newest files of the three-stage board count as revision "A".
void PrepareOnce()
{
    if (Session.bStaticsReady) return;
    Session.bStaticsReady = true;
    Session.sFPGAFileName = FindLatestFile("F61340A.S19");
    Session.sLatestFPGARev = "A";
    Session.sBAPIFileName = FindLatestFile("F61357A.S19");
    Session.sLatestBAPIRev = "A";
}

/// A text with only CRs, or only LFs, as line ends gets CR LF; mixed ones stay as they came. A CR LF that comes in two
/// pieces is one line end.
std::string WithLineEnds(std::string input)
{
    std::string shown;
    if (Session.cLineEndSeen != 0 && input.front() == '\n') {
        if (Session.cLineEndSeen == '\r') shown = "\n";
        input.erase(0, 1);
    }
    const bool hasCr = input.find('\r') != std::string::npos;
    const bool hasLf = input.find('\n') != std::string::npos;
    Session.cLineEndSeen = 0;
    if (!input.empty() && input.back() == '\r') Session.cLineEndSeen = hasLf ? '\r' : '\n';
    if (hasCr && !hasLf) return shown + text::Replace(input, "\r", "\r\n");
    if (hasLf && !hasCr) return shown + text::Replace(input, "\n", "\r\n");
    return shown + input;
}

void Receive()
{
    PrepareOnce();
    std::string input;
    if (MSComm1->InBufferCount() >= 1) {
        input = MSComm1->Input();
        Session.bPortErrorShown = false;
    } else if (Session.iCommMode != STATE_PREFLASH) {
        return;  // in the pre-flash mode the text of earlier calls is judged once more
    }
    // A zero byte alone is an answer only to a line or a block; elsewhere it is noise, in the boot area leg too.
    if (input == std::string(1, '\0') && Session.iCommMode != STATE_SEND_BLOCKS &&
        Session.iCommMode != STATE_SEND_LINES)
        return;
    if (Session.iCommMode <= STATE_NONE || Session.iCommMode >= ModeCount) return;

    const Mode& mode = ModeTable[Session.iCommMode];
    if (!input.empty() && mode.received != Received::Raw) {
        input = WithLineEnds(input);
        if (mode.received == Received::Keep) Session.sCommBuffer += input;
        ShowAllCommsTextUpdate(input);
    }
    // A reply to a pre-flash command is read when it has had time to come in whole.
    if (Session.iCommMode == STATE_PREFLASH && Session.iWaitTicks > 5) return;
    if (mode.onReply) mode.onReply(input);
}

/// The user has been asked to cut the power of an antenna whose USB port goes with it.
bool IsExpectedToGo() { return Session.bUSBLink && Session.iCommMode == STATE_WAIT_RESET; }

/// The first failure of a port is told; after that every call tries to bring it back, in silence while it can't be.
void OnPortFailure(int number)
{
    if (IsExpectedToGo()) Session.bPortErrorShown = true;
    if (Session.bPortErrorShown) {
        if (computer->TestCommPort(Session.iCommPort) == PORT_USABLE)
            InitAndOpenComm();
        else
            CloseComm();
        return;
    }
    Session.bPortErrorShown = true;
    ShowMsgBox(number, "Main");  // one text for this failure, wherever it arises
    ShowPortError();
    frmWizard.lblRedoCOMMPort.Bold = true;
    frmWizard.lblRedoCOMMPort.Visible = true;
    SetNavCmds(14);
}

}  // namespace

void CommHandler()
{
    const bool closed = Session.iCommID == 0;
    if (closed && Session.bPortErrorShown) {
        OnPortFailure(FAIL_PORT_LOST);
        return;
    }
    if (closed && Session.iCommMode != STATE_PREFLASH) return;
    try {
        Receive();
    } catch (const Failure& failure) {
        if (failure.number == FAIL_PORT_CLOSED || failure.number == FAIL_PORT_LOST)
            OnPortFailure(failure.number);
        else
            ReportFailure("CommHandler");
    } catch (...) {
        ReportFailure("CommHandler");
    }
}
