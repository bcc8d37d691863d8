#include "flash/TimerISR.h"

#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "link/Mode.h"
#include "link/SerialPortIO.h"
#include "text/Text.h"

void TimerHandler()
{
    if (Session.iWaitTicks <= 0) return;
    --Session.iWaitTicks;
    if (Session.iWaitTicks > 0) {
        if (Session.iCommMode == STATE_POSTFLASH && Session.bWaitInitFlag && Session.iWaitTicks % 10 == 0)
            frmWizard.lblWaiting_SecondsLeft.Caption = text::Num(Session.iWaitTicks / 10);
        // A pre-flash reply is judged in the last ticks of its wait, before the time-out calls it missing.
        if (Session.iCommMode == STATE_PREFLASH && Session.iWaitTicks <= 5) CommHandler();
        return;
    }
    if (Session.iCommMode <= STATE_NONE || Session.iCommMode >= ModeCount) return;
    const Mode& mode = ModeTable[Session.iCommMode];
    if (mode.onTimeOut) mode.onTimeOut();
}
