#include "flash/TimerISR.h"

#include "forms/frmWizard.h"
#include "link/Mode.h"
#include "link/PortAway.h"
#include "link/SerialPortIO.h"
#include "platform/Failure.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

void SpendTick()
{
    if (IsPortAway()) return LookForPort();
    if (Session.link.iWaitTicks <= 0) return;
    --Session.link.iWaitTicks;
    if (Session.link.iWaitTicks > 0) {
        if (Session.link.iCommMode == STATE_POSTFLASH && Session.restore.bWaitInitFlag &&
            Session.link.iWaitTicks % 10 == 0)
            frmWizard.lblWaiting_SecondsLeft.Caption = text::Num(Session.link.iWaitTicks / 10);
        // A pre-flash reply is judged in the last ticks of its wait, before the time-out calls it missing.
        if (Session.link.iCommMode == STATE_PREFLASH && Session.link.iWaitTicks <= 5) CommHandler();
        return;
    }
    if (Session.link.iCommMode <= STATE_NONE || Session.link.iCommMode >= ModeCount) return;
    const Mode& mode = ModeTable[Session.link.iCommMode];
    if (mode.onTimeOut) mode.onTimeOut();
}

}  // namespace

void TimerHandler()
{
    try {
        SpendTick();
    } catch (const Failure& failure) {
        if (IsOfPort(failure)) return OnPortFailure();
        ReportFailure("TimerHandler");
    } catch (...) {
        ReportFailure("TimerHandler");
    }
}
