#pragma once
// One round of the main loop, for those who wait inside a step or a script.

/// A due tick is served, then what the antenna said, then the user.
void RunRound();
