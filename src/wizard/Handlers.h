#pragma once
// The handlers of the main form and its dialogs that only wizard/ itself calls.

#include <string>

#include "session/FlashPlan.h"

// --- the board ---------------------------------------------------------------------------------------------------
/// From here on it is this board: what the user said of another one, and what that has told, is forgotten, and the link
/// has the board's speed.
void ChooseBoard(int boardType);

/// STEP_4: the plan is made, the user is asked what it leaves open, and an unknown board leads back to the versions.
void PlanFlash();

/// The user's answers on STEP_4: the plan is made anew with them, and shown.
void MakePlan(const PlanAnswers& answers);

// --- the steps ---------------------------------------------------------------------------------------------------
/// The reset before the versions are read; the first query goes out a second later.
void InitAntennaInfoVars();
void cmdRetryGetVersions_Click();
void optSerial_Click();
void optUSB_Click();
void chkShowFinishCmd_Click();
void cmdAnotherBoard_Click();

// --- the menus ---------------------------------------------------------------------------------------------------
void mnuFile_ItemSaveLogFile_Click();

/// Fills the COM menu and opens the port of the settings, or tells why it can't be opened. Part of FormLoad.
void ChooseCommPortAtLoad();

// --- the flash file ----------------------------------------------------------------------------------------------
void frmSelectFlashFileDialog_cmdOK_Click();
/// Empties and hides the dialog; Next is possible again.
void frmSelectFlashFileDialog_cmdCancel_Click();

// --- the terminal ------------------------------------------------------------------------------------------------
/// True when the key is swallowed.
bool txtSendCmd_KeyPress(int key);
/// Up and down walk through the commands that were sent.
bool txtSendCmd_KeyDown(int key);
void cmdPauseOrResume_Click();
