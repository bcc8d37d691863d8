#include <QString>
#include <chrono>

#include "bench/Bench.h"
#include "bench/Wizard.h"

namespace {

/// In ms; below 0 when srec_info doesn't run or finds fault with the file.
double TimeOfSrecInfo(const QString& file, const QString& format)
{
    using namespace std::chrono;
    QProcess process;
    process.setProgram(u"srec_info"_qs);
    process.setArguments({file, format});
    const auto start = steady_clock::now();
    process.start(QIODevice::ReadOnly);
    const bool ended = process.waitForFinished(20000) && process.exitStatus() == QProcess::NormalExit;
    const auto taken = steady_clock::now() - start;
    return ended && process.exitCode() == 0 ? duration<double, std::milli>(taken).count() : -1;
}

/// The program's task beside `times` runs of srec_info on the same file.
void Compare(Report& report, const std::string& name, const Home& home, const QString& task, const QString& file,
             const QString& format, int times)
{
    std::vector<double> others, ours;
    for (int run = 0; run < 10; ++run)
        if (const double ms = TimeOfSrecInfo(home.Path(file), format); ms >= 0) others.push_back(ms * times);
    for (const auto& [figure, us] : RunTask(home, task, 60))
        if (figure.starts_with("check")) ours.push_back(us / 1000);
    if (others.empty()) return report.NotMeasured(name, "srec_info doesn't run");
    if (ours.empty()) return report.NotMeasured(name, "the program found fault with it");
    report.AtMost(name, Quantile(ours, 0.5), Quantile(others, 0.5), "ms",
                  "medians of 10 runs, " + Spread(ours, 1) + ", srec_info " + Spread(others, 1));
}

}  // namespace

void MeasureFileTest(Report& report)
{
    const Home home;
    home.MakeHexFile(u"BENCH.HEX"_qs, 430);  // of data, which make a file of 1 MB
    Compare(report, "test of a 1 MB .HEX file", home, u"check"_qs, u"BENCH.HEX"_qs, u"-Intel"_qs, 1);
    home.MakeS19File(u"BENCH.S19"_qs, 840, 8320);
    Compare(report, "test of a 2 MB .S19 file", home, u"check19"_qs, u"BENCH.S19"_qs, u"-Motorola"_qs, 1);
    home.MakeS19File(u"BENCH.S19"_qs, 57, 6208);
    Compare(report, "image from 57 KB", home, u"images"_qs, u"BENCH.S19"_qs, u"-Motorola"_qs, 2);
}
