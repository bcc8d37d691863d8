#include <QString>

#include "bench/Bench.h"
#include "bench/BenchAntenna.h"
#include "bench/Wizard.h"

void MeasureTransfer(Report& report, int baud, int kilobytes)
{
    const std::string at = ", " + std::to_string(baud) + " baud";
    const double share = baud == 38400 ? 91 : 97;
    BenchAntenna antenna(2, "CORA", baud);
    const Home home(antenna.Path(), baud);
    const int lines = home.MakeHexFile(u"BENCH.HEX"_qs, kilobytes) - 1;  // the end record isn't sent
    if (!antenna.AwaitSoftware()) return report.NotMeasured("transfer" + at, "the antenna doesn't start");
    RunTask(home, u"flash"_qs, 120);
    const BenchAntenna::Transfer seen = antenna.Finish();

    if (seen.lines != lines || seen.refused > 0) {
        report.NotMeasured("transfer" + at, std::to_string(seen.lines) + " of " + std::to_string(lines) +
                                                " lines taken, " + std::to_string(seen.refused) + " refused");
        return;
    }
    const std::string note = std::to_string(lines) + " lines";
    report.AtLeast("wire's time used" + at, seen.idealSeconds / seen.seconds * 100, share, "%", note);
    report.AtMost("\"$\" to next line" + at + ", median", Quantile(seen.turnArounds, 0.5), 1.5, "ms", note);
    report.AtMost("\"$\" to next line" + at + ", 99 %", Quantile(seen.turnArounds, 0.99), 3, "ms",
                  note + ", " + Spread(seen.turnArounds, 2));
}

void MeasureBlocks(Report& report)
{
    constexpr int blocks = 919;  // of the main leg
    BenchAntenna antenna(20, "RF6", 9600);
    const Home home(antenna.Path());
    home.MakeS19File(u"BENCH.S19"_qs, 57, 6208);
    home.MakeS19File(u"BOOT.S19"_qs, 4, 128);
    if (!antenna.AwaitSoftware()) return report.NotMeasured("blocks", "the antenna doesn't start");
    antenna.SignOnAgainAndAgain();
    RunTask(home, u"blocks"_qs, 180);
    const BenchAntenna::Transfer seen = antenna.Finish();
    if (seen.lines != blocks) return report.NotMeasured("blocks", std::to_string(seen.lines) + " blocks taken");
    report.AtLeast("wire's time used by blocks, 9600 baud", seen.idealSeconds / seen.seconds * 100, 95, "%",
                   std::to_string(blocks) + " blocks");
}

void MeasureRecords(Report& report, int baud, int kilobytes)
{
    const std::string name = "wire's time used by records, " + std::to_string(baud) + " baud";
    BenchAntenna antenna(21, "RF7", 9600);  // the loader signs on at 9600 in any case
    const Home home(antenna.Path(), 9600, baud == 38400);
    const int lines = home.MakeS19File(u"BENCH.S19"_qs, kilobytes, 8320);
    if (!antenna.AwaitSoftware()) return report.NotMeasured(name, "the antenna doesn't start");
    antenna.SignOnAgainAndAgain();
    RunTask(home, u"records"_qs, 180);
    const BenchAntenna::Transfer seen = antenna.Finish();
    if (seen.lines != lines) return report.NotMeasured(name, std::to_string(seen.lines) + " records taken");
    report.AtLeast(name, seen.idealSeconds / seen.seconds * 100, 95, "%", std::to_string(lines) + " records");
}
