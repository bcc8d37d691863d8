#pragma once
// The real program, and a user in front of it. A user waits until a button can be pressed, as people do; what can't be
// done in time is raised as std::runtime_error with what the window showed.

#include <filesystem>
#include <functional>
#include <string>

#include "tests/desktop/ChildProcess.h"

/// What a widget or a menu entry shows.
struct Seen {
    bool there = false;
    bool visible = false;
    bool enabled = false;
    bool checked = false;
    std::string text;
    std::string tip;
    std::string entries;  // of a combo box, a list, or tabs: one a line

    bool Says(const std::string& words) const { return visible && text.find(words) != std::string::npos; }
};

class WizardProcess {
public:
    /// Starts the program, or a copy of it, in a directory; `prepare` runs in its process ahead of it.
    explicit WizardProcess(const std::filesystem::path& home, std::function<void()> prepare = {},
                           const std::filesystem::path& program = BURNLINE_PROGRAM);

    Seen See(const std::string& name);
    void Click(const std::string& name, double seconds = 10);
    /// An entry of a combo box or a list, or a tab.
    void Choose(const std::string& name, const std::string& entry);
    void Focus(const std::string& name);
    void Type(const std::string& text);
    void PressKey(const std::string& name);
    /// The window's close button.
    void Close();
    /// How often the widget was painted so far.
    int PaintsOf(const std::string& name);

    /// Waits until a widget is seen with these words.
    void WaitForText(const std::string& name, const std::string& words, double seconds = 10);
    void WaitUntil(const std::string& what, const std::function<bool()>& holds, double seconds = 10);
    /// Waits for the message box with these words and presses one of its buttons.
    void AnswerBox(const std::string& words, const std::string& button, double seconds = 10);
    /// Waits for the dialog that asks for a file and types a path and Enter into it, or presses Cancel when
    /// there is none.
    void AnswerFileDialog(const std::filesystem::path& path);
    bool HasBox() { return See("msgBox").visible; }

    bool EndsWithin(double seconds) { return child_.EndsWithin(static_cast<int>(seconds * 1000)); }
    int ExitCode() { return child_.Process().exitCode(); }
    bool Crashed() { return child_.Process().exitStatus() != QProcess::NormalExit; }
    void Kill() { child_.Kill(); }

    /// Processor time used so far, in seconds.
    double ProcessorSeconds();
    /// Memory in use, in KB.
    long MemoryKB();

private:
    QJsonObject Ask(const std::string& command);
    /// Tries until the user can do it.
    void Do(const std::string& command, double seconds);

    ChildProcess child_;
};
