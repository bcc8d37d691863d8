#pragma once
// What each message says. What follows from the answer stands in MessageCatalogue.

#include "platform/Computer.h"

/// One message. `words`, `log` and `status` may hold {port}, {revision}, {board}, {code} and {directory}, which stand
/// for the current COM number, the program's revision, the board's name, the message's code and the program's
/// directory; a log line may hold {words}, the text of the box. Lines end in "\n".
struct Message {
    int code;
    Buttons buttons;
    Icon icon;
    const char* title;
    const char* words;   // null: no box
    const char* log;     // null: no line
    const char* status;  // shown in lblCommPortStatus ahead of the box; null: the label stays as it is
};

/// The message of a code; the one for unknown failures when the code has none of its own. Without any configured
/// port (`port` 0) message 21 has other words.
const Message& MessageOf(int code, int port);
