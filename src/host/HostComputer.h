#pragma once
// What a front end with an event loop of Qt shares with any other: time, events, the port, the program's directory.
// How it shows something and asks the user is its own.

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <memory>

#include "host/CaughtFailure.h"
#include "host/Ports.h"
#include "host/SerialLink.h"
#include "platform/Computer.h"
#include "platform/FileLock.h"

class HostComputer : public Computer {
public:
    /// `directory` is the program's.
    HostComputer(std::string directory, CaughtFailure& caught, Ports& ports, SerialLink& link);

    void DoEvents() override;
    void WaitForEvent() override;
    void Sleep(int ms) override;
    double Seconds() override;
    std::string DateAndTime() override;
    std::string Date() override;

    std::string ProgramDirectory() override;
    bool PrevInstance() override;
    void SetHighPriority(bool high) override;
    int TestCommPort(int port) override;
    PortInfo DescribeCommPort(int port) override;
    std::string Revision() override;

    /// A wait in which nobody reads the port.
    void WaitForUser();

protected:
    // What of the forms has changed is shown: all of it; what may be shown in a wait; what has waited for too long.
    virtual void Show() = 0;
    virtual void ShowInTurn() = 0;
    virtual void ShowOverdue() = 0;

    /// All is shown that the core changed ahead of a question; as long as that is open nobody reads the port.
    void PrepareQuestion();

private:
    void FollowTimers();
    void Dispatch(QEventLoop::ProcessEventsFlags flags);

    const std::string directory_;
    CaughtFailure& caught_;
    Ports& ports_;
    SerialLink& link_;
    QTimer timer1_, timer2_;
    QElapsedTimer sinceDispatch_;
    FileLock lock_;
};

/// Where settings, logs, configuration and flash files lie; made when it isn't there yet. `wanted` comes first, then
/// the environment's, then the program's own directory where these files stand in it, then the user's; these two begin
/// with the configuration that came along.
std::string FindProgramDirectory(const std::string& wanted = {});
