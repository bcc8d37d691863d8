// Ctrl+C, SIGTERM and a closed terminal, wherever the session is.

#include <gtest/gtest.h>
#include <signal.h>

#include "tests/console/BenchConsole.h"

namespace {

struct Stage {
    std::string name;
    int board;
    bool supply;  // of its power; else nobody is at the switch
    Words arguments;
    std::string antenna;  // what it is told first
    std::string seen;     // on the console, once the stage is reached; it then lasts
    std::string left;     // what ends there has left behind; then Ctrl+C is a question first
};

const std::vector<Stage> stages{
    {"the start", 0, true, {}, "", "", ""},
    {"the first word", 0, false, {"--yes"}, "power off", "Nothing has come from the antenna", ""},
    {"the versions", 0, true, {"--board=0"}, "fault mute @VER always", "Getting Main board Version", ""},
    {"a question", 14, false, {"--port=7", "--board=14", "--file=F61300A.HEX"}, "", "Start the flash?", ""},
    {"the parameters", 0, true, {"--board=0"}, "fault mute BIASAZ always", "Getting antenna parameters", ""},
    {"the power switch", 14, false, {"--board=14", "--yes"}, "", "cycle power", ""},
    {"the transfer", 12, true, {"--board=12"}, "fault slow 700", "Flashing 1", "is inoperative"},
    {"the restore", 0, true, {"--board=0"}, "", "Waiting 30 seconds", "not all of its parameters"},
};

void Reach(Bench& bench, const Stage& stage, On on)
{
    bench.Edit("FLASHCFG.TXT", "POSTFLASH MAINBOARD$WAIT 1", "POSTFLASH MAINBOARD$WAIT 30");
    bench.StartAntenna(stage.board);
    bench.antenna->Do(stage.antenna);
    stage.supply ? bench.StartUnattended(stage.arguments, on) : bench.Start(stage.arguments, on);
    bench.Greet();
    bench.console->WaitFor(stage.seen);
}

void PressCtrlC(const Stage& stage)
{
    Bench bench;
    Reach(bench, stage, On::Terminal);
    bench.console->Type("\x03");
    if (!stage.left.empty()) {
        bench.console->WaitFor("OK (o), Cancel (C)?");
        bench.console->Type(stage.board == 0 ? "\x03" : "o\n");  // pressed again it is the answer
    }
    bench.ExpectEnd(130);
    EXPECT_EQ(FirstOutOfOrder(bench.console->Output(), {"Interrupted.", stage.left}), "") << bench.console->Output();
}

/// Whoever sends a signal can't be asked.
void Send(const Stage& stage, int signal, int exitCode)
{
    Bench bench;
    Reach(bench, stage, On::Pipes);
    bench.console->Signal(signal);
    bench.ExpectEnd(exitCode);
}

void CloseTerminal(const Stage& stage)
{
    Bench bench;
    Reach(bench, stage, On::Terminal);
    bench.console->HangUp();
    bench.ExpectEnd(8);
}

TEST(ConsoleEnd, leaves_port_and_log_in_order_wherever_it_is_ended)
{
    std::vector<std::pair<std::string, std::function<void()>>> cases;
    for (const Stage& stage : stages) {
        cases.emplace_back(stage.name + ", Ctrl+C", [&] { PressCtrlC(stage); });
        cases.emplace_back(stage.name + ", SIGTERM", [&] { Send(stage, SIGTERM, 8); });
        if (stage.name == "the transfer")
            cases.emplace_back(stage.name + ", SIGINT", [&] { Send(stage, SIGINT, 130); });
        cases.emplace_back(stage.name + ", its terminal is closed", [&] { CloseTerminal(stage); });
    }
    Together(cases);
}

}  // namespace
