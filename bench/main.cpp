// burnline-bench: figures of this machine beside their limits. It ends with the number of limits missed.

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>

#include "bench/Bench.h"
#include "bench/Wizard.h"

namespace {

struct Measurement {
    const char* name;
    std::function<void(Report&)> run;
};

/// In this order: the memory is that of the wizards before it.
const Measurement measurements[] = {
    {"start", MeasureStart},
    {"file", MeasureFileTest},
    {"9600", [](Report& report) { MeasureTransfer(report, 9600, 16); }},
    {"38400", [](Report& report) { MeasureTransfer(report, 38400, 32); }},
    {"blocks", MeasureBlocks},
    {"records9600", [](Report& report) { MeasureRecords(report, 9600, 12); }},
    {"records38400", [](Report& report) { MeasureRecords(report, 38400, 32); }},
    {"terminal", MeasureTerminalAtLineSpeed},
    {"flood", MeasureTerminalAtFullSpeed},
    {"memory", MeasureMemory},
    {"idle", MeasureIdle},
};

/// Whoever reads the figures wants to know what else the machine was doing.
void PrintLoad()
{
    double load[1] = {};
    if (getloadavg(load, 1) == 1)
        std::printf("%u processors, load %.2f\n", std::thread::hardware_concurrency(), load[0]);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && QString::fromLocal8Bit(argv[1]) == u"--wizard")
        return RunWizard(QString::fromLocal8Bit(argv[2]), argc, argv);

    const QCoreApplication application(argc, argv);
    const QStringList wanted = QCoreApplication::arguments().mid(1);
    PrintLoad();
    Report report;
    int run = 0;
    for (const Measurement& measurement : measurements) {
        if (!wanted.isEmpty() && !wanted.contains(QString::fromLatin1(measurement.name))) continue;
        measurement.run(report);
        ++run;
    }
    if (run == 0) {
        std::fputs(
            "usage: burnline-bench [start] [file] [9600] [38400] [blocks] [records9600] [records38400] "
            "[terminal] [flood] [memory] [idle]\n",
            stderr);
        return 100;
    }
    return report.Missed();
}
