#include "flash/PowerSwitch.h"

#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "knowledge/BoardTable.h"

namespace {

/// The boot loader's sign-on is waited for without a limit: there is somebody at the switch.
bool AwaitsSignOn() { return Session.iCommMode == STATE_WAIT_RESET && Session.iWaitTicks == 0; }

/// The new software is to start, and the parameters go up behind it.
bool AwaitsRestart()
{
    const bool waits = Session.iCommMode == STATE_POSTFLASH || Session.iCommMode == STATE_WAIT_PORT_BACK;
    return waits && frmWizard.iCurrentStep == STEP_6 && !Session.bRestartSeen && !Session.bAntennaInitDone;
}

/// An antenna that doesn't tell its revisions is waited for until it says anything at all.
bool AwaitsAnyText() { return Session.iCommMode == STATE_BAPI_REV && Session.iWaitTicks == 0; }

}  // namespace

PowerSwitch WantedOfPowerSwitch()
{
    if (AwaitsRestart() || AwaitsAnyText()) return PowerSwitch::Cycle;
    if (!AwaitsSignOn()) return PowerSwitch::LeaveAlone;
    return BoardOf(Session.iBoardType).takesFlasha ? PowerSwitch::CycleIfSilent : PowerSwitch::Cycle;
}
