#pragma once
// The program with its windows, put together: port, computer, forms. There is one at a time.

#include <deque>

#include "desktop/Binder.h"
#include "desktop/DesktopComputer.h"
#include "desktop/FormDialog.h"
#include "desktop/NetUpdater.h"
#include "desktop/WizardWindow.h"
#include "host/CaughtFailure.h"
#include "host/Ports.h"
#include "host/SerialLink.h"

class Desktop {
public:
    /// Takes the places of `computer` and `MSComm1` for as long as it lives.
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// The whole program, to its end.
    void Run();

    WizardWindow& Window() { return window_; }

    /// The program that has taken this one's place and is to be started behind its end; empty when there is none.
    const QString& Successor() const { return successor_; }

private:
    void ReplaceProgram();
    template <class Drawing>
    void AddDialog(Form& form);

    const std::string directory_;
    CaughtFailure caught_;
    const std::unique_ptr<Ports> ports_;
    const std::unique_ptr<SerialLink> link_;
    Binder binder_;
    DesktopComputer computer_;
    WizardWindow window_;
    std::deque<FormDialog> dialogs_;
    NetUpdater updater_;
    QString successor_;
};
