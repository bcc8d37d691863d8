// Strict like hardware: what an antenna takes, what it refuses, what it loses. That it can be flashed the tests of the
// flash show.

#include <gtest/gtest.h>

#include "tests/simulator/Bench.h"

namespace {

const std::string good = Record(0, 0x10, {0xDE, 0xAD, 0xBE, 0xEF});

}  // namespace

TEST(SimulatedAntenna, AnErasingCommandLosesEveryParameter)
{
    Bench bench(0);
    const auto installed = bench.antenna.Held().All();
    bench.StartFlash();
    for (const auto& [name, value] : installed) {
        const bool ofTheUser = name.starts_with("USER");
        EXPECT_EQ(bench.antenna.Held().Value(name) == value, ofTheUser) << name;
    }
}

TEST(SimulatedAntenna, AValueThatIsNoneChangesNothing)
{
    Bench bench(0);
    bench.Power(true);
    bench.Wait(10);
    const auto before = bench.antenna.Held().All();
    for (const char* command : {"BIASAZ,", "BIASAZ,x", "BIASAZ,1,2", "=CALUP,", "=CALUP,1e", "GYROSFAZ,CW,1,CCW",
                                "GYROSFAZ,UP,1", "GYROSFAZ,CW,1,CCW,x", "GPS,91,N,0,W", "GPS,1,N,1", "SATINSTALL,",
                                "SATINSTALL,TRISAT,MARS", "SLEEP,MAYBE", "GPS,1,1,1,1", "SATINSTALL,A,B,C,D,E"}) {
        EXPECT_NE(bench.Ask(command + std::string("\r")).find("ILLEGAL"), std::string::npos) << command;
    }
    EXPECT_EQ(bench.antenna.Held().All(), before);
}

TEST(SimulatedAntenna, TakesOnlySoundRecords)
{
    Bench bench(0);
    bench.StartFlash();
    std::string flipped = good, lower = Record(0, 0x20, {0xAB});
    flipped[10] = flipped[10] == '0' ? '1' : '0';
    for (char& c : lower) c = static_cast<char>(std::tolower(c));
    for (const std::string& bad : {flipped, good.substr(1), good.substr(0, good.size() - 2), good + "00", good + "0",
                                   std::string("::::::::"), Record(3, 0, {0, 0, 0, 0}), Record(4, 0, {0}),
                                   Record(0, 0x20, {}), std::string(5000, ':'), std::string("\0\xFF", 2)}) {
        EXPECT_EQ(bench.Ask(bad + "\r", 6), "1") << bad.substr(0, 40);
    }
    EXPECT_EQ(bench.antenna.Flash().BytesWritten(), 0u);
    EXPECT_EQ(bench.Ask(good + "\r"), "$");
    EXPECT_EQ(bench.Ask(lower + "\r\n\r"), "$") << "LF and an empty line are passed over";
    EXPECT_EQ(bench.antenna.Flash().BytesWritten(), 5u);
    EXPECT_EQ(bench.antenna.RefusedLines(), 11);
}

TEST(SimulatedAntenna, StoresEachByteWhereItsRecordsSay)
{
    Bench bench(0);
    bench.StartFlash();
    for (const std::string& line : {Record(0, 0xFFFE, {1, 2}), Record(4, 0, {0, 1}), Record(0, 0, {3}),
                                    Record(2, 0, {0x20, 0}), Record(0, 4, {4}), Record(0, 0xFFFE, {5})}) {
        EXPECT_EQ(bench.Ask(line + "\r"), "$") << line;
    }
    const auto image = bench.antenna.Flash().Image();
    ASSERT_EQ(image.size(), 0x2FFFFu);
    EXPECT_EQ(std::vector<std::uint8_t>(image.begin() + 0xFFFD, image.begin() + 0x10002),
              (std::vector<std::uint8_t>{0xFF, 1, 2, 3, 0xFF}));
    EXPECT_EQ(image[0x20004], 4);
    EXPECT_EQ(image[0x2FFFE], 5);
    EXPECT_EQ(bench.Ask(Record(4, 0, {0xFF, 0xFF}) + "\r"), "$");
    EXPECT_EQ(bench.Ask(Record(0, 0, {9}) + "\r"), "1") << "beyond the board's memory";
}

TEST(SimulatedAntenna, SpecialBoardsWantTheirReturnsExactly)
{
    for (const auto& [board, name] :
         std::vector<std::pair<int, const char*>>{{17, ""}, {18, ""}, {19, ""}, {0, "JARL"}}) {
        Bench bench(board, name);
        bench.Power(true);
        bench.Wait(1);
        EXPECT_EQ(bench.Ask(bench.antenna.Kind().command), "") << name << ": it waits for a CR";
        const std::string erase = bench.Ask("\r", 10);
        EXPECT_EQ(erase.substr(erase.find('$')), bench.antenna.Kind().saysReady ? "$1" : "$");
        EXPECT_EQ(bench.Ask(good + "\r"), "$") << board;
        EXPECT_EQ(bench.Ask(good + "\r\n"), "$");
        EXPECT_EQ(bench.Ask(good + "\r"), "1") << "the LF stands ahead of this one";
        EXPECT_EQ(bench.Ask(good + "\r\r"), "$1");
    }
    Bench library(0, "JARL GL");
    EXPECT_EQ(library.StartFlash().back(), '$') << "a lone CR behind the command, and no \"1\"";
    EXPECT_EQ(library.Ask(good + "\r\n" + good + "\r\n"), "$$");

    Bench panel(17);
    panel.antenna.SetUpdateMode(false);
    EXPECT_TRUE(panel.StartFlash().starts_with("\r\nKELP BOOT READY\r\n#"));

    Bench bare(5);
    bare.Power(true);
    bare.Wait(1);
    bare.Ask("PGM_DUNE\r", 6);
    EXPECT_EQ(bare.antenna.StrayBytes(), 1) << "a bare command is followed by nothing";
    EXPECT_EQ(bare.Ask(":10ABflasha\r"), "\r\nDUNE BOOT READY\r\n") << "whatever it is doing, it can be sent back";
}

TEST(SimulatedAntenna, AFlashThatBreaksOffLeavesOnlyTheBootLoader)
{
    Bench bench(0);
    bench.StartFlash();
    EXPECT_EQ(bench.Ask(good + "\r" + good.substr(0, 6)), "$");
    bench.Power(false);
    bench.Power(true);
    EXPECT_EQ(bench.Wait(60), "\r\nMAIN BOOT READY\r\n");
    bench.StartFlash();
    EXPECT_EQ(bench.Ask(good + "\r"), "$");
    bench.Power(false);
    EXPECT_TRUE(bench.antenna.HasSoftware());
}

TEST(SimulatedAntenna, FaultsStrikeAsOftenAsAskedFor)
{
    Bench bench(0);
    ASSERT_TRUE(bench.Fault("silent 2") && bench.Fault("refuse 2 2") && bench.Fault("both 3") &&
                bench.Fault("refuse 4 always"));
    bench.StartFlash();
    const std::string line = good + "\r";
    for (const char* answer : {"$", "", "1", "1", "$", "$1", "1", "1", "1", "1"}) EXPECT_EQ(bench.Ask(line), answer);
    ASSERT_TRUE(bench.Fault("clear") && bench.Fault("power-lost 4"));
    EXPECT_EQ(bench.Ask(line), "");
    EXPECT_FALSE(bench.antenna.IsPowered() || bench.antenna.HasSoftware());

    ASSERT_TRUE(bench.Fault("no-sign-on") && bench.Fault("no-erase-end") && bench.Fault("noise"));
    bench.Power(true);
    EXPECT_EQ(bench.Wait(5).find("READY"), std::string::npos);
    EXPECT_EQ(bench.StartFlash().find('$'), std::string::npos);
    bench.StartFlash();
    const std::string noisy = bench.Ask(line);
    EXPECT_EQ(noisy.size(), 2u);
    EXPECT_EQ(noisy.find('1'), std::string::npos);
    EXPECT_EQ(std::count(noisy.begin(), noisy.end(), '$'), 1);

    Bench running(0);
    ASSERT_TRUE(running.Fault("mute BIASAZ 2") && running.Fault("split-versions"));
    running.Power(true);
    running.Wait(10);
    for (const char* answer : {"", "", "\r\n>Azimuth Bias = 1.25\r\n"}) EXPECT_EQ(running.Ask("BIASAZ\r"), answer);
    const std::string first = running.Ask("VERSION\r", 0.1), second = running.Wait(0.15), third = running.Wait(1);
    EXPECT_FALSE(first.empty() || second.empty() || third.empty());
    for (const char* words : {"", "silent", "silent 0", "silent x", "refuse 1 2 3", "mute", "slow -1", "loud 3"})
        EXPECT_FALSE(bench.Fault(words)) << words;
}
