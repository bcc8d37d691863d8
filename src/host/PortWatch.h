#pragma once
// Lets what happens on the serial port end a wait for events.

#include <QSocketNotifier>
#include <memory>

#include "platform/posix/PosixSerialControl.h"

class PortWatch {
public:
    explicit PortWatch(PosixSerialControl& port) : port_(port) {}

    /// Call it ahead of each wait. The first bytes that arrive end that wait; those behind them don't end another one
    /// before somebody had the chance to read them, so that a loop which doesn't read doesn't spin.
    void Arm();
    /// The same, but only what waits to be written ends the wait: for loops in which nobody reads.
    void ArmForOutput();

private:
    void Follow();

    PosixSerialControl& port_;
    int descriptor_ = -1;
    std::unique_ptr<QSocketNotifier> reader_, writer_;
};
