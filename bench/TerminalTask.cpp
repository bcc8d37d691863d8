// What a flood of text costs the wizard in this process.

#include <QEvent>
#include <QFile>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "bench/Wizard.h"
#include "desktop/Desktop.h"
#include "desktop/Looks.h"
#include "display/Display.h"
#include "forms/frmWizard.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "simulator/Flood.h"

namespace {

double Microseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) * 1e-3;
}

/// Looks on every five milliseconds. What keeps it longer keeps the user's keys and clicks as long, too.
class TerminalWatch : public QObject {
public:
    TerminalWatch(Desktop& desktop, std::size_t bytes) : desktop_(desktop), text_(sim::FloodText(bytes))
    {
        constexpr std::size_t edge = 24;
        tail_ = text_.substr(text_.size() - edge);
        desktop.Window().findChild<QPlainTextEdit*>("Text1")->viewport()->installEventFilter(this);
        pulse_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&pulse_, &QTimer::timeout, [this] { Look(); });
        pulse_.start(pulseMs);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (phase_ == Phase::Flooded && event->type() == QEvent::Paint) ++paints_;
        return false;
    }

private:
    enum class Phase { Waiting, Asked, Flooded };
    static constexpr int pulseMs = 5;
    static constexpr qint64 begun = 500;  // bytes in the log, more than an answer

    void Look()
    {
        switch (phase_) {
        case Phase::Waiting: return Begin();
        case Phase::Asked:
            // The text itself may have passed through the terminal and be gone again.
            if (LogSize() < askedAt_ + begun) return;
            phase_ = Phase::Flooded;
            startWall_ = lastWall_ = Microseconds(CLOCK_MONOTONIC);
            startCpu_ = lastCpu_ = Microseconds(CLOCK_PROCESS_CPUTIME_ID);
            return;
        case Phase::Flooded: return Note();
        }
    }

    /// The antenna hears that somebody is there, and begins.
    void Begin()
    {
        if (!Session.link.bPortReady && ++patience_ * pulseMs < readyMs) return;
        SetStep(STEP_DIAGNOSTICS);
        phase_ = Phase::Asked;
        askedAt_ = LogSize();
        MSComm1->Output("\n");
    }

    void Note()
    {
        const double wall = Microseconds(CLOCK_MONOTONIC), cpu = Microseconds(CLOCK_PROCESS_CPUTIME_ID);
        if (wall - lastWall_ > longest_) {
            longest_ = wall - lastWall_;
            longestCpu_ = cpu - lastCpu_;
        }
        lastWall_ = wall;
        lastCpu_ = cpu;
        most_ = std::max({most_, frmWizard.Text1.Text().size(), frmWizard.sPausedOutput.size()});
        if (pauses_ < std::size(pauseAt)) PressPause();
        if (frmWizard.Text1.Text().ends_with(tail_) && --rest_ == 0) End();
    }

    /// Pressed and released, again and again.
    void PressPause()
    {
        const double share = static_cast<double>(LogSize()) / static_cast<double>(text_.size());
        if (share < pauseAt[pauses_]) return;
        ++pauses_;
        if (auto* button = desktop_.Window().findChild<QPushButton*>("cmdPauseOrResume")) button->click();
    }

    static qint64 LogSize() { return QFile(LogPath()).size(); }
    static QString LogPath() { return qEnvironmentVariable("BURNLINE_HOME") + u"/BNL.LOG"_qs; }

    void End()
    {
        pulse_.stop();
        std::printf("wall %.0f\ncpu %.0f\n", lastWall_ - startWall_, lastCpu_ - startCpu_);
        std::printf("longest %.0f\nlongestcpu %.0f\ntext %zu\n", longest_, longestCpu_, most_);
        std::printf("paints %d\n", paints_);
        QFile log(LogPath());
        const bool whole = log.open(QIODevice::ReadOnly) && log.readAll().contains(QByteArray::fromStdString(text_));
        std::printf("log %zu\n", whole && pauses_ == std::size(pauseAt) ? text_.size() : 0);
        CleanUpForShutdown(2);
    }

    static constexpr int restMs = 300;  // behind the last byte: what was put off is painted
    static constexpr int readyMs = 3000;
    static constexpr double pauseAt[] = {0.2, 0.4, 0.6, 0.7};  // shares of the flood
    Desktop& desktop_;
    const std::string text_;
    std::string tail_;
    QTimer pulse_;
    Phase phase_ = Phase::Waiting;
    int paints_ = 0, patience_ = 0, rest_ = restMs / pulseMs;
    std::size_t pauses_ = 0, most_ = 0;
    qint64 askedAt_ = 0;
    double startWall_ = 0, startCpu_ = 0, lastWall_ = 0, lastCpu_ = 0, longest_ = 0, longestCpu_ = 0;
};

}  // namespace

void WatchTerminal(Desktop& desktop, std::size_t bytes)
{
    TerminalWatch watch(desktop, bytes);
    desktop.Run();
}
