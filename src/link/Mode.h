#pragma once
// The shape of the table that drives the link; the table itself stands in frame/ModeTable.

#include <string>

/// What becomes of received text before a mode's reply procedure sees it.
enum class Received {
    Keep,  // shown on the terminal and added to sCommBuffer
    Show,  // shown on the terminal only
    Raw,   // neither: single characters and bytes
};

struct Mode {
    int mode;                                   // its number, and its place in the table
    void (*onReply)(const std::string& chunk);  // what arrived in this call; null: nothing to do
    void (*onTimeOut)();                        // the wait has run out; null: nothing to do
    Received received;
};

extern const Mode ModeTable[];
inline constexpr int ModeCount = 22;
