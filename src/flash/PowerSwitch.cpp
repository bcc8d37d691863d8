#include "flash/PowerSwitch.h"

#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "link/Mode.h"
#include "session/Session.h"

namespace {

/// The boot loader's sign-on is waited for without a limit: there is somebody at the switch.
bool AwaitsSignOn() { return Session.link.iCommMode == STATE_WAIT_RESET && Session.link.iWaitTicks == 0; }

/// The new software is to start, and the parameters go up behind it.
bool AwaitsRestart()
{
    return PhaseNow() == Phase::Restoring && frmWizard.iCurrentStep == STEP_6 && !Session.restore.bRestartSeen &&
           !Session.restore.bAntennaInitDone;
}

/// An antenna that doesn't tell its revisions is waited for until it says anything at all.
bool AwaitsAnyText() { return Session.link.iCommMode == STATE_BAPI_REV && Session.link.iWaitTicks == 0; }

}  // namespace

PowerSwitch WantedOfPowerSwitch()
{
    if (AwaitsRestart() || AwaitsAnyText()) return PowerSwitch::Cycle;
    if (!AwaitsSignOn()) return PowerSwitch::LeaveAlone;
    return BoardOf(Session.plan->iBoardType).takesFlasha ? PowerSwitch::CycleIfSilent : PowerSwitch::Cycle;
}
