// The antenna prints and prints while the window is open.

#include <QString>

#include "bench/Bench.h"
#include "bench/BenchAntenna.h"
#include "bench/Wizard.h"

namespace {

// A text that is above the bound is cleared by the next piece, and the port gives 64 KB and a read's size at most.
constexpr double mostText = 28672 + 65536 + 4096;
constexpr double longestFrameMs = 100;

/// False, and said so, when the measurement didn't come to its end.
bool ReportFlood(Report& report, const std::string& name, std::size_t bytes, std::map<std::string, double>& seen)
{
    if (seen.find("longest") == seen.end()) {
        report.NotMeasured(name, "the flood didn't come to its end");
        return false;
    }
    const std::string note = std::to_string(bytes) + " bytes in " + std::to_string(seen["wall"] / 1000) +
                             " ms, the pause pressed and released";
    report.AtMost(name + ": longest frame", seen["longest"] / 1000, longestFrameMs, "ms",
                  "of it " + std::to_string(seen["longestcpu"] / 1000) + " ms on the processor");
    report.AtMost(name + ": longest text", seen["text"], mostText, "characters", note);
    report.AtLeast(name + ": bytes in the log", seen["log"], static_cast<double>(bytes), "bytes", "whole and in order");
    return true;
}

}  // namespace

void MeasureTerminalAtLineSpeed(Report& report)
{
    constexpr int baud = 115200;
    constexpr std::size_t bytes = 20 * baud / 10;
    BenchAntenna antenna(2, "CORA", baud);
    const Home home(antenna.Path(), baud);
    if (!antenna.AwaitSoftware()) return report.NotMeasured("terminal", "the antenna doesn't start");
    antenna.FloodOnState(bytes, BenchAntenna::Pace::OfTheLine);
    auto seen = RunTask(home, u"terminal:%1"_qs.arg(bytes), 60);
    if (!ReportFlood(report, "terminal, 115200 baud", bytes, seen)) return;
    report.AtMost("terminal, 115200 baud: processor", seen["cpu"] / seen["wall"] * 100, 30, "% of one",
                  std::to_string(seen["wall"] / 1e6) + " s");
}

void MeasureTerminalAtFullSpeed(Report& report)
{
    constexpr std::size_t bytes = 1 << 20;
    BenchAntenna antenna(2, "CORA", 38400);
    const Home home(antenna.Path(), 38400);
    if (!antenna.AwaitSoftware()) return report.NotMeasured("terminal", "the antenna doesn't start");
    antenna.FloodOnState(bytes, BenchAntenna::Pace::OfTheReader);
    auto seen = RunTask(home, u"terminal:%1"_qs.arg(bytes), 60);
    if (ReportFlood(report, "terminal, full speed", bytes, seen)) return;
}
