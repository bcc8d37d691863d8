#pragma once
// What the command line asks for.

#include <string>

/// How the program ends: what it may be relied on to mean for the antenna.
enum ExitCode {
    END_DONE = 0,           // flashed, and its parameters are back
    END_USAGE = 1,          // the command line or the program's directory can't be used
    END_NO_PORT = 2,        // no such port, in use, or forbidden; or another Burnline works in the directory
    END_NOT_KNOWN = 3,      // the versions weren't read, or the board isn't known
    END_BAD_FILE = 4,       // a flash file or the configuration is missing, corrupt or odd; nothing was sent
    END_PARAMS_UNREAD = 5,  // the parameters weren't read; nothing was erased
    END_FLASH_FAILED = 6,   // the antenna waits in its boot loader
    END_PARAMS_OUT = 7,     // flashed, but not all parameters are back
    END_CANCELLED = 8,      // by an answer, by SIGTERM, or with its terminal
    END_INTERRUPTED = 130,  // by Ctrl+C
};

/// What an exit code means, and what to do about it.
std::string WordsOf(int exitCode);

enum class Task { Flash, Identify, Check, ListPorts, ListBoards, ListAntennas };

struct Options {
    Task task = Task::Flash;
    std::string directory, port, board, file, antenna, model, powerCycle, log;
    bool skipParameters = false;
    bool usb = false;             // the board is connected by its USB port
    bool yes = false;             // nobody is there to be asked
    bool acceptWarnings = false;  // flash files that are odd are flashed unasked
    bool json = false;
};

/// Reads the command line. One that can't be read ends the program with the exit code 1 and words that say why;
/// "--help" and "--version" end it with 0.
Options ReadOptions();
