#pragma once
// What the floors above offer to those below them; the definitions stand in wizard/, messages/ and loop/.

#include <string>

#include "platform/Computer.h"

/// Enters a step, 0 to 8, and does what that step does.
void SetStep(int step);

// States of the navigation buttons in the middle of a step.
inline constexpr int NAV_CHOSEN = 11;    // the versions are known, or the port of the board was chosen
inline constexpr int NAV_WRITTEN = 12;   // the transfer has reached its end
inline constexpr int NAV_RESTORED = 13;  // the parameters are back
inline constexpr int NAV_BLOCKED = 14;   // there is no port, or nothing comes from it
inline constexpr int NAV_CHOICE = 15;    // something is to be chosen first

/// Sets the navigation buttons: a step's number, or one of the codes above.
void SetNavCmds(int code);

/// The one route by which messages reach the user: the box, its log line, the answer; OK for a message without a box.
/// `origin` names the caller and may be empty; `detail` stands for {detail} in the message's words.
Answer ShowMsgBox(int code, const std::string& origin, const std::string& detail = {});

/// The message's log line without its box, where nobody is to be asked.
void LogMsg(int code, const std::string& origin);

/// A failure, told under the name of the procedure that it ended; one that the program can't go on with ends it.
void TellFailure(int number, const std::string& origin);

/// The failure in flight, told likewise. Call it in a catch block only.
void ReportFailure(const std::string& name);

/// Runs a procedure's body; a failure in it is reported under the procedure's name and goes no further.
template <class Body>
void Guarded(const std::string& name, Body body)
{
    try {
        body();
    } catch (...) {
        ReportFailure(name);
    }
}

/// What is known of the versions: 6 they arrived, 7 asking, 8 antenna picked by hand, 9 no answer.
void UpdateVersionsDisplay(int what);

/// The ordered way out: 1 cancelled by the user, 2 finished, 3 update scheduled.
void CleanUpForShutdown(int reason);

/// The program is to end; the loop sees it ahead of its next round.
void SetExitRequested(bool value);
bool IsExitRequested();
