#pragma once
// The five display procedures: the only writers of the progress and terminal controls.

#include <string>

/// The terminal and the paused output are emptied beyond this many characters.
inline constexpr std::size_t MaxCommsTextLength = 28672;

/// Adds one line to the list of actions.
void StatusTextUpdate(const std::string& words);

/// Percent done, 0 to 100; 0 clears the time.
void ShowProgress(int percent);

/// A share of a whole as percent, at most 100; 0 when the whole isn't above 0.
int PercentOf(double done, double whole);

/// Shows text on the terminal and writes it to the log.
void ShowAllCommsTextUpdate(const std::string& words);

/// The command line takes commands, or doesn't.
void EnableCmdEntry();
void DisableCmdEntry();

/// A banner of lblFlashStatus, made visible.
void ShowBanner(int index, const std::string& words, int backColor, int foreColor);

/// Adds text to the box of uploaded parameters.
void AddParamsSent(const std::string& words);
