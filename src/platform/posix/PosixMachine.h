#pragma once
// What a POSIX system says of a device.

#include <string>

/// The name of the group that owns a device; its number when it has no name, empty when there is no such device.
std::string OwningGroup(const std::string& path);
