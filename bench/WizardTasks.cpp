// The real window, event loop and serial port, with the user's hand replaced by a timer.

#include <QApplication>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>

#include "bench/Wizard.h"
#include "desktop/Desktop.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "forms/frmWizard.h"
#include "session/Session.h"
#include "session/Wizard.h"

namespace {

void Tell(const std::string& name, double value) { std::printf("%s %.0f\n", name.c_str(), value); }

double PeakMemoryOfThisProcess()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes) return kilobytes;
    }
    return 0;
}

void End()
{
    Tell("memory", PeakMemoryOfThisProcess());
    CleanUpForShutdown(2);
}

// --- start -----------------------------------------------------------------------------------------------------------

/// Waits for the first painting of a window and, behind it, for the turn of the event loop that shows all of it.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(QWidget& window) { window.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint) return false;
        watched->removeEventFilter(this);
        QTimer::singleShot(0, this, [] {
            using namespace std::chrono;
            Tell("painted", static_cast<double>(steady_clock::now().time_since_epoch() / nanoseconds(1)));
            End();
        });
        return false;
    }
};

// --- flash and check -------------------------------------------------------------------------------------------------

/// The board of a transfer, and what STEP_4 would have found out about it.
struct Plan {
    const char* task;
    int board;
    const char* signOn;
    const char* command;
    const char* file;
};
constexpr Plan plans[] = {
    {"flash", 2, "CORA BOOT READY", "PGM_CORA", "BENCH.HEX"},
    {"blocks", 20, "RF6 BOOT READY", "PGM_RF6", "BENCH.S19"},
    {"records", 21, "RF7 BOOT READY", "PGM_RF7", "BENCH.S19"},
};
const Plan* plan = nullptr;

/// STEP_5, as if STEP_4 had just been left; without parameters, so that the reset comes at once.
void StartTransfer()
{
    FlashPlan planned;
    planned.iBoardType = plan->board;
    planned.sBoardSignOn = plan->signOn;
    planned.stages.front() = {"", "", "", plan->command, plan->file};
    planned.sNewRFBootloaderFile = "BOOT.S19";
    planned.bSkipParams = true;
    Session.plan = planned;
    SetStep(STEP_5);
}

void FlashStep()
{
    static bool started = false;
    if (Session.link.iCommID <= 0) return;
    if (!started) {
        started = true;
        Guarded("bench", StartTransfer);
    } else if (Session.flash.iFlashPhase != FLASH_RUNNING) {
        End();
    }
}

/// A test of a flash file as STEP_5 runs it, with its page in view.
struct Check {
    const char* task;
    void (*run)();
};
const Check checks[] = {
    {"check", [] { CheckHexFile("BENCH.HEX"); }},
    {"check19", [] { CheckS19File("BENCH.S19", 0, 21, S19File::Software); }},
    {"images", [] { CheckS19File("BENCH.S19", 0, 20, S19File::Software); }},
};
const Check* check = nullptr;

void CheckStep()
{
    using namespace std::chrono;
    static int runs = 0;
    if (!frmWizard.fraStep[STEP_5].Visible) {
        frmWizard.fraStep[STEP_5].Visible = true;
        return;
    }
    Session.flash.bFlashFileBad = false;
    const auto start = steady_clock::now();
    check->run();
    const auto taken = steady_clock::now() - start;
    if (!Session.flash.bFlashFileBad) Tell("check" + std::to_string(runs), duration<double, std::micro>(taken).count());
    if (++runs == 10) End();
}

}  // namespace

int RunWizard(const QString& task, int argc, char** argv)
{
    QApplication::setStyle(u"Fusion"_qs);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Desktop desktop;
    FirstPaint paint(desktop.Window());
    QTimer hand;
    if (task == u"start") return desktop.Run(), 0;
    desktop.Window().removeEventFilter(&paint);
    if (task.startsWith(u"terminal:")) return WatchTerminal(desktop, task.mid(9).toUInt()), 0;
    for (const Plan& each : plans)
        if (task == QLatin1String(each.task)) plan = &each;
    for (const Check& each : checks)
        if (task == QLatin1String(each.task)) check = &each;
    if (plan == nullptr && check == nullptr) return 1;
    QObject::connect(&hand, &QTimer::timeout, plan != nullptr ? FlashStep : CheckStep);
    hand.start(100);
    desktop.Run();
    return 0;
}
