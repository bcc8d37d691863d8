#include "host/HostComputer.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <chrono>
#include <thread>

#include "forms/frmWizard.h"
#include "host/ShippedFiles.h"
#include "platform/Machine.h"
#include "platform/ProgramFiles.h"
#include "session/Session.h"
#include "wizard/frmWizard_Events.h"

namespace {

void FollowTimer(QTimer& timer, bool runs, int interval)
{
    if (runs == timer.isActive() && (!runs || timer.interval() == interval)) return;
    if (runs)
        timer.start(interval);
    else
        timer.stop();
}

/// An installed program lies where its user can't write; its directory begins with the configuration that came along.
void PutConfigurationIfMissing(const QString& directory)
{
    const QString name = u"FLASHCFG.TXT"_qs;
    QFile::copy(FindShipped(u"default/"_qs + name), directory + u'/' + name);  // nothing is overwritten by it
}

}  // namespace

std::string FindProgramDirectory(const std::string& wanted)
{
    QString directory = wanted.empty() ? qEnvironmentVariable("BURNLINE_HOME") : QString::fromStdString(wanted);
    const QDir own(QCoreApplication::applicationDirPath());
    const bool portable = own.exists(u"FLASHCFG.TXT"_qs) || own.exists(u"Burnline.ini"_qs);
    const bool named = !directory.isEmpty();
    if (!named)
        directory = portable ? own.path() : QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(directory);  // where this fails, the log can't be opened, and that is told
    // What is missing in a directory that somebody named is better told than made up for.
    if (!named) PutConfigurationIfMissing(directory);
    return QDir::toNativeSeparators(QFileInfo(directory).absoluteFilePath()).toStdString();
}

HostComputer::HostComputer(std::string directory, CaughtFailure& caught, Ports& ports, SerialLink& link)
    : directory_(std::move(directory)), caught_(caught), ports_(ports), link_(link)
{
    for (QTimer* timer : {&timer1_, &timer2_}) timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer1_, &QTimer::timeout, [this] { caught_.Run(Timer1_Timer); });
    QObject::connect(&timer2_, &QTimer::timeout, [this] { caught_.Run(Timer2_Timer); });
    sinceDispatch_.start();
}

// --- time and events -------------------------------------------------------------------------------------------------

/// Timer2 only counts a delay down, so it sleeps while there is none.
void HostComputer::FollowTimers()
{
    FollowTimer(timer1_, frmWizard.Timer1.Enabled && frmWizard.Timer1.Value > 0, frmWizard.Timer1.Value);
    const bool counts = frmWizard.Timer2.Enabled && frmWizard.Timer2.Value > 0 && Session.link.iDelayTicks > 0;
    FollowTimer(timer2_, counts, frmWizard.Timer2.Value);
}

void HostComputer::Dispatch(QEventLoop::ProcessEventsFlags flags)
{
    QCoreApplication::processEvents(flags);
    sinceDispatch_.restart();
    caught_.Raise();
}

void HostComputer::DoEvents()
{
    constexpr qint64 apartMs = 5;  // it is called for each line of a file that is tested
    if (sinceDispatch_.elapsed() < apartMs) return;
    FollowTimers();
    ShowOverdue();
    Dispatch(QEventLoop::AllEvents);
}

void HostComputer::WaitForEvent()
{
    FollowTimers();
    // The core has had its turn: what it had to send is on its way, and showing costs the antenna nothing.
    ShowInTurn();
    link_.Arm();
    Dispatch(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void HostComputer::WaitForUser()
{
    PrepareQuestion();
    Dispatch(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void HostComputer::PrepareQuestion()
{
    FollowTimers();
    Show();
    link_.ArmForOutput();
}

void HostComputer::Sleep(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

double HostComputer::Seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::string HostComputer::DateAndTime()
{
    return QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_qs).toStdString();
}

std::string HostComputer::Date() { return QDate::currentDate().toString(Qt::ISODate).toStdString(); }

// --- the machine -----------------------------------------------------------------------------------------------------

std::string HostComputer::ProgramDirectory() { return directory_; }

bool HostComputer::PrevInstance()
{
    // A directory that can't be written holds no lock of anybody; that it can't is told when the log is opened.
    return !lock_.Take(PathOf(directory_) / "Burnline.lock");
}

void HostComputer::SetHighPriority(bool high) { PreferThisProcess(high); }

int HostComputer::TestCommPort(int port) { return ports_.DeviceOf(port).empty() ? PORT_MISSING : link_.TestPort(port); }

PortInfo HostComputer::DescribeCommPort(int port) { return ports_.Describe(port); }

std::string HostComputer::Revision() { return BURNLINE_REVISION; }
