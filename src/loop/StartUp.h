#pragma once
// The program from its first statement to its last.

#include <functional>

/// Refuses a second instance, loads settings and form, runs the main loop until somebody asks it to end. `prepare` runs
/// when the settings are loaded and no port is open yet.
void Main(const std::function<void()>& prepare = {});
