#pragma once
// The other revisions of a flash file, to choose one of them.

#include "forms/Control.h"

/// Opens when the user wants another flash file than the one that was found.
struct SelectFlashFileForm {
    Form Self{"frmSelectFlashFileDialog", "Select Flash File"};
    Control lblChooseFile{Self, "lblChooseFile",
                          "Please choose the flash file you want to upload to the selected board."};
    Control cboChooseFile{Self, "cboChooseFile"};
    Control cmdOK{Self, "cmdOK", "OK"};
    Control cmdCancel{Self, "cmdCancel", "Cancel"};
    Control cmdHelp{Self, "cmdHelp", "&Help"};
    std::string sBrowsedFile;
};

inline SelectFlashFileForm frmSelectFlashFileDialog;
