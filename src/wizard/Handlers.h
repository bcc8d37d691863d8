#pragma once
// The handlers of the main form and its dialogs that only wizard/ itself calls.

#include <string>

// --- the steps ---------------------------------------------------------------------------------------------------
void cmdRetryGetVersions_Click();
void optSerial_Click();
void optUSB_Click();
void chkShowFinishCmd_Click();

// --- the menus ---------------------------------------------------------------------------------------------------
void mnuFile_ItemSaveLogFile_Click();

/// Fills the COM menu and opens the port of the settings, or tells why it can't be opened. Part of FormLoad.
void ChooseCommPortAtLoad();

/// Shows a state of the port that keeps it closed: bold on white.
void ShowPortStatus(const std::string& words);

/// The menu's item of the current port loses its check mark.
void UncheckCurrentPort();

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
