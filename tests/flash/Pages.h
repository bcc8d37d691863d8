#pragma once
// What the user sees, put down as text, and where two such accounts differ.

#include <string>
#include <vector>

#include "forms/Control.h"

/// What one antenna's road from the choice of its board to the last step comes to.
struct Account {
    std::string heard;               // all bytes that the program wrote
    std::size_t planned = 0;         // how many of them before STEP_3 was left
    std::vector<std::string> pages;  // each step as it was entered and as it was left, each modal dialog, each box
    std::string kept;                // the antenna's memory, then its parameters
    bool finished = false;
};

/// Each control that differs, with the page where it does first, then the bytes and the antenna; empty when none does.
std::string Difference(const Account& fresh, const Account& second);

/// The step that is shown.
int ShownStep();

/// What a step shows: its own controls and those that stand on every step. Left out are the terminal, the port's menu
/// and figures of time.
std::vector<Control*> ControlsOf(int step);

/// The dialogs that stand beside the wizard now.
std::vector<Form*> Dialogs();

/// The step that is shown and the dialogs beside it, with the word that tells when it was looked at.
std::string Page(const std::string& when);
/// A modal dialog.
std::string Page(const Form& form);

/// Line ends as "|".
std::string OnOneLine(const std::string& words);
