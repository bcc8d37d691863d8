#pragma once
// The program from its first statement to its last.

#include <functional>

/// How Main ended: the program is over, or the port was lost for good and the window stays until the user closes it.
enum class MainEnd { Ended, Stranded };

/// Refuses a second instance, loads settings and form, runs the main loop until somebody asks it to end. `prepare` runs
/// when the settings are loaded and no port is open yet.
MainEnd Main(const std::function<void()>& prepare = {});
