#pragma once
// The satellite library, offered to a JARL system that doesn't have it yet.

#include "forms/Control.h"

struct CheckJarlForm {
    Form Self{"frmCheckJarlForGLTV", "Please Choose an Upgrade Option"};
    Control lblGLTVPrompt{
        Self, "lblGLTVPrompt",
        "If desired, you can upgrade this Orbimaster JARL system to include GLTV capability, which provides a library "
        "of more than 70 of the most popular satellites worldwide.  For upgrade instructions and important system "
        "operation information, refer to the JARL GLTV Upgrade Instructions located in the Burnline Assistant's Help "
        "Menu."};
    ControlArray optGLTV{Self, "optGLTV", {"Upgrade to GLTV", "Do not upgrade to GLTV"}};
    Control cmdOK{Self, "cmdOK", "&OK"};
};

inline CheckJarlForm frmCheckJarlForGLTV;
