#pragma once
// The one serial port of the program, and what happens on it as an end of a wait for events.

#include <functional>
#include <memory>
#include <string>

#include "platform/SerialControl.h"

class SerialLink {
public:
    virtual ~SerialLink() = default;

    virtual SerialControl& Control() = 0;

    /// One of the PORT_ values of platform/Computer.h, or another error of the system; a port that this program holds
    /// itself is usable.
    virtual int TestPort(int port) = 0;

    /// Call it ahead of each wait. The first bytes that arrive end that wait; those behind them don't end another one
    /// before somebody had the chance to read them, so that a loop which doesn't read doesn't spin.
    virtual void Arm() = 0;
    /// The same, but only what waits to be written ends the wait: for loops in which nobody reads.
    virtual void ArmForOutput() = 0;
};

/// That of this system. `deviceOf` gives the device of a COM number, empty when there is none.
std::unique_ptr<SerialLink> MakeSerialLink(std::function<std::string(int)> deviceOf);
