#pragma once
// The program from its first statement to its last.

/// How Main ended: the program is over, or the port was lost for good and the window stays until the user closes it.
enum class MainEnd { Ended, Stranded };

/// Refuses a second instance, loads settings and form, runs the main loop until somebody asks it to end.
MainEnd Main();
