#pragma once
// The serial devices of this machine under their COM numbers.

#include <QElapsedTimer>
#include <string>

#include "platform/Computer.h"
#include "platform/PortTable.h"

class Ports {
public:
    /// `directory` holds Burnline.ports.
    explicit Ports(const std::string& directory);

    /// The device of a COM number; empty when it has none. Looks at the machine again when the last look is more than
    /// a second old, so that an adapter plugged in meanwhile is there.
    std::string DeviceOf(int port);

    /// The COM number of a device, under whichever of its names; it gets one when it is there and has none. 0: it isn't
    /// there, or no number is left.
    int PortOf(const std::string& device);

    /// For the menu's tool tip, and how to get at a port that this user may not open.
    PortInfo Describe(int port);

private:
    void Refresh();

    PortTable table_;
    QElapsedTimer sinceLook_;
};
