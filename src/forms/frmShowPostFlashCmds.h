#pragma once
// The commands that the user enters after a flash without saved parameters.

#include "forms/Control.h"

struct ShowPostFlashCmdsForm {
    Form Self{"frmShowPostFlashCmds", "Antenna Commands"};
    Control lblInstructions{
        Self, "lblInstructions",
        "Based on the Orbimaster antenna you selected, you should enter the commands below AFTER cycling power to the "
        "antenna. <XXX> indicates a value should be entered for the command. See your Orbimaster antenna manual for "
        "details."};
    Control txtShowPostFlashCmds{Self, "txtShowPostFlashCmds"};
    Control cmdDismiss{Self, "cmdDismiss", "Close this window"};
};

inline ShowPostFlashCmdsForm frmShowPostFlashCmds;
