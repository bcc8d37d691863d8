// The steps of the wizard: entering one, and what the buttons do.

#include <algorithm>

#include "display/Display.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmWizard.h"
#include "frame/Round.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "platform/ProgramFiles.h"
#include "update/Update.h"
#include "wizard/Choosers.h"
#include "wizard/Handlers.h"
#include "wizard/frmWizard_Events.h"

namespace {

bool versionWaitRuns = false;

bool IsReadingVersions()
{
    return Session.iCommMode == STATE_GET_VERSIONS || Session.iCommMode == STATE_FPGA_REV ||
           Session.iCommMode == STATE_BAPI_REV;
}

/// Runs the main round until the versions are there. The user may go back and come again meanwhile; the rounds of the
/// first wait serve the new reading too, so that waits never pile up.
void WaitForVersions()
{
    struct Running {
        Running() { versionWaitRuns = true; }
        ~Running() { versionWaitRuns = false; }
    };
    if (versionWaitRuns) return;
    const Running running;
    while (IsReadingVersions() && !IsExitRequested()) RunRound();
}

void LockMenus(bool locked)
{
    frmWizard.mnuCommPort.Enabled = !locked;
    frmWizard.mnuUpdate.Enabled = !locked;
}

void EnterStep3()
{
    if (Session.iBoardType == 22) {
        if (frmWizard.optBoardToFlash[0].Value == 1) Session.iBoardType = 0;
        if (frmWizard.optBoardToFlash[1].Value == 1) Session.iBoardType = 1;
    }
    Guarded("SetStep", [] {
        if (ReadFlashConfig() == 1) ShowMsgBox(1, "SetStep");
    });
    if (IsExitRequested()) return;
    SetNavCmds(frmWizard.bShowPortChoice ? 15 : 11);
    for (Control* control : {&frmWizard.lblPortSelect, &frmWizard.optSerial, &frmWizard.optUSB})
        control->Visible = frmWizard.bShowPortChoice;
    frmWizard.optSerial.Value = 0;
    frmWizard.optUSB.Value = 0;
    Session.iCalGyroTries = 0;
    frmWizard.lblStep[3].Visible = true;
    UpdateVersionsDisplay(7);
    if (HasVersions(Session.iBoardType)) {
        if (!Session.bSkipParams) InitAntennaInfoVars();
        WaitForVersions();
    }
    // A click during the wait may have led on to a step that keeps the menus locked.
    if (frmWizard.iCurrentStep <= STEP_3) LockMenus(false);
}

void EnterStep4()
{
    // From here to the end of the flash neither the port nor the files may change.
    LockMenus(true);
    StopUpdates();
    Guarded("SetStep", ResolveBoard);
}

void EnterStep5()
{
    Session.iCalGyroTries = 0;
    frmWizard.lblStep[5].Caption = "Updating Software";
    if (Session.iRF7Stage == 2) InitRF7FPGAFlash();
    if (Session.iRF7Stage == 3) InitBAPIFlash();
    StartFlash();
    // Nothing was started: the file is missing or corrupt. The antenna is untouched, and another file can be chosen.
    if (Session.iCommMode == STATE_IDLE) frmWizard.cmdNav[1].Enabled = true;
}

void EnterStep6()
{
    if (!Session.bSkipParams) {
        Session.iCalGyroTries = 0;
        BuildUploadList();
    }
    frmWizard.bRestartPromptDone = true;
}

void EnterStepFinished()
{
    frmWizard.lblLogFileInfo.Caption = Session.sSavedLogName.empty()
                                           ? "Default log file of all actions is: " + ProgramFile("BNL.LOG").string()
                                           : "Log file of all actions is: " + Session.sSavedLogName;
    if (!Session.bSkipParams) {
        frmWizard.lblPickAntennaInfo.Caption =
            "Software updated successfully. You can continue communicating with the antenna in the Orbimaster Antenna "
            "Comms window. Choose Finish to exit the program. To update additional software, choose Finish and then "
            "restart the Burnline Assistant.";
        return;
    }
    frmWizard.cmdNav[3].Enabled = true;
    frmWizard.lblPickAntennaInfo.Caption =
        "Software updated successfully. RESTART the antenna now. After restart, you may set parameters manually in the "
        "Orbimaster Antenna Comms window. Click Finish button to exit the Wizard and Orbimaster Antenna Comms window.";
    ShowPostFlashCmds();
}

/// What each step does when it is entered, by its number.
void (*const enterStep[])() = {EnableCmdEntry, EnableCmdEntry, EnableCmdEntry, EnableCmdEntry,   EnterStep3,
                               EnterStep4,     EnterStep5,     EnterStep6,     EnterStepFinished};

void Back()
{
    const int step = frmWizard.iCurrentStep;
    if (step >= STEP_1 && step <= STEP_4) ForgetPickedAntenna();
    if (step == STEP_3) {
        Session.bUSBLink = false;
        if (Session.iBoardType == 21) Session.iBoardType = 1;
        if (IsReadingVersions()) {  // nobody waits for the answer any more
            Session.iCommMode = STATE_IDLE;
            Session.iWaitTicks = 2;
        }
    }
    SetStep(std::max(step - 1, STEP_DIAGNOSTICS));
}

void Next()
{
    const int step = frmWizard.iCurrentStep;
    int target = step + 1;
    if (step == STEP_2 && Session.iBoardType != 0 && Session.iBoardType != 1) {
        frmWizard.cmdRetryGetVersions.Visible = false;
        frmWizard.cmdPickAntenna.Visible = false;
    }
    // Without saved parameters there is nothing to upload after the restart.
    if (step == STEP_5 && Session.bSkipParams) target = STEP_FINISHED;
    if (step == STEP_6 && !frmWizard.bRestartPromptDone) target = STEP_6;
    SetStep(std::min(target, STEP_FINISHED));
}

}  // namespace

void SetStep(int step)
{
    // A file offered for one board must not reach another.
    if (frmSelectFlashFileDialog.Self.Visible) frmSelectFlashFileDialog_cmdCancel_Click();
    CloseChoosers();
    // Where a board is chosen afresh, an antenna that was picked for another one must not stay in use.
    if (step <= STEP_2) ForgetPickedAntenna();
    for (int index = 0; index < frmWizard.fraStep.size(); ++index) frmWizard.fraStep[index].Visible = index == step;
    frmWizard.Self.Caption = "QEL Burnline Assistant";
    SetNavCmds(step);
    enterStep[step]();
}

void cmdNav_Click(int index)
{
    switch (index) {
    case 0: CleanUpForShutdown(1); break;
    case 1: Back(); break;
    case 2: Next(); break;
    case 3: CleanUpForShutdown(2); break;
    default: break;
    }
}

void SkipParameters() { Session.bSkipParams = true; }

void InitAntennaInfoVars()
{
    Session.iPreflashCmdIdx = Session.iPostflashCmdIdx = 0;
    Session.iCommonPreflashMainIdx = Session.iCommonPreflashRFIdx = 0;
    Session.iCapturedParamCount = 0;
    Session.iFlashPhase = FLASH_RUNNING;
    ClearCommBuffers();
    Session.sMainVersion.clear();
    Session.sRFVersion.clear();
    for (Control* button : {&frmWizard.cmdRetryGetVersions, &frmWizard.cmdPickAntenna}) {
        button->Enabled = false;
        button->Visible = false;
    }
    Session.iCommMode = STATE_GET_VERSIONS;
    Session.iWaitTicks = 10;
}

void cmdRetryGetVersions_Click()
{
    CloseChoosers();
    ForgetPickedAntenna();
    SetNavCmds(STEP_3);
    UpdateVersionsDisplay(7);
    InitAntennaInfoVars();
}

void optSerial_Click()
{
    frmWizard.optSerial.Value = 1;
    frmWizard.optUSB.Value = 0;
    Session.bUSBLink = false;
    SetNavCmds(11);
}

void optUSB_Click()
{
    frmWizard.optUSB.Value = 1;
    frmWizard.optSerial.Value = 0;
    Session.bUSBLink = true;
    SetNavCmds(11);
}

void chkShowFinishCmd_Click() { frmWizard.cmdNav[3].Enabled = frmWizard.chkShowFinishCmd.Value == 1; }
