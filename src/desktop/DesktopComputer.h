#pragma once
// The computer as the core sees it, on a desktop with windows.

#include <QElapsedTimer>
#include <QLockFile>
#include <QTimer>
#include <memory>

#include "desktop/Binder.h"
#include "desktop/CaughtFailure.h"
#include "desktop/HelpWindow.h"
#include "desktop/PortWatch.h"
#include "desktop/Ports.h"
#include "platform/Computer.h"
#include "platform/posix/PosixSerialControl.h"

class DesktopComputer : public Computer {
public:
    /// `directory` is the program's.
    DesktopComputer(std::string directory, Binder& binder, CaughtFailure& caught, Ports& ports,
                    PosixSerialControl& port);

    void DoEvents() override;
    void WaitForEvent() override;
    void Sleep(int ms) override;
    double Seconds() override;
    std::string DateAndTime() override;
    std::string Date() override;

    Answer MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title) override;
    void ShowModal(Form& form) override;
    std::vector<std::string> OpenDialog(const FileDialog& dialog) override;
    std::optional<std::string> SaveDialog(const FileDialog& dialog) override;
    void ShowHelp(int topic, const std::string& section) override;
    void CloseHelp() override;

    std::string ProgramDirectory() override;
    bool PrevInstance() override;
    void SetHighPriority(bool high) override;
    bool InternetConnected() override;
    int TestCommPort(int port) override;
    PortInfo DescribeCommPort(int port) override;
    std::string Revision() override;

    /// A wait in which nobody reads the port.
    void WaitForUser();

private:
    void FollowTimers();
    void Dispatch();
    QWidget* PrepareDialog();

    const std::string directory_;
    Binder& binder_;
    CaughtFailure& caught_;
    Ports& ports_;
    PosixSerialControl& port_;
    PortWatch watch_;
    QTimer timer1_, timer2_;
    QElapsedTimer sinceDispatch_;
    std::unique_ptr<QLockFile> lock_;
    std::unique_ptr<HelpWindow> help_;  // made when it is asked for
};

/// Where settings, logs, configuration and flash files lie; made when it isn't there yet.
std::string FindProgramDirectory();
