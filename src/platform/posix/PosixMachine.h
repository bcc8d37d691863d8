#pragma once
// What a POSIX system says of a process and of a device.

#include <string>

/// Raises this process's claim to the processor by `steps` of niceness above what it was started with; 0 goes back.
/// A refusal is no failure.
void RaiseNiceness(int steps);

/// The name of the group that owns a device; its number when it has no name, empty when there is no such device.
std::string OwningGroup(const std::string& path);
