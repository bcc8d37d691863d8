// One thread and one loop. Nothing interrupts: Timer1 sets a flag, Timer2 counts a counter down, the port is polled.

#include "loop/StartUp.h"

#include "flash/TimerISR.h"
#include "forms/frmCheckAntennas.h"
#include "forms/frmCheckJarlForGLTV.h"
#include "forms/frmPickAntennaDialog.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "forms/frmShowRelNotes.h"
#include "forms/frmWizard.h"
#include "link/PortAway.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "platform/SerialControl.h"
#include "session/Round.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "update/Update.h"
#include "wizard/frmWizard_Events.h"

namespace {

void GoRound()
{
    if (Session.program.bTickPending) {
        Session.program.bTickPending = false;
        TimerHandler();
    }
    const int event = MSComm1->CommEvent();
    if (event == comEventBreak || event == comEventFrame || event == comEvReceive) {
        if (!Session.link.bPortReady) CheckPortReady();
        CommHandler();
    }
    computer->DoEvents();
    if (!IsExitRequested()) computer->WaitForEvent();
}

}  // namespace

void RunRound()
{
    try {
        GoRound();
    } catch (const Failure& failure) {
        // A click may have sent something into a port that is closed.
        if (!IsOfPort(failure)) throw;
        OnPortFailure();
    }
}

namespace {

void UnloadAllForms()
{
    for (Form* form : {&frmSelectFlashFileDialog.Self, &frmPickAntennaDialog.Self, &frmCheckAntennasForRF.Self,
                       &frmCheckAntennasForRF6.Self, &frmCheckAntennasForRF6A.Self, &frmCheckJarlForGLTV.Self,
                       &frmShowPostFlashCmds.Self, &frmShowRelNotes.Self, &frmWizard.Self})
        form->Visible = false;
}

void RunProgram(const std::function<void()>& prepare)
{
    if (computer->PrevInstance()) {
        ShowMsgBox(28, "");
        SetExitRequested(true);
    }
    if (!IsExitRequested()) {
        EndLeftReplacement();
        GetDefaultValues();
        if (IsExitRequested()) return;  // the settings can't be used, and the user has read why
        if (prepare) prepare();
        if (IsExitRequested()) return;
        ConnectForms();
        FormLoad();
        if (!IsExitRequested()) CheckForUpdatesAtStart();
    }
    while (!IsExitRequested()) RunRound();
}

}  // namespace

void Main(const std::function<void()>& prepare)
{
    SetExitRequested(false);
    try {
        RunProgram(prepare);
    } catch (...) {
        ReportFailure("Main");
    }
    UnloadAllForms();
}
