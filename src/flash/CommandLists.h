#pragma once
// What the lists of commands before and behind a flash have in common: their waits, and the judging of a command that
// was answered or wasn't.

#include <cstdint>
#include <string>

#include "session/Session.h"

/// True, and the seconds, when an entry is a wait: "WAIT 5".
bool IsWaitEntry(const std::string& entry, int& seconds);

/// Ticks of 100 ms for a wait in seconds, within what the countdown holds; one at least, so that nothing stands still.
short TicksOf(int seconds);

enum class Previous {
    Done,     // it was answered, or there is none: the next entry's turn
    Again,    // it wasn't: the index is back on it, and the wait has become a second longer
    GivenUp,  // it wasn't for five times
};

/// Judges the command ahead of `index`, and arms the wait for what follows.
Previous JudgePrevious(std::int16_t& index, CommandInFlight& command);
