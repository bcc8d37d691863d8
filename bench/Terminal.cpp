// The antenna prints and prints while the window is open.

#include <QString>

#include "bench/Bench.h"
#include "bench/BenchAntenna.h"
#include "bench/Wizard.h"

namespace {

// A text that is above the bound is cleared by the next piece.
constexpr double mostText = 28672 + 1024;
constexpr double longestFrameMs = 100;

std::string Whole(double number) { return std::to_string(static_cast<long>(number + 0.5)); }

/// False, and said so, when the measurement didn't come to its end.
bool ReportFlood(Report& report, const std::string& name, std::size_t bytes, std::map<std::string, double>& seen)
{
    if (seen.find("longest") == seen.end()) {
        report.NotMeasured(name, "the flood didn't come to its end");
        return false;
    }
    report.AtMost(name + ": longest frame", seen["longest"] / 1000, longestFrameMs, "ms",
                  Whole(seen["longestcpu"]) + " us of it on the processor, of " + Whole(seen["paints"]) + " paintings");
    report.AtMost(name + ": longest text", seen["text"], mostText, "characters",
                  Whole(seen["wall"] / 1000) + " ms, the pause pressed and released");
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
    antenna.FloodOnLineFeed(bytes, BenchAntenna::Pace::OfTheLine);
    auto seen = RunTask(home, u"terminal:%1"_qs.arg(bytes), 60);
    if (!ReportFlood(report, "terminal, 115200 baud", bytes, seen)) return;
    report.AtMost("terminal, 115200 baud: processor", seen["cpu"] / seen["wall"] * 100, 30, "% of one",
                  "over " + Whole(seen["wall"] / 1e6) + " s");
}

void MeasureTerminalAtFullSpeed(Report& report)
{
    constexpr std::size_t bytes = 4 << 20;
    BenchAntenna antenna(2, "CORA", 38400);
    const Home home(antenna.Path(), 38400);
    if (!antenna.AwaitSoftware()) return report.NotMeasured("terminal", "the antenna doesn't start");
    antenna.FloodOnLineFeed(bytes, BenchAntenna::Pace::OfTheReader);
    auto seen = RunTask(home, u"terminal:%1"_qs.arg(bytes), 60);
    ReportFlood(report, "terminal, full speed", bytes, seen);
}
