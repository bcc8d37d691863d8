// What the program costs the computer: at its start, while it waits, and how much memory.

#include <QFile>
#include <QString>
#include <QThread>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "bench/Bench.h"
#include "bench/BenchAntenna.h"
#include "bench/Wizard.h"

namespace fs = std::filesystem;

namespace {

struct Usage {
    double wakeUps = 0;     // voluntary context switches of all threads
    double cpuSeconds = 0;  // of all threads
};

Usage UsageOf(qint64 process)
{
    Usage usage;
    for (const fs::directory_entry& thread : fs::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        double ns = 0;
        if (std::ifstream(thread.path() / "schedstat") >> ns) usage.cpuSeconds += ns * 1e-9;
        std::ifstream status(thread.path() / "status");
        for (std::string word; status >> word;) {
            double count = 0;
            if (word == "voluntary_ctxt_switches:" && status >> count) usage.wakeUps += count;
        }
    }
    return usage;
}

}  // namespace

void MeasureIdle(Report& report)
{
    constexpr int seconds = 30;
    BenchAntenna antenna(2, "CORA", 9600);
    const Home home(antenna.Path());
    QProcess wizard;
    Prepare(wizard, home, u"burnline"_qs, {});
    wizard.start(QIODevice::ReadOnly);
    if (!wizard.waitForStarted()) return report.NotMeasured("idle", "the program burnline isn't there");
    const bool software = antenna.AwaitSoftware();
    QThread::sleep(3);  // what the antenna said at its start is shown
    const Usage before = UsageOf(wizard.processId());
    QThread::sleep(software ? seconds : 0);
    const Usage after = UsageOf(wizard.processId());
    const bool ran = software && !wizard.waitForFinished(1);
    wizard.terminate();
    wizard.waitForFinished();
    if (!ran) return report.NotMeasured("idle", "the program doesn't run, or the antenna doesn't");
    const std::string note = "over " + std::to_string(seconds) + " s, antenna connected";
    report.AtMost("idle: wake-ups", (after.wakeUps - before.wakeUps) / seconds, 15, "per s", note);
    report.AtMost("idle: processor", (after.cpuSeconds - before.cpuSeconds) / seconds * 100, 0.5, "%", note);
}

void MeasureStart(Report& report)
{
    using namespace std::chrono;
    BenchAntenna antenna(2, "CORA", 9600);
    const Home home(antenna.Path());
    std::vector<double> times;
    for (int run = 0; run < 7; ++run) {
        const auto start = steady_clock::now().time_since_epoch() / nanoseconds(1);
        const auto figures = RunTask(home, u"start"_qs, 20);
        if (const auto painted = figures.find("painted"); painted != figures.end())
            times.push_back((painted->second - static_cast<double>(start)) * 1e-9);
    }
    if (times.empty()) return report.NotMeasured("start to painted window", "the window was never painted");
    report.AtMost("start to painted window", Quantile(times, 0.5), 0.5, "s", "median of 7 runs, " + Spread(times, 2));
}

void MeasureMemory(Report& report)
{
    if (PeakMemory() == 0) return report.NotMeasured("peak memory", "no wizard came to its end");
    report.AtMost("peak memory", PeakMemory() / 1024, 90, "MB", "the most of all runs above");
}
