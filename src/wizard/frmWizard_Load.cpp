// The main form is put together: its handlers, and what stands in it when it is first shown.

#include <string>
#include <vector>

#include "diagnostics/Diagnostics.h"
#include "display/Display.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmShowRelNotes.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "update/Update.h"
#include "wizard/Choosers.h"
#include "wizard/Handlers.h"
#include "wizard/frmWizard_Events.h"

namespace {

void StartTimers()
{
    frmWizard.Timer2.Enabled = false;  // until a board that wants pauses between its lines is chosen
    frmWizard.Timer2.Value = 10;
    frmWizard.Timer1.Enabled = true;
    frmWizard.Timer1.Value = 100;
}

void OpenLogs()
{
    OpenLog();
    WriteLogLine("++>Starting Burnline Assistant " + computer->DateAndTime() + " =====");
    WriteLogLine("++>Version: 11-7702 Rev. T, Build Number: " + computer->Revision() +
                 ", Installed in: " + computer->ProgramDirectory() + " ===");
}

/// A number of the settings; 0 when it isn't one or lies beyond `limit`.
int SettingNumber(int index, int limit)
{
    const double number = text::Val(GetSetting(index));
    return number > 0 && number <= limit ? static_cast<int>(number) : 0;
}

void HideUntilWanted()
{
    for (Control* control :
         {&frmWizard.lblRedoCOMMPort, &frmWizard.lblWaiting1, &frmWizard.lblWaiting2, &frmWizard.lblWaiting_SecondsLeft,
          &frmWizard.lblFlashStatus[0], &frmWizard.lblFlashStatus[1], &frmWizard.lblPortSelect, &frmWizard.optSerial,
          &frmWizard.optUSB, &frmWizard.cmdRetryGetVersions, &frmWizard.cmdPickAntenna})
        control->Visible = false;
    for (Control* box : {&frmWizard.Text1, &frmWizard.txtStatus, &frmWizard.txtParamsSent}) box->Locked = true;
}

void FillBoardList(Control& list, unsigned table)
{
    std::vector<std::string> boards{""};
    for (int index = 1; !BoardName(index, table).empty(); ++index) boards.push_back(BoardName(index, table));
    list.List = boards;
    list.Select(0);
}

void ConnectSteps()
{
    for (int index = 0; index < frmWizard.cmdNav.size(); ++index)
        frmWizard.cmdNav[index].Click = [index] { cmdNav_Click(index); };
    for (int index = 0; index < frmWizard.optBoardToFlash.size(); ++index)
        frmWizard.optBoardToFlash[index].Click = [index] { optBoardToFlash_Click(index); };
    frmWizard.cboBoardToFlash.Click = cboBoardToFlash_Click;
    frmWizard.cboOtherBoard.Click = cboOtherBoard_Click;
    frmWizard.cmdRetryGetVersions.Click = cmdRetryGetVersions_Click;
    frmWizard.optSerial.Click = optSerial_Click;
    frmWizard.optUSB.Click = optUSB_Click;
    frmWizard.cmdOverrideFile.Click = cmdOverrideFile_Click;
    frmWizard.chkShowFinishCmd.Click = chkShowFinishCmd_Click;
    frmWizard.cmdAnotherBoard.Click = cmdAnotherBoard_Click;
    frmSelectFlashFileDialog.cmdOK.Click = frmSelectFlashFileDialog_cmdOK_Click;
    frmSelectFlashFileDialog.cmdCancel.Click = frmSelectFlashFileDialog_cmdCancel_Click;
}

}  // namespace

void ConnectForms()
{
    ConnectSteps();
    ConnectDiagnostics();
    ConnectChoosers();
    ConnectUpdater();
    frmWizard.mnuFile_ItemSaveLogFile.Click = mnuFile_ItemSaveLogFile_Click;
    frmWizard.mnuFile_ItemExit.Click = [] { CleanUpForShutdown(1); };
    frmWizard.mnuUpdate_ItemCheckForUpdates.Click = mnuUpdate_ItemCheckForUpdates_Click;
    frmWizard.mnuUpdate_ItemImportFile.Click = mnuUpdate_ItemImportFile_Click;
    frmWizard.mnuUpdate_ItemViewUpdatesLog.Click = mnuUpdate_ItemViewUpdatesLog_Click;
    frmWizard.cmdViewRelNotes.Click = cmdViewRelNotes_Click;
    frmWizard.mnuHelp_ItemHelp.Click = mnuHelp_ItemHelp_Click;
    frmSelectFlashFileDialog.cmdHelp.Click = mnuHelp_ItemHelp_Click;
    frmShowRelNotes.cmdClose.Click = [] { frmShowRelNotes.Self.Visible = false; };
    frmWizard.mnuHelp_ItemAbout.Click = [] { ShowMsgBox(2, ""); };
    frmWizard.txtSendCmd.KeyPress = txtSendCmd_KeyPress;
    frmWizard.txtSendCmd.KeyDown = txtSendCmd_KeyDown;
    frmWizard.cmdPauseOrResume.Click = cmdPauseOrResume_Click;
}

void FormLoad()
{
    InitSessionVars();
    frmWizard.chkShowFinishCmd.Value = 0;
    HideUntilWanted();
    SetStep(STEP_INTRO);
    StartTimers();
    OpenLogs();
    if (IsExitRequested()) return;  // nothing can be kept in this directory, and the user has read it

    Session.link.iCommPort = static_cast<std::int16_t>(SettingNumber(SETTING_COMM_PORT, 32767));
    Session.link.lBaudRate = SettingNumber(SETTING_BAUD_RATE, 4'000'000);
    if (!IsUpdatesLogOpen()) {
        OpenUpdatesLog();
        CloseUpdatesLog();
    }
    frmWizard.lblUpdateCheck.Caption = "Last Check for Updates: " + GetSetting(SETTING_LAST_UPDATE);
    ChooseCommPortAtLoad();

    frmWizard.bOutputPaused = false;
    frmWizard.cmdPauseOrResume.Caption = "Pause Output";
    frmWizard.cmdPauseOrResume.BackColor = Green;
    FillBoardList(frmWizard.cboBoardToFlash, 0);
    FillBoardList(frmWizard.cboOtherBoard, 1);
    LoadDiagnostics();
    frmWizard.lblStep[1].Caption = "Before you begin...";
    frmWizard.lblStep[2].Caption = "Select Software To Update";
    frmWizard.lblStep[3].Caption = "Orbimaster Software Found";
    frmWizard.lblStep[6].Caption = "Please Restart the Antenna";
    frmWizard.lblStep[7].Caption = "Finished!";
}

void Timer1_Timer() { Session.program.bTickPending = true; }

void Timer2_Timer()
{
    if (Session.link.iDelayTicks > 0) --Session.link.iDelayTicks;
}
