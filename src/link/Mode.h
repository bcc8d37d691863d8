#pragma once
// The shape of the table that drives the link; the table itself stands in loop/ModeTable.

#include <string>

/// How far the antenna has got, and with it what the user may do.
enum class Phase {
    Free,       // nothing is under way
    Reading,    // the antenna is asked what it is
    Talking,    // a list or a script is under way
    Saving,     // its parameters are read; nothing is erased yet
    Resetting,  // its boot loader is waited for
    Erasing,    // from the program command to the first unit: leaving is asked about
    Writing,    // units go out: leaving is asked about
    Failed,     // a wait has run out
    Restoring,  // its parameters go back: leaving is asked about
};

/// What becomes of received text before a mode's reply procedure sees it.
enum class Received {
    Keep,  // shown on the terminal and added to sCommBuffer
    Show,  // shown on the terminal only
    Raw,   // neither: single characters and bytes
};

struct Mode {
    int mode;                                   // its number, and its place in the table
    Phase phase;                                // of which it is a part
    void (*onReply)(const std::string& chunk);  // what arrived in this call; null: nothing to do
    void (*onTimeOut)();                        // the wait has run out; null: nothing to do
    Received received;
};

extern const Mode ModeTable[];
inline constexpr int ModeCount = 22;

/// The phase of the link's present mode.
Phase PhaseNow();

/// From the first pre-flash command to the last restored parameter: the antenna is to be left alone.
bool IsFlashing();
