// Boards from the first word to the exit code, by the real program.

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>
#include <regex>
#include <sstream>

#include "tests/console/BenchConsole.h"
#include "tests/desktop/WizardProcess.h"

namespace {

using Parameters = std::map<std::string, std::string>;

/// Those that the bench's configuration preserves.
Parameters Preserved(const AntennaProcess::Holdings& held)
{
    Parameters preserved;
    for (const auto& [name, value] : held.parameters)
        if (name.starts_with("BIASAZ") || name == "SATINSTALL" || name == "DEW") preserved[name] = value;
    return preserved;
}

/// A log without what differs from run to run: times, and the directory.
std::string Comparable(const Bench& bench)
{
    const std::regex differing(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d|Installed in: \S+)");
    return std::regex_replace(bench.Log(), differing, "...");
}

void FlashByWindow(Bench& bench)
{
    bench.StartAntenna(0);
    WizardProcess wizard(bench.home.Path(""));
    wizard.WaitForText("lblCommPortStatus", "Waiting on COM7");
    bench.antenna->Do("say Hello");
    wizard.WaitForText("lblCommPortStatus", "COM port: COM7 ready");
    for (const char* pressed : {"cmdNav_2", "cmdNav_2", "optBoardToFlash_0", "cmdNav_2"}) wizard.Click(pressed);
    wizard.WaitForText("lblBoardVersion", "Orbimaster NEVA", 20);
    for (const char* pressed : {"cmdNav_2", "cmdNav_2"}) wizard.Click(pressed);
    wizard.WaitForText("lblFlashStatus_0", "PLEASE PRESS NEXT", 60);
    wizard.Click("cmdNav_2");
    wizard.WaitForText("lblFlashStatus_1", "Please power off the antenna");
    QThread::msleep(500);  // nobody is at the switch sooner; the antenna still stores the last line
    bench.antenna->Do("power off");
    bench.antenna->Do("power on");
    wizard.AnswerBox("Parameter Upload Successful and antenna restarted", "OK", 60);
    for (const char* pressed : {"cmdNav_2", "cmdNav_3"}) {
        const Seen table = wizard.See("tblParameters");
        EXPECT_TRUE(table.visible && table.entries.starts_with("BIASAZ\n1.25\n1.25\nyes\n")) << table.entries;
        wizard.Click(pressed);
    }
    EXPECT_TRUE(wizard.EndsWithin(10));
}

void FlashByConsole(Bench& bench)
{
    bench.StartAntenna(0);
    const Parameters before = Preserved(bench.antenna->Dump(bench.home.Path("before")));
    EXPECT_EQ(before.size(), 3u);
    bench.StartUnattended({"--board", "Main board"});
    bench.Greet();
    bench.console->WaitFor("Erase done");
    Parameters erased = Preserved(bench.antenna->Dump(bench.home.Path("erased")));
    for (const auto& [name, value] : before) EXPECT_NE(erased[name], value) << name << " survives by itself";
    bench.ExpectEnd(0);
    const auto after = bench.antenna->Dump(bench.home.Path("after"));
    EXPECT_EQ(Preserved(after), before);
    EXPECT_TRUE(after.memory == JudgedImage(bench.home.Path("F61118AB.HEX")));
}

/// Each line is an object that names its event; these come in this order, and the last one holds the exit code.
void ExpectEvents(const std::string& output, const Words& expected)
{
    std::istringstream lines(output);
    std::string events;
    QJsonObject object;
    for (std::string line; std::getline(lines, line);) {
        object = QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
        EXPECT_TRUE(object["event"].isString()) << line;
        events += object["event"].toString().toStdString() + "\n";
    }
    EXPECT_EQ(FirstOutOfOrder(events, expected), "") << output;
    EXPECT_EQ(object["event"].toString(), "end");
    EXPECT_EQ(object["exitCode"].toInt(-1), 0);
}

/// Nothing comes from this board before its power does.
void FlashLines(Bench& bench)
{
    bench.StartAntenna(14);
    bench.StartUnattended({"--board", "Motiquad ADCU", "--json"});
    bench.ExpectEnd(0);
    ExpectEvents(bench.console->Output(), {"port", "versions", "file", "progress", "end"});
    EXPECT_TRUE(bench.antenna->Dump(bench.home.Path("after")).memory == JudgedImage(bench.home.Path("F61300A.HEX")));
}

void FlashBlocks(Bench& bench)
{
    bench.StartAntenna(13, "BRIX MOTOR OLD");
    bench.StartUnattended({"--board", "13"});
    bench.ExpectEnd(0);
    const std::string held = bench.antenna->Dump(bench.home.Path("after")).memory;
    EXPECT_TRUE(held.substr(512, 1536) == bench.home.JudgedRecords("F61130A.S19").substr(512, 1536));
    EXPECT_TRUE(held.substr(6208) == bench.home.JudgedRecords("F61197A.S19").substr(6208, 65024 - 6208));
}

void FlashThreeParts(Bench& bench)
{
    bench.home.MakeRecords("F61350A.S19", 2000, 8320);
    bench.home.MakeRecords("F61340B.S19", 1500, 9000, "-header F61340B");
    bench.home.MakeRecords("F61357B.S19", 1200, 500, "-header F61357B");
    bench.StartAntenna(21);
    const std::string before = bench.antenna->Dump(bench.home.Path("before")).parameters["FECHITS1"];
    bench.StartUnattended({"--board", "RF board"});
    bench.Greet();
    bench.ExpectEnd(0);
    EXPECT_EQ(bench.antenna->Dump(bench.home.Path("after")).parameters["FECHITS1"], before);
    const std::pair<const char*, const char*> dumps[] = {
        {"memory.bin", "F61350A.S19"}, {"fpga.bin", "F61340B.S19"}, {"bapi.bin", "F61357B.S19"}};
    for (const auto& [dump, file] : dumps) {
        const std::string held = ReadAll(bench.home.Path("after") / dump);
        EXPECT_TRUE(held.size() > 1000 && held == bench.home.JudgedRecords(file).substr(0, held.size())) << dump;
    }
}

TEST(ConsoleFlash, flashes_boards_of_all_kinds_and_writes_the_windows_log)
{
    Bench window, console, lines, blocks, parts;
    Together({{"window", [&] { FlashByWindow(window); }},
              {"console", [&] { FlashByConsole(console); }},
              {"lines", [&] { FlashLines(lines); }},
              {"blocks", [&] { FlashBlocks(blocks); }},
              {"parts", [&] { FlashThreeParts(parts); }}});
    EXPECT_EQ(Comparable(console), Comparable(window));
}

TEST(ConsoleFlash, leads_a_person_at_a_terminal_through_a_flash)
{
    Bench bench;
    bench.StartAntenna(14);
    bench.Start({}, On::Terminal);
    const auto answer = [&](const std::string& question, const std::string& line) {
        bench.console->WaitFor(question);
        bench.console->Type(line);
    };
    const auto cyclePowerWhenAsked = [&](const std::string& words) {
        bench.console->WaitFor(words);
        bench.antenna->Do("power off");
        bench.antenna->Do("power on");
    };
    answer("Serial port [1]:", "\n");
    cyclePowerWhenAsked("Nothing has come from the antenna yet. Switch it on");
    answer("Board [1]:", "tuna\n");
    answer("There is no entry \"tuna\".", "Motiquad\n");
    answer("Flash file [F61300A.HEX]:", "\n");
    bench.antenna->Do("fault slow 60");
    answer("Start the flash? Yes (Y), No (n)?", "\n");
    cyclePowerWhenAsked("*** Please cycle power to the antenna to reset. ***");
    answer("Flashing 4", "\x03");
    answer("OK (o), Cancel (C)?", "\n");
    bench.ExpectEnd(0);
    EXPECT_TRUE(bench.antenna->Dump(bench.home.Path("after")).memory == JudgedImage(bench.home.Path("F61300A.HEX")));

    const std::string time = R"(\d+:\d\d)";
    const std::regex progress(R"(\rFlashing \d+ %, \d+ bytes, \d+ bytes/s \(\d+ % of the line\), )" + time +
                              " so far, " + time + R"( left\x1b\[K)");
    std::istringstream lines(bench.console->Output());
    long most = 0;
    for (std::string line; std::getline(lines, line);)
        most = std::max<long>(most, std::distance(std::sregex_iterator(line.begin(), line.end(), progress), {}));
    EXPECT_GE(most, 10) << bench.console->Output();
    const std::regex lasting(R"(\rFlashing 100 %[^\r\n]*\r\n)");
    EXPECT_TRUE(std::regex_search(bench.console->Output(), lasting)) << bench.console->Output();
}

}  // namespace
