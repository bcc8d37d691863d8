#pragma once
// A small viewer: the release notes and the updates log.

#include "forms/Control.h"

struct ShowRelNotesForm {
    Form Self{"frmShowRelNotes", "Burnline - Release Notes"};
    Control WebBrowser1{Self, "WebBrowser1"};  // Text is the path of the page that is shown
    Control cmdClose{Self, "cmdClose", "Close"};
};

inline ShowRelNotesForm frmShowRelNotes;
