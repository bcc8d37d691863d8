// STATE_FLASH_FAILED: a wait of the flash has run out. The whole flash is tried again, in silence first, then by the
// user's word.

#include "display/Display.h"
#include "flash/Phases.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"

void FailFlash()
{
    Session.iCommMode = STATE_FLASH_FAILED;
    Session.iFlashPhase = FLASH_FAILED;
    Session.iWaitTicks = 10;
}

void ReportFlashFailure()
{
    constexpr int maxSilentRetries = 3;
    EnableCmdEntry();
    if (Session.iFlashPhase != FLASH_FAILED) return;
    Session.iWaitTicks = 0;
    const Board& board = BoardOf(Session.iBoardType);
    if (board.group == BoardGroup::None) return;
    if (!board.retriesFlash) {
        ShowMsgBox(16, "TimerHandler");
    } else if (Session.iFlashAutoRetries > maxSilentRetries) {
        ShowMsgBox(15, "TimerHandler");
    } else {
        ++Session.iFlashAutoRetries;
        ShowMsgBox(29, "TimerHandler");
    }
}

void ShutDownFinished() { CleanUpForShutdown(2); }
