// What a technician asks of a running antenna: its satellites, where it looks, and what it heard.

#include <gtest/gtest.h>

#include "simulator/Console.h"
#include "simulator/Flood.h"
#include "tests/simulator/Bench.h"

namespace {

struct Running : Bench {
    explicit Running(int board = 0) : Bench(board), console(antenna)
    {
        Power(true);
        Wait(10);
    }

    /// Without prompt and line end.
    std::string Answer(const std::string& command)
    {
        const std::string said = Ask(command + "\r");
        return said.size() > 5 ? said.substr(3, said.size() - 5) : said;
    }
    std::string Tell(const std::string& line)
    {
        std::string answer;
        console.Run(line, now, answer);
        return answer;
    }

    sim::Console console;
};

TEST(SimulatedAntenna, TellsItsSatellitesAndTheirPartners)
{
    Running antenna;
    EXPECT_EQ(antenna.Answer("SATLISTA"), "SATLISTA,DSS_101,ECHO_119,HOTBIRD,ASTRA1,NILESAT");
    EXPECT_EQ(antenna.Answer("satlistb,hotbird"), "SATLISTB,ASTRA1,ASTRA2S,SIRIUS,THOR");
    EXPECT_EQ(antenna.Answer("SATLISTB,NILESAT"), "SATLISTB,ARABSAT") << "a single one";
    for (const char* bad : {"SATLISTA,", "SATLISTB", "SATLISTB,", "SATLISTB,MARS", "SATLISTB,DSS_101,DSS_119"})
        EXPECT_EQ(antenna.Answer(bad), std::string(bad).substr(0, 8) + ": ILLEGAL VALUE");

    ASSERT_TRUE(antenna.Fault("split SATLISTA") && antenna.Fault("mute SATLISTB"));
    std::string whole, piece = antenna.Ask("SATLISTA\r", 0.1);
    for (int pieces = 1; pieces <= 3; ++pieces, piece = antenna.Wait(0.15)) {
        EXPECT_FALSE(piece.empty()) << pieces;
        whole += piece;
    }
    EXPECT_EQ(whole, "\r\n>SATLISTA,DSS_101,ECHO_119,HOTBIRD,ASTRA1,NILESAT\r\n");
    EXPECT_EQ(antenna.Ask("SATLISTB,DSS_101\r"), "");
}

TEST(SimulatedAntenna, KeepsTheUsersSatellitesThroughAFlash)
{
    Running antenna;
    EXPECT_EQ(antenna.Answer("SATCONFIG,USER2,101.5,w,3,L"), "SATCONFIG,USER2,101.5,W,3,L");
    for (const char* bad : {"", ",USER1", ",101,W,1,C", ",USER3,101,W,1,C", ",USER1,,W,1,C", ",USER1,181,W,1,C",
                            ",USER1,101,N,1,C", ",USER1,101,W,4,C", ",USER1,101,W,1,", ",USER1,101,W,1,C,"})
        EXPECT_EQ(antenna.Answer(std::string("SATCONFIG") + bad), "SATCONFIG: ILLEGAL VALUE") << bad;
    antenna.StartFlash();
    EXPECT_EQ(antenna.antenna.Held().Value("USER1"), "NONE");
    EXPECT_EQ(antenna.antenna.Held().Value("USER2"), "101.5,W,3,L");

    Running cleared;
    cleared.Answer("SATCONFIG,USER1,5,E,1,C");
    EXPECT_EQ(cleared.Answer("CLEAREE"), "CLEAREE");
    EXPECT_EQ(cleared.antenna.Held().Value("USER1"), "NONE");
}

TEST(SimulatedAntenna, LooksWhereItIsSent)
{
    Running antenna;
    EXPECT_EQ(antenna.Answer("STATE"), "STATE = TRACKING, AZ 180.0 EL 45.0");
    EXPECT_EQ(antenna.Answer("HALT"), "HALT");
    EXPECT_EQ(antenna.Answer("GOTO,AZ359.8,EL89.7"), "AZ 359.8 EL 89.7");
    EXPECT_EQ(antenna.Answer("8"), "AZ 359.8 EL 90.0") << "no further than up";
    EXPECT_EQ(antenna.Answer("6"), "AZ 0.3 EL 90.0");
    EXPECT_EQ(antenna.Answer("4"), "AZ 359.8 EL 90.0");
    EXPECT_EQ(antenna.Answer("2"), "AZ 359.8 EL 89.5");
    for (const char* bad : {"", ",AZ10", ",AZ10,EL", ",AZ,EL10", ",10,20", ",AZ360,EL10", ",AZ10,EL91", ",AZ1,EL1,"})
        EXPECT_EQ(antenna.Answer(std::string("GOTO") + bad), "GOTO: ILLEGAL VALUE") << bad;
    EXPECT_EQ(antenna.Answer("STATE"), "STATE = HALTED, AZ 359.8 EL 89.5");
    EXPECT_EQ(antenna.Answer("5"), "? 5");

    Running motor(3);
    EXPECT_EQ(motor.Answer("GOTO,AZ1,EL1"), "? GOTO,AZ1,EL1") << "a board without a dish";
}

TEST(SimulatedAntenna, TellsEveryByteThatItHeardOnce)
{
    Running antenna;
    antenna.Tell("heard");
    antenna.Ask("HALT\r");
    antenna.Power(false);
    antenna.Ask(std::string("\n\x01\\\0\xFF", 5) + "@VER\r");
    EXPECT_EQ(antenna.Tell("heard"), "heard: HALT\\r\\n\\x01\\\\\\x00\\xFF@VER\\r");
    EXPECT_EQ(antenna.Tell("heard"), "heard: ");
}

TEST(SimulatedAntenna, FloodsAtTheSpeedOfTheLine)
{
    Running antenna;
    EXPECT_EQ(antenna.Tell("flood 9600"), "");
    const std::string text = sim::FloodText(9600), first = antenna.Wait(1);
    EXPECT_NEAR(static_cast<double>(first.size()), 960, 1);
    EXPECT_EQ(first + antenna.Wait(9.1), text);
    EXPECT_EQ(text.substr(0, 13), "000001 AZ 7.1");
    for (const char* bad : {"flood", "flood x", "flood -1", "flood 123456789"})
        EXPECT_NE(antenna.Tell(bad).find("not understood"), std::string::npos) << bad;
}

}  // namespace
