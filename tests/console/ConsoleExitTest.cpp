// What the exit codes say of the antenna, each from its own cause.

#include <gtest/gtest.h>

#include "tests/console/BenchConsole.h"
#include "tests/desktop/BarePort.h"

namespace {

/// The exit code of an unattended call that ends by itself.
void ExpectCode(Bench& bench, int exitCode, const Words& arguments, const std::string& told)
{
    SCOPED_TRACE(testing::PrintToString(arguments));
    Words all = arguments;
    all.push_back("--yes");
    bench.Start(all);
    EXPECT_EQ(bench.console->ExitCode(), exitCode) << bench.console->Output();
    EXPECT_NE(bench.console->Output().find(told), std::string::npos) << told << "\n" << bench.console->Output();
}

/// The command line, the program's directory and the port are judged ahead of everything.
void WithoutAntenna()
{
    Bench bench, second;
    ExpectCode(bench, 1, {"--colour"}, "Unknown option 'colour'");
    ExpectCode(bench, 1, {"COM7"}, "belongs to no option");
    ExpectCode(bench, 1, {"--identify", "--list-ports"}, "can't be asked for with another task");
    ExpectCode(bench, 1, {"--directory", "/nowhere/at/all"}, "There is no directory");
    ExpectCode(bench, 1, {"--board", "Toaster"}, "There is no board \"Toaster\"");
    ExpectCode(bench, 2, {"--port", "COM12"}, "used not found");
    ExpectCode(bench, 2, {"--port", "/dev/nothing-here"}, "There is no serial port /dev/nothing-here");
    BarePort other(bench.home.OtherLink());
    other.Take();
    ExpectCode(bench, 2, {"--port", "COM9"}, "COM Port Already in Use");
    other.Release();
    second.Start({"--port", "COM9", "--directory", bench.home.Path("").string()});
    second.console->WaitFor("Waiting on COM9");
    ExpectCode(bench, 2, {"--port", "COM9"}, "already running");
}

void AntennaOff()
{
    Bench bench;
    bench.StartAntenna(0);
    bench.antenna->Do("power off");
    ExpectCode(bench, 3, {"--board", "0"}, "Nothing has come from the antenna on COM7");
}

void OtherBoards()
{
    Bench bench;
    bench.StartAntenna(0);
    ExpectCode(bench, 3, {"--antenna", "QEL MAKO Main Board"}, "This is \"QEL NEVA Main Board\"");
    bench.Edit("FLASHCFG.TXT", "$Orbimaster NEVA$", "$Orbimaster NOVA$");
    ExpectCode(bench, 3, {"--board", "0"}, "Selected board configuration not found");
    bench.ExpectState({"software=yes", "bytes=0"});
}

void BadFiles()
{
    Bench bench;
    bench.StartAntenna(12);
    ExpectCode(bench, 4, {"--board", "12", "--file", "F61195Z.HEX"}, "There is no file F61195Z.HEX");
    std::string records = bench.home.Bytes("F61195A.HEX");
    const std::size_t second = records.find('\n') + 1, third = records.find('\n', second) + 1;
    const std::size_t fourth = records.find('\n', third) + 1;
    const std::string odd = std::string(records).insert(fourth, records, second, third - second);
    WriteAll(bench.home.Path("F61195A.HEX"), odd);
    ExpectCode(bench, 4, {"--board", "12"}, "its records go backward");
    ExpectCode(bench, 4, {"--check", "F61195A.HEX"}, "its records go backward");
    ExpectCode(bench, 0, {"--check", "F61195A.HEX", "--accept-warnings"}, "\nSHA-256 ");
    records[300] = records[300] == '0' ? '1' : '0';
    WriteAll(bench.home.Path("F61195A.HEX"), records);
    ExpectCode(bench, 4, {"--board", "12"}, "missing, corrupt or odd");
    std::filesystem::remove(bench.home.Path("FLASHCFG.TXT"));
    ExpectCode(bench, 4, {"--board", "12"}, "Configuration File Not Found");
    const std::string heard = bench.antenna->Heard();
    EXPECT_EQ(heard.find_first_not_of("\\rn"), std::string::npos) << heard;  // Enter, and nothing else
}

/// The antenna's own faults.
struct Fault {
    std::string name;
    int board;
    std::string unit, fault;
    Words arguments;
    int exitCode;
    Words told, state;
};

// clang-format off
const std::vector<Fault> faults{
    {"parameters unread", 20, "RF6 LM", "mute FECHITS2 always", {"--model", "none", "--board", "RF board"}, 5,
     {"The antenna has not told FECHITS2", "CANNOT CONTINUE FLASH", "Nothing was erased"}, {"software=yes", "bytes=0"}},
    {"refusal", 12, "", "refuse 5 always", {"--board", "BRIX Antenna Main board"}, 6,
     {"refused a line 6 times", "(Retry)", "(Retry)", "(Cancel)", "boot loader"}, {"software=no", "lines=4"}},
    {"silence", 13, "", "silent 40 always", {"--board", "13"}, 6, {"is inoperative"}, {"software=no", "lines=39"}},
};
// clang-format on

void Fail(const Fault& fault)
{
    Bench bench;
    bench.StartAntenna(fault.board, fault.unit);
    bench.antenna->Do("fault " + fault.fault);
    bench.StartUnattended(fault.arguments);
    bench.Greet();
    bench.ExpectEnd(fault.exitCode);
    EXPECT_EQ(FirstOutOfOrder(bench.console->Output(), fault.told), "") << bench.console->Output();
    bench.ExpectState(fault.state);
}

void ParametersOut()
{
    Bench bench;
    bench.StartAntenna(0);
    bench.StartUnattended({"--board", "0", "--json"});
    bench.Greet();
    bench.console->WaitFor("Erase done");
    bench.antenna->Do("fault mute SATINSTALL always");
    bench.ExpectEnd(7);
    const Words left{
        R"("after":"1.25","before":"1.25","equal":true,"event":"parameter","name":"BIASAZ")",
        R"("after":"not told","before":"DSS_101,DSS_119","equal":false,"event":"parameter","name":"SATINSTALL")",
        R"("after":"QEL Orbimaster NEVA Ver 4.07","before":"QEL Orbimaster NEVA Ver 4.07","event":"version")",
        "if it is lost, enter SATINSTALL,DSS_101,DSS_119",
        "is not known to hold all that it held before",
        R"("exitCode":7)"};
    EXPECT_EQ(FirstOutOfOrder(bench.console->Output(), left), "") << bench.console->Output();
    bench.ExpectState({"software=yes"});
}

/// At the last question the answer is No, or there is none.
void Declined()
{
    Bench bench;
    bench.StartAntenna(14);
    for (const bool answered : {true, false}) {
        bench.Start({"--port", "COM7", "--board", "14", "--file", "F61300A.HEX"});
        bench.Greet();
        bench.console->WaitFor("Start the flash?");
        answered ? bench.console->Type("n\n") : bench.console->HangUp();
        bench.ExpectEnd(8);
    }
    bench.ExpectState({"software=yes", "bytes=0"});
}

TEST(ConsoleExit, tells_what_has_become_of_the_antenna)
{
    std::vector<std::pair<std::string, std::function<void()>>> cases{
        {"without antenna", WithoutAntenna}, {"antenna off", AntennaOff},
        {"other boards", OtherBoards},       {"bad files", BadFiles},
        {"parameters out", ParametersOut},   {"declined", Declined}};
    for (const Fault& fault : faults) cases.emplace_back(fault.name, [&] { Fail(fault); });
    Together(cases);
}

}  // namespace
