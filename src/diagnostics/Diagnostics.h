#pragma once
// Work on the antenna without flashing it: the command buttons, satellites, scripts, the pointing calculation.

#include <string>

/// Gives the controls of the Diagnostics step their handlers.
void ConnectDiagnostics();

/// What stands in them when the form is loaded: lists with their first entry chosen, what is hidden until it is wanted.
void LoadDiagnostics();

/// The antenna is halted and told to talk, then gets the command: three lines, back to back.
void SendAfterHalt(const std::string& command);

// --- the antenna's lists of satellites ---------------------------------------------------------------------------

/// "SATLISTA,DSS_101,ECHO_119": fills cboSatA and goes back to STATE_IDLE. A text with fewer than two names is left
/// alone.
void ParseSatListA(const std::string& reply);

/// The same for "SATLISTB" and cboSatB, whose list ends in "NONE"; "TRISAT" alone gives the four sets of three.
void ParseSatListB(const std::string& reply);

// STATE_SAT_LIST_A and STATE_SAT_LIST_B: on a reply, and when the wait for one has run out.
void OnSatListReply(const std::string& chunk);
void EndSatListWait();
