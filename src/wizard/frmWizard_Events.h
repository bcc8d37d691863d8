#pragma once
// The events of the main form and of its dialogs. Each control's Click and KeyPress is set by ConnectForms; what has no
// control of its own is called by name.

#include <string>

/// Gives every control its handler; called once, before the form is loaded.
void ConnectForms();

/// The session is put together: frames, timers, log, port, lists. Called once, by Main.
void FormLoad();

/// A key, ahead of the control that has the focus. True when the form took it. Key codes: F1 is 112, F7 118.
bool Form_KeyDown(int key, bool shift, bool ctrl, bool alt);
bool frmSelectFlashFileDialog_KeyDown(int key, bool shift, bool ctrl, bool alt);

/// The user closes the window.
void Form_QueryUnload();
/// True when the window may go.
bool Form_Unload();

/// The COM menu is about to open: its items are made again.
void mnuCommPort_Open();

void Timer1_Timer();
void Timer2_Timer();

void cmdNav_Click(int index);
void mnuCommPort_Item_Click(int index);
void optBoardToFlash_Click(int index);
void cboBoardToFlash_Click();
void cboOtherBoard_Click();
void cmdOverrideFile_Click();

/// On STEP_4: the board is flashed with this file; one of the program's directory goes by its name alone.
void TakeFlashFile(const std::string& path);

/// On STEP_4: the flash that Next starts neither reads the antenna's parameters nor restores them.
void SkipParameters();
