#pragma once
// The terminal or the pipes that a program without windows is started on.

#include <functional>
#include <string>
#include <vector>

/// True when a person can read, or type, there.
bool OutputIsTerminal();
bool InputIsTerminal();

/// Columns of the terminal behind standard output; 80 where that isn't known.
int TerminalWidth();

/// Waits until standard input has something, and gives it; empty at its end.
std::string ReadInput();

/// How somebody asks the program to end: Ctrl+C; another program or the system; the terminal is closed.
enum class EndRequest { Interrupt, Terminate, HangUp };

/// From now on such requests are told instead of ending the program, on a thread of their own. What can't be written
/// because nobody reads it any more is a failed write and no end either. Call it once.
void WatchEndRequests(std::function<void(EndRequest)> told);

/// Program and arguments that run a command line as the system's shell would.
std::vector<std::string> ShellCommand(const std::string& command);
