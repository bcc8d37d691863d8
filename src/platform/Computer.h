#pragma once
// What the core expects of the computer beside its files and its serial port.

#include <functional>
#include <optional>
#include <string>
#include <vector>

struct Form;

enum class Buttons { OK, OKCancel, RetryCancel, YesNo, YesNoCancel };
enum class Icon { None, Critical, Exclamation, Information, Question };
enum class Answer { OK = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

/// A file dialog. `filter` is pairs of a description and its patterns, all separated by "|":
/// "Log Files (*.LOG)|*.log|All Files (*.*)|*.*".
struct FileDialog {
    std::string title;
    std::string filter;
    std::string directory;
    std::string name;   // proposed
    bool many = false;  // several files may be chosen
};

// What TestCommPort finds.
inline constexpr int PORT_USABLE = 1;
inline constexpr int PORT_MISSING = 2;     // no such port
inline constexpr int PORT_IN_USE = 5;      // another program holds it
inline constexpr int PORT_FORBIDDEN = 13;  // this user may not open it

/// What is known of a port: a line for the menu's tool tip (device, description, USB ids), and, for a port that this
/// user may not open, the remedy in words.
struct PortInfo {
    std::string toolTip;
    std::string remedy;
};

class Computer {
public:
    virtual ~Computer() = default;

    // --- time and events -----------------------------------------------------------------------------------------
    /// Dispatches what has queued up: timers, clicks, painting. Raises what a handler raised.
    virtual void DoEvents() = 0;
    /// The rest of a main round: sleeps until a timer, the antenna or the user has something, and dispatches it.
    /// Raises what a handler raised.
    virtual void WaitForEvent() = 0;
    /// Sleeps for all of `ms` milliseconds and dispatches nothing.
    virtual void Sleep(int ms) = 0;
    /// Seconds since some fixed moment, growing evenly.
    virtual double Seconds() = 0;
    /// Local time as "2026-11-21 10:15:02", local date as "2026-11-21".
    virtual std::string DateAndTime() = 0;
    virtual std::string Date() = 0;

    // --- the user ------------------------------------------------------------------------------------------------
    /// A modal box. Lines of `words` end in "\n"; Enter presses the button of the answer `standard`.
    virtual Answer MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title,
                          Answer standard) = 0;
    /// Shows a form and returns when it is hidden again.
    virtual void ShowModal(Form& form) = 0;
    /// The chosen path or paths; empty when the user cancelled.
    virtual std::vector<std::string> OpenDialog(const FileDialog& dialog) = 0;
    virtual std::optional<std::string> SaveDialog(const FileDialog& dialog) = 0;
    /// Opens the help at a topic, and at a section of its page where one is named; closes all its windows.
    virtual void ShowHelp(int topic, const std::string& section) = 0;
    virtual void CloseHelp() = 0;

    // --- the machine ---------------------------------------------------------------------------------------------
    /// The directory of settings, logs, configuration and flash files, without a separator at its end.
    virtual std::string ProgramDirectory() = 0;
    /// True when another instance of the program works in that directory.
    virtual bool PrevInstance() = 0;
    /// A short wait for the processor during a flash, and back; ignored where it isn't permitted.
    virtual void SetHighPriority(bool high) = 0;
    virtual bool InternetConnected() = 0;
    /// One of the PORT_ values above for COM number `port`.
    virtual int TestCommPort(int port) = 0;
    virtual PortInfo DescribeCommPort(int port) = 0;
    /// The revision number of the program, "1.0.0".
    virtual std::string Revision() = 0;
};

/// The one computer; set before `Main` runs.
inline Computer* computer = nullptr;
