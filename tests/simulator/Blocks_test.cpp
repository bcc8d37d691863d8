// Boards that take blocks, and the one of three parts, where hardware is strict.

#include <gtest/gtest.h>

#include "tests/simulator/Bench.h"

using sim::State;

namespace {

constexpr std::uint32_t size = 64;

/// What a test sends: no two blocks are equal, and every byte value occurs.
std::string Block(std::uint32_t position)
{
    std::string block;
    for (std::uint32_t i = position; i < position + size; ++i) block += static_cast<char>((i * 7 + i / 251) & 0xFF);
    return block;
}

std::string Echo(const std::string& block)
{
    int sum = 0;
    for (const unsigned char byte : block) sum += byte;
    return std::string(1, static_cast<char>(255 - sum % 256));
}

std::string SignOnOf(const Bench& bench) { return std::string("\r\n") + bench.antenna.Kind().signOn + "\r\n"; }

/// Power and the program command; whatever is sent next belongs to the boot area.
void StartBoard(Bench& bench)
{
    bench.Power(false);
    bench.Power(true);
    EXPECT_EQ(bench.Wait(1), SignOnOf(bench));
    EXPECT_EQ(bench.Ask(bench.antenna.Kind().command, 0.05), "") << "what it says now would stand for an echo";
}

/// Sends the blocks of a leg; the number of the first one that wasn't acknowledged as it ought to be, 0 for none.
int Send(Bench& bench, std::uint32_t start, std::uint32_t end)
{
    int number = 1;
    for (std::uint32_t at = start; at < end; at += size, ++number) {
        const std::string block = Block(at);
        if (bench.Ask(block, 0.07) != Echo(block)) return number;
    }
    return 0;
}

/// A record on its way to board 21.
std::string Sent(const std::string& record) { return record + "\r\n"; }

/// From the power to the first record of a part.
void StartPart(Bench& bench, const std::string& command)
{
    bench.Power(true);
    EXPECT_EQ(bench.Wait(1), SignOnOf(bench));
    EXPECT_EQ(bench.Ask(command + "\r\n", 0.5), "\r\n?BAUDRATE\r\n");
    EXPECT_TRUE(bench.Ask("BAUDRATE=A\r\n", 5).ends_with(".\r\nSTART_PROGRAM\r\n"));
}

}  // namespace

TEST(BlockBoards, FaultsStrikeTheBlockOfTheLegThatTheyAreSetFor)
{
    Bench bench(20, "RF6");
    ASSERT_TRUE(bench.Fault("boot-wrong-echo 24") && bench.Fault("boot-silent 3") && bench.Fault("wrong-echo 5"));
    for (const int struck : {3, 24, 0}) {
        StartBoard(bench);
        EXPECT_EQ(Send(bench, 512, 2048), struck);
    }
    bench.Wait(5);
    EXPECT_EQ(Send(bench, 6208, 65024), 5);
    EXPECT_FALSE(bench.antenna.HasSoftware());

    ASSERT_TRUE(bench.Fault("power-lost 919") && bench.Fault("power-lost-erasing"));
    StartBoard(bench);
    EXPECT_EQ(Send(bench, 512, 2048), 0);
    EXPECT_EQ(bench.Wait(5), "");
    EXPECT_FALSE(bench.antenna.IsPowered());
    StartBoard(bench);
    EXPECT_EQ(Send(bench, 512, 2048), 0);
    bench.Wait(5);
    EXPECT_EQ(Send(bench, 6208, 65024), 919) << "the last block";
    EXPECT_FALSE(bench.antenna.IsPowered() || bench.antenna.HasSoftware());
}

TEST(BlockBoards, ALostByteLeavesTheBlockWaitingAndZeroIsAnEchoLikeAnyOther)
{
    Bench bench(16);
    StartBoard(bench);
    std::string block(size, '\0');
    block[5] = '\xFF';  // their sum, and so an echo of zero
    EXPECT_EQ(bench.Ask(block.substr(1), 10), "");
    EXPECT_EQ(bench.Ask(std::string(1, '\0')), std::string(1, '\0'));
    EXPECT_EQ(bench.Ask("flashx\rzap\r"), "") << "inside a block there are no commands";
}

TEST(RFBoards, KeepTheirParametersUntilTheErase)
{
    Bench bench(20, "RF6A GL");
    bench.Power(true);
    bench.Wait(10);
    const auto installed = bench.antenna.Held().All();
    for (const char* bad : {"SATINSTALL,1", "SATINSTALL,1,,3", "SATINSTALL,100,2", "FECHITS1,123", "FECHITS2,12G4"}) {
        EXPECT_NE(bench.Ask(bad + std::string("\r")).find("ILLEGAL"), std::string::npos) << bad;
    }
    EXPECT_EQ(bench.antenna.Held().All(), installed);
    EXPECT_EQ(bench.Ask("flashx\r"), SignOnOf(bench));
    bench.Ask("PGM_RF6A");
    for (const auto& [name, value] : installed) EXPECT_NE(bench.antenna.Held().Value(name), value) << name;
}

TEST(ThreePartBoard, RefusesWhatIsDamagedAndMissesAPartThatBrokeOff)
{
    Bench bench(21, "RF7 GL");
    StartPart(bench, "PGM_RF7_FPGA");
    const std::string good = SRecord(2, 0x3000, {1, 2, 3}), none = SRecord(2, 0x3000, {});
    std::string flipped = good, counted = good;
    flipped[12] = '9';
    counted[3] = '8';
    for (const std::string& bad : {flipped, counted, good + "00", good.substr(0, 14), good.substr(1), std::string("S"),
                                   std::string("S4"), std::string("S20G"), SRecord(2, 0x200000, {1}), " " + good}) {
        EXPECT_EQ(bench.Ask(Sent(bad)), "ERROR\r\n") << bad;
    }
    EXPECT_EQ(bench.antenna.Stage(2).BytesWritten(), 0u);
    ASSERT_TRUE(bench.Fault("refuse 1 2") && bench.Fault("silent 2"));
    EXPECT_EQ(bench.Ask(Sent(good) + Sent(good) + Sent(none)), "ERROR\r\nERROR\r\nSA\r\n");
    EXPECT_EQ(bench.Ask(good + "\r"), "") << "a line ends in CR LF";
    EXPECT_EQ(bench.Ask("\n"), "") << "lost on request";
    EXPECT_EQ(bench.Ask(Sent(good) + good.substr(0, 9)), "SA\r\n");
    bench.Power(false);
    bench.Power(true);
    EXPECT_EQ(bench.Wait(40), SignOnOf(bench)) << "without its FPGA nothing starts";
    EXPECT_EQ(bench.antenna.Held().Value("FECHITS1"), "0417") << "the parameters lie with the RF board";
}
