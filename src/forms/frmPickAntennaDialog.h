#pragma once
// The antenna, picked by hand when it doesn't tell its versions.

#include <vector>

#include "forms/Control.h"

struct PickAntennaForm {
    Form Self{"frmPickAntennaDialog", "QEL Burnline Assistant - Select Antenna/RF Board"};
    Control lblWarning{Self, "lblWarning",
                       "The board type specific to the Orbimaster antenna model could not be determined automatically. "
                       "Please select the model from the list, ensure it is connected to the COM port, and click OK."};
    Control lstAntennas{Self, "lstAntennas"};
    Control cmdOK{Self, "cmdOK", "&OK"};
    Control cmdCancel{Self, "cmdCancel", "Cancel"};

    std::vector<int> RowOf;           // the row of AntennaTable behind each entry of the list
    bool bPicked = false;             // a click has changed the session; what stood before is kept here
    bool bUpgradeBootloader = false;  // and the board type in iSavedBoardType
    bool bRFBootPhase = false;
};

inline PickAntennaForm frmPickAntennaDialog;
