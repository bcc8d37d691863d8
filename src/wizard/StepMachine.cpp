// The steps of the wizard: entering one, and what the buttons do.

#include <algorithm>

#include "display/Display.h"
#include "flash/FlashMainboard.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/Mode.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "platform/ProgramFiles.h"
#include "session/Round.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "update/Update.h"
#include "wizard/Choosers.h"
#include "wizard/Handlers.h"
#include "wizard/frmWizard_Events.h"

namespace {

bool versionWaitRuns = false;

bool IsReadingVersions() { return PhaseNow() == Phase::Reading; }

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

/// The configuration as it stands on the disk now.
void LoadConfig()
{
    std::optional<FlashConfig> config = ReadFlashConfig();
    if (!config) ShowMsgBox(1, "SetStep");
    Session.config = config ? std::move(*config) : FlashConfig{};
    const GroupConfig& group = GroupOf(*Session.config, Session.choice.iBoardType);
    if (group.problem) throw *group.problem;
}

/// The board that the options show, when nothing else was chosen.
int ChosenBoard()
{
    if (Session.choice.iBoardType != NoBoard) return Session.choice.iBoardType;
    for (const int option : {0, 1})
        if (frmWizard.optBoardToFlash[option].Value == 1) return option;
    return NoBoard;
}

void EnterStep3()
{
    ChooseBoard(ChosenBoard());
    const Board& board = BoardOf(Session.choice.iBoardType);
    Guarded("SetStep", LoadConfig);
    if (IsExitRequested()) return;
    SetNavCmds(board.choosesPort ? NAV_CHOICE : NAV_CHOSEN);
    for (Control* control : {&frmWizard.lblPortSelect, &frmWizard.optSerial, &frmWizard.optUSB})
        control->Visible = board.choosesPort;
    frmWizard.optSerial.Value = 0;
    frmWizard.optUSB.Value = 0;
    frmWizard.lblStep[3].Visible = true;
    UpdateVersionsDisplay(7);
    if (HasVersions(board.type)) {
        InitAntennaInfoVars();
        WaitForVersions();
    }
}

void EnterStep4()
{
    StopUpdates();
    Guarded("SetStep", PlanFlash);
}

/// What an earlier flash has left on the form.
void ClearFlashForms()
{
    frmWizard.txtStatus.Text = "";
    frmWizard.txtParamsSent.Text = "";
    ShowProgress(0);
    for (ControlArray* figures :
         {&frmWizard.lblTimeLeft, &frmWizard.lblBytesSent, &frmWizard.lblRetries, &frmWizard.lblTotalRetries})
        (*figures)[1].Caption = "";
    for (Control& banner : frmWizard.lblFlashStatus) banner.Visible = false;
    for (Control* label : {&frmWizard.lblWaiting1, &frmWizard.lblWaiting2, &frmWizard.lblWaiting_SecondsLeft})
        label->Visible = false;
    frmWizard.lblStep[6].Caption = "Please Restart the Antenna";
    frmWizard.lblStep[7].Caption = "Finished!";
    frmWizard.tblParameters.List = {};
    frmWizard.tblParameters.Visible = false;
    frmWizard.chkShowFinishCmd.Value = 0;
}

void EnterStep5()
{
    ClearFlashForms();
    frmWizard.lblStep[5].Caption = "Updating Software";
    StartFlash();
    // The antenna is untouched until its loader has signed on: another file, or another board, can still be chosen.
    frmWizard.cmdNav[1].Enabled = true;
    if (Session.link.iCommMode != STATE_IDLE) RaisePriority();
}

void EnterStep6()
{
    if (!Session.flash.bSkipParams) Session.restore.sPostflashCmds = BuildUploadList();
}

void EnterStepFinished()
{
    const std::string& copy = Session.program.sSavedLogName;
    frmWizard.lblLogFileInfo.Caption = copy.empty()
                                           ? "Default log file of all actions is: " + ProgramFile("BNL.LOG").string()
                                           : "Log file of all actions is: " + copy;
    constexpr const char* another = " To update another board now, click Update another board.";
    if (IsSettingTrue(SETTING_DRY_RUN)) {
        frmWizard.lblStep[7].Caption = "End of the dry run";
        frmWizard.lblPickAntennaInfo.Caption = "DryRunMode is on in Burnline.ini: nothing was sent to the antenna.";
        return;
    }
    if (!Session.flash.bSkipParams && !Session.restore.bAllBack) {
        frmWizard.lblPickAntennaInfo.Caption =
            "The software is written, but the antenna is not known to hold all that it held before.\n\n" +
            WhatIsNotBack() + "\n" + text::Trim(another);
        return;
    }
    if (!Session.flash.bSkipParams) {
        frmWizard.lblPickAntennaInfo.Caption =
            std::string(
                "Software updated successfully. You can continue communicating with the antenna in the Orbimaster "
                "Antenna Comms window. Choose Finish to exit the program. To update additional software, choose "
                "Finish and then restart the Burnline Assistant.") +
            another;
        return;
    }
    frmWizard.cmdNav[3].Enabled = true;
    frmWizard.lblPickAntennaInfo.Caption =
        std::string(
            "Software updated successfully. RESTART the antenna now. After restart, you may set parameters manually in "
            "the Orbimaster Antenna Comms window. Click Finish button to exit the Wizard and Orbimaster Antenna Comms "
            "window.") +
        another;
    ShowPostFlashCmds();
}

/// What each step does when it is entered, by its number.
void (*const enterStep[])() = {EnableCmdEntry, EnableCmdEntry, EnableCmdEntry, EnableCmdEntry,   EnterStep3,
                               EnterStep4,     EnterStep5,     EnterStep6,     EnterStepFinished};

void Back()
{
    if (PhaseNow() != Phase::Free) {  // nobody waits for the answer any more
        Session.link.iCommMode = STATE_IDLE;
        Session.link.iWaitTicks = 2;
    }
    if (frmWizard.iCurrentStep == STEP_5) {
        RestoreAfterFlash();
        Session.flash = {};
    }
    SetStep(std::max(frmWizard.iCurrentStep - 1, STEP_DIAGNOSTICS));
}

void Next()
{
    const int step = frmWizard.iCurrentStep;
    // Without saved parameters there is nothing to upload after the restart.
    const bool skips = step == STEP_5 && Session.flash.bSkipParams;
    SetStep(skips ? STEP_FINISHED : std::min(step + 1, STEP_FINISHED));
}

}  // namespace

void SetStep(int step)
{
    // A file offered for one board must not reach another.
    if (frmSelectFlashFileDialog.Self.Visible) frmSelectFlashFileDialog_cmdCancel_Click();
    CloseChoosers();
    for (int index = 0; index < frmWizard.fraStep.size(); ++index) frmWizard.fraStep[index].Visible = index == step;
    frmWizard.Self.Caption = "QEL Burnline Assistant";
    // From the plan to the end of the flash neither the port nor the files may change.
    LockMenus(step >= STEP_4);
    SetNavCmds(step);
    frmWizard.tblParameters.Visible = step >= STEP_6 && !frmWizard.tblParameters.List().empty();
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

void InitAntennaInfoVars()
{
    Session.reading = {};
    Session.link.sCmdQueueText.clear();  // it was meant for what was asked before
    ClearCommBuffers();
    for (Control* button : {&frmWizard.cmdRetryGetVersions, &frmWizard.cmdPickAntenna}) {
        button->Enabled = false;
        button->Visible = false;
    }
    Session.link.iCommMode = STATE_GET_VERSIONS;
    Session.link.iWaitTicks = 10;
}

void cmdRetryGetVersions_Click()
{
    CloseChoosers();
    ChooseBoard(Session.choice.iBoardType);
    SetNavCmds(STEP_3);
    UpdateVersionsDisplay(7);
    InitAntennaInfoVars();
}

void optSerial_Click()
{
    frmWizard.optSerial.Value = 1;
    frmWizard.optUSB.Value = 0;
    Session.choice.bUSBLink = false;
    SetNavCmds(NAV_CHOSEN);
}

void optUSB_Click()
{
    frmWizard.optUSB.Value = 1;
    frmWizard.optSerial.Value = 0;
    Session.choice.bUSBLink = true;
    SetNavCmds(NAV_CHOSEN);
}

void chkShowFinishCmd_Click() { frmWizard.cmdNav[3].Enabled = frmWizard.chkShowFinishCmd.Value == 1; }

void cmdAnotherBoard_Click() { SetStep(STEP_1); }
