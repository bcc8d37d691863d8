#pragma once
// New program and flash files, from the internet or from anywhere on this computer, and what there is to read about
// them.

#include <string>
#include <vector>

/// Asks the server of the settings what is new; the rest is told by the updater's events. Without an internet link a
/// box says so.
void CheckForUpdates();

/// Ends, ahead of everything that reads the files, what an earlier run began to replace; a failure is told.
void EndLeftReplacement();

/// At program start: offers what an earlier run has downloaded, and checks by itself when the settings want it and
/// there is a link.
void CheckForUpdatesAtStart();

/// A flash is about to begin: no box of an update may come between it and the antenna.
void StopUpdates();

/// The updater's events get their handlers; called once, before the first check.
void ConnectUpdater();

void mnuUpdate_ItemCheckForUpdates_Click();
void mnuUpdate_ItemImportFile_Click();
void mnuUpdate_ItemViewUpdatesLog_Click();
void cmdViewRelNotes_Click();
void mnuHelp_ItemHelp_Click();

/// Copies flash files into the program's directory, over those that are there.
void ImportFiles(const std::vector<std::string>& paths);
