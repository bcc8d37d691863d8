#pragma once
// The computer as the core sees it, on a console: what a window would show is told, what it would ask is asked in
// words.

#include <functional>
#include <optional>

#include "console/Choices.h"
#include "console/Options.h"
#include "console/Reporter.h"
#include "console/Voice.h"
#include "host/HostComputer.h"
#include "platform/Terminal.h"

class ConsoleComputer : public HostComputer {
public:
    ConsoleComputer(const Options& options, const std::string& directory, CaughtFailure& caught, Ports& ports,
                    SerialLink& link, Voice& voice);

    void WaitForEvent() override;
    Answer MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title,
                  Answer standard) override;
    void ShowModal(Form& form) override;
    std::vector<std::string> OpenDialog(const FileDialog& dialog) override;
    std::optional<std::string> SaveDialog(const FileDialog& dialog) override;
    void ShowHelp(int topic, const std::string& section) override;
    void CloseHelp() override {}
    bool InternetConnected() override { return false; }  // updates are the window's business
    bool PrevInstance() override;

    /// Runs once, in the first wait of the main loop: whoever works the forms.
    std::function<void()> work;
    /// Runs after each wait that follows.
    std::function<void()> watch;

    /// Nobody is there who could be asked.
    bool IsUnattended() const { return options_.yes; }
    Choices& Ask() { return choices_; }

    /// The session is to end with this exit code, and nothing is asked any more.
    void Leave(int exitCode);
    /// Somebody asks the program to end.
    void OnEndRequest(EndRequest request);

    /// File > Save Log File As..., with the file of the command line.
    void KeepLog();

    /// Tells what the forms show by now.
    void TellForms() { Show(); }

    /// The exit code that is settled so far.
    std::optional<int> Settled() const { return settled_; }
    bool AnotherOneWorks() const { return anotherOneWorks_; }

private:
    void Show() override { reporter_.Look(); }
    void ShowInTurn() override { reporter_.Look(); }
    void ShowOverdue() override { reporter_.Look(); }

    Answer AnswerUnasked(Buttons buttons, const std::string& title);
    Answer AskPerson(Buttons buttons, Answer standard, const std::string& title);
    void AnswerModel(Form& form);
    void AnswerLibrary();

    const Options& options_;
    CaughtFailure& caught_;
    Voice& voice_;
    Reporter reporter_;
    Choices choices_;
    std::optional<int> settled_;
    bool leaving_ = false;      // every question is answered so that the program ends
    bool asksToLeave_ = false;  // Ctrl+C has led to a question
    bool insists_ = false;      // and was pressed once more
    bool keepsLog_ = false;
    bool logOffered_ = false;
    bool anotherOneWorks_ = false;
    int retries_ = 0;
};
