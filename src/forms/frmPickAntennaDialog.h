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

    std::vector<int> RowOf;  // the row of the antenna table behind each entry of the list
};

inline PickAntennaForm frmPickAntennaDialog;
