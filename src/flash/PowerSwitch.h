#pragma once
// Whether the session waits for somebody to cycle the antenna's power.

enum class PowerSwitch {
    LeaveAlone,
    CycleIfSilent,  // the antenna was told to reset; one without power or software doesn't hear it
    Cycle,
};

/// What is wanted of the antenna's power switch at this moment.
PowerSwitch WantedOfPowerSwitch();
