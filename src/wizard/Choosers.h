#pragma once
// The dialogs in which the user names the antenna: which one it is, which model, which upgrade.

/// Gives the controls of these dialogs their handlers; part of ConnectForms.
void ConnectChoosers();

/// Hides the dialogs that stand open beside the main window, without their answers.
void CloseChoosers();

/// Lists the antennas of the configuration file, so that one can be picked by hand.
void cmdPickAntenna_Click();

/// Shows the commands that the user has to enter after a flash without saved parameters, when there are any.
void ShowPostFlashCmds();
