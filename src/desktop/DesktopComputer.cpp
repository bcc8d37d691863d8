#include "desktop/DesktopComputer.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QNetworkInformation>
#include <QNetworkInterface>
#include <QStandardPaths>
#include <algorithm>
#include <chrono>
#include <thread>

#include "desktop/Dialogs.h"
#include "desktop/Looks.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "platform/posix/PosixMachine.h"
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

bool IsOutward(const QNetworkInterface& link)
{
    const auto flags = link.flags();
    const bool up = flags.testFlag(QNetworkInterface::IsUp) && flags.testFlag(QNetworkInterface::IsRunning);
    return up && !flags.testFlag(QNetworkInterface::IsLoopBack) && !link.addressEntries().isEmpty();
}

/// A form that is in front of all others; however that ends, the window behind can be used again.
struct Modal {
    Modal(Form& shown, QWidget& its, Binder& painter) : form(shown), window(its), binder(painter)
    {
        window.setWindowModality(Qt::ApplicationModal);
        form.Visible = true;
    }
    ~Modal()
    {
        form.Visible = false;
        binder.Paint();
        window.setWindowModality(Qt::NonModal);
    }
    Form& form;
    QWidget& window;
    Binder& binder;
};

}  // namespace

std::string FindProgramDirectory()
{
    QString directory = qEnvironmentVariable("BURNLINE_HOME");
    const QDir own(QCoreApplication::applicationDirPath());
    const bool portable = own.exists(u"FLASHCFG.TXT"_qs) || own.exists(u"Burnline.ini"_qs);
    if (directory.isEmpty())
        directory = portable ? own.path() : QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(directory);  // where this fails, the log can't be opened, and that is told
    return QFileInfo(directory).absoluteFilePath().toStdString();
}

DesktopComputer::DesktopComputer(std::string directory, Binder& binder, CaughtFailure& caught, Ports& ports,
                                 PosixSerialControl& port)
    : directory_(std::move(directory)), binder_(binder), caught_(caught), ports_(ports), port_(port), watch_(port)
{
    for (QTimer* timer : {&timer1_, &timer2_}) timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer1_, &QTimer::timeout, [this] { caught_.Run(Timer1_Timer); });
    QObject::connect(&timer2_, &QTimer::timeout, [this] { caught_.Run(Timer2_Timer); });
    sinceDispatch_.start();
}

// --- time and events -------------------------------------------------------------------------------------------------

/// Timer2 only counts a delay down, so it sleeps while there is none.
void DesktopComputer::FollowTimers()
{
    FollowTimer(timer1_, frmWizard.Timer1.Enabled && frmWizard.Timer1.Value > 0, frmWizard.Timer1.Value);
    const bool counts = frmWizard.Timer2.Enabled && frmWizard.Timer2.Value > 0 && Session.iDelayTicks > 0;
    FollowTimer(timer2_, counts, frmWizard.Timer2.Value);
}

void DesktopComputer::DoEvents()
{
    constexpr qint64 apartMs = 5;  // it is called for each line of a file that is tested
    if (sinceDispatch_.elapsed() < apartMs) return;
    FollowTimers();
    binder_.PaintOverdue();
    Dispatch();
}

void DesktopComputer::Dispatch()
{
    QCoreApplication::processEvents();
    sinceDispatch_.restart();
    caught_.Raise();
}

void DesktopComputer::WaitForEvent()
{
    FollowTimers();
    // The core has had its turn: what it had to send is on its way, and painting costs the antenna nothing.
    binder_.PaintInTurn();
    watch_.Arm();
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    sinceDispatch_.restart();
    caught_.Raise();
}

void DesktopComputer::WaitForUser()
{
    FollowTimers();
    binder_.Paint();
    watch_.ArmForOutput();
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    caught_.Raise();
}

void DesktopComputer::Sleep(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

double DesktopComputer::Seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::string DesktopComputer::DateAndTime()
{
    return QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_qs).toStdString();
}

std::string DesktopComputer::Date() { return QDate::currentDate().toString(Qt::ISODate).toStdString(); }

// --- the user --------------------------------------------------------------------------------------------------------

/// What the core changed ahead of a dialog is seen behind it; while it is open nobody reads the port.
QWidget* DesktopComputer::PrepareDialog()
{
    FollowTimers();
    binder_.Paint();
    watch_.ArmForOutput();
    QWidget* window = binder_.WindowOf(frmWizard.Self);
    return window && window->isVisible() ? window : nullptr;
}

Answer DesktopComputer::MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title)
{
    return AskUser(PrepareDialog(), words, buttons, icon, title);
}

void DesktopComputer::ShowModal(Form& form)
{
    PrepareDialog();
    QWidget* window = binder_.WindowOf(form);
    if (!window) return;
    const Modal modal(form, *window, binder_);
    while (form.Visible && !IsExitRequested()) WaitForUser();
}

std::vector<std::string> DesktopComputer::OpenDialog(const FileDialog& dialog)
{
    return AskForFiles(PrepareDialog(), dialog);
}

std::optional<std::string> DesktopComputer::SaveDialog(const FileDialog& dialog)
{
    return AskWhereToSave(PrepareDialog(), dialog);
}

void DesktopComputer::ShowHelp(int topic, const std::string& section)
{
    if (!help_) help_ = std::make_unique<HelpWindow>(HelpWindow::FindFolder(Words(directory_)));
    help_->ShowTopic(topic, Words(section));
}

void DesktopComputer::CloseHelp() { help_.reset(); }

// --- the machine -----------------------------------------------------------------------------------------------------

std::string DesktopComputer::ProgramDirectory() { return directory_; }

bool DesktopComputer::PrevInstance()
{
    lock_ = std::make_unique<QLockFile>(QString::fromStdString(directory_) + u"/Burnline.lock"_qs);
    lock_->setStaleLockTime(0);  // however old: only the lock of a dead process gives way
    // A directory that can't be written holds no lock of anybody; that it can't is told when the log is opened.
    return !lock_->tryLock(0) && lock_->error() == QLockFile::LockFailedError;
}

void DesktopComputer::SetHighPriority(bool high)
{
    constexpr int steps = 10;
    RaiseNiceness(high ? steps : 0);
}

bool DesktopComputer::InternetConnected()
{
    // Where the system tells of its networks it knows best; elsewhere a network with an address is taken for a way out.
    using Information = QNetworkInformation;
    const bool told = Information::loadBackendByFeatures(Information::Feature::Reachability);
    if (told && Information::instance()->reachability() == Information::Reachability::Disconnected) return false;
    const auto links = QNetworkInterface::allInterfaces();
    return std::any_of(links.begin(), links.end(), IsOutward);
}

int DesktopComputer::TestCommPort(int port)
{
    return ports_.DeviceOf(port).empty() ? PORT_MISSING : port_.TestPort(port);
}

PortInfo DesktopComputer::DescribeCommPort(int port) { return ports_.Describe(port); }

std::string DesktopComputer::Revision() { return BURNLINE_REVISION; }
