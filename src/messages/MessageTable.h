#pragma once
// What each message says. What follows from the answer belongs to whoever asked.

#include "platform/Computer.h"

/// One message. `words` and `log` may hold {port}, {revision}, {detail}, {code} and {directory}, which stand for the
/// current COM number, the program's revision, what the caller adds, the message's code and the program's directory; a
/// log line may hold {words}, the text of the box. Lines end in "\n".
struct Message {
    int code;
    Buttons buttons;
    Answer standard;  // the button that Enter presses
    Icon icon;
    const char* title;
    const char* words;  // null: no box
    const char* log;    // null: no line
    bool ends;          // the program can't go on
};

/// The message of a code; the one for unknown failures when the code has none of its own. Without any configured
/// port (`port` 0) message 21 has other words.
const Message& MessageOf(int code, int port);
