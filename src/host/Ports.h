#pragma once
// The serial devices of this machine under their COM numbers.

#include <memory>
#include <string>

#include "platform/Computer.h"

inline constexpr int LastCommPort = 64;

class Ports {
public:
    virtual ~Ports() = default;

    /// The device of a COM number; empty when it has none.
    virtual std::string DeviceOf(int port) = 0;

    /// The COM number of a device, under whichever of its names; it gets one when it is there and has none. 0: it isn't
    /// there, or no number is left.
    virtual int PortOf(const std::string& device) = 0;

    /// For the menu's tool tip, and how to get at a port that this user may not open.
    virtual PortInfo Describe(int port) = 0;
};

/// Those of this system. `directory` is the program's.
std::unique_ptr<Ports> MakePorts(const std::string& directory);
