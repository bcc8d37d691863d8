#include <gtest/gtest.h>

#include <cmath>

#include "tests/simulator/Bench.h"

TEST(Wire, AByteTakesTenBitTimesInEachDirection)
{
    Bench bench(0);
    bench.StartFlash();
    const std::string line = Record(0, 0, {1, 2, 3, 4}) + "\r";
    const double start = bench.now, byte = 10.0 / 9600;
    bench.wire.Write(line.substr(0, 8), start);
    bench.wire.Write(line.substr(8), start);
    EXPECT_DOUBLE_EQ(bench.wire.NextEvent(), start + byte);
    const double answered = start + (static_cast<double>(line.size()) + 1) * byte;
    EXPECT_EQ(bench.wire.Read(answered - 1e-6), "");
    EXPECT_NEAR(bench.wire.NextEvent(), answered, 1e-9);
    EXPECT_EQ(bench.wire.Read(answered + 1e-9), "$");
    EXPECT_TRUE(std::isinf(bench.wire.NextEvent())) << "nothing is under way";

    Bench fast(0, "", true);
    fast.StartFlash();
    EXPECT_EQ(fast.Ask(line, 0), "$");
}

TEST(Wire, AtTheWrongSpeedNothingIsUnderstood)
{
    Bench bench(14);
    bench.wire.SetBaud(9600);
    bench.Power(true);
    const std::string said = bench.Wait(1);
    EXPECT_EQ(said.find("READY"), std::string::npos);
    EXPECT_FALSE(said.empty());
    bench.Ask("PGM_ADCU", 0.5);
    EXPECT_EQ(bench.antenna.Doing(), sim::State::AwaitingCommand);
    bench.wire.SetBaud(38400);
    bench.Ask("PGM_ADCU", 0.1);
    EXPECT_EQ(bench.antenna.Doing(), sim::State::Erasing);
}
