// The one procedure that reads what the antenna says. There are no frames: it prints lines for people, and single
// characters during a flash, so what a text means depends on the mode of the link alone.

#include "display/Display.h"
#include "link/Mode.h"
#include "link/PortAway.h"
#include "link/SerialPortIO.h"
#include "platform/Failure.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

/// A text with only CRs, or only LFs, as line ends gets CR LF; mixed ones stay as they came. A CR LF that comes in two
/// pieces is one line end.
std::string WithLineEnds(std::string input)
{
    std::string shown;
    if (Session.link.cLineEndSeen != 0 && input.front() == '\n') {
        if (Session.link.cLineEndSeen == '\r') shown = "\n";
        input.erase(0, 1);
    }
    const bool hasCr = input.find('\r') != std::string::npos;
    const bool hasLf = input.find('\n') != std::string::npos;
    Session.link.cLineEndSeen = 0;
    if (!input.empty() && input.back() == '\r') Session.link.cLineEndSeen = hasLf ? '\r' : '\n';
    if (hasCr && !hasLf) return shown + text::Replace(input, "\r", "\r\n");
    if (hasLf && !hasCr) return shown + text::Replace(input, "\n", "\r\n");
    return shown + input;
}

/// A zero byte alone is an answer only to a line or a block; elsewhere it is noise, in the boot area leg too, but where
/// it is the very echo that is waited for.
bool MayBeZero()
{
    const int mode = Session.link.iCommMode;
    return mode == STATE_SEND_BLOCKS || mode == STATE_SEND_LINES ||
           (mode == STATE_RF_BOOT_BLOCKS && Session.attempt.bExpectedChecksum == 0);
}

void Receive()
{
    std::string input;
    if (MSComm1->InBufferCount() >= 1) {
        input = MSComm1->Input();
    } else if (Session.link.iCommMode != STATE_PREFLASH) {
        return;  // in the pre-flash mode the text of earlier calls is judged once more
    }
    if (input == std::string(1, '\0') && !MayBeZero()) return;
    if (Session.link.iCommMode <= STATE_NONE || Session.link.iCommMode >= ModeCount) return;

    const Mode& mode = ModeTable[Session.link.iCommMode];
    if (!input.empty() && mode.received != Received::Raw) {
        input = WithLineEnds(input);
        if (mode.received == Received::Keep) Session.link.sCommBuffer += input;
        ShowAllCommsTextUpdate(input);
    }
    // A reply to a pre-flash command is read when it has had time to come in whole.
    if (Session.link.iCommMode == STATE_PREFLASH && Session.link.iWaitTicks > 5) return;
    if (mode.onReply) mode.onReply(input);
}

}  // namespace

void CommHandler()
{
    if (Session.link.iCommID == 0) return;
    try {
        Receive();
    } catch (const Failure& failure) {
        if (IsOfPort(failure)) return OnPortFailure();
        ReportFailure("CommHandler");
    } catch (...) {
        ReportFailure("CommHandler");
    }
}
