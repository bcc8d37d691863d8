#include "platform/posix/PosixSerialControl.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <thread>

#include "platform/Computer.h"
#include "platform/Failure.h"
#include "tests/platform/posix/Restrictions.h"

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

/// The antenna's end of a pseudo-terminal.
class Antenna {
public:
    Antenna()
    {
        char name[256] = {};
        int slave = -1;
        if (openpty(&master_, &slave, name, nullptr, nullptr) != 0) throw std::runtime_error("no pseudo-terminal");
        termios line{};
        tcgetattr(slave, &line);
        cfmakeraw(&line);
        tcsetattr(slave, TCSANOW, &line);
        close(slave);
        path = name;
        fcntl(master_, F_SETFL, O_NONBLOCK);
    }
    ~Antenna() { HangUp(); }

    void HangUp()
    {
        if (master_ >= 0) close(master_);
        master_ = -1;
    }

    void Say(const std::string& bytes)
    {
        ASSERT_EQ(write(master_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }

    /// What has come, until `count` bytes are there or a second passed without any.
    std::string Hear(std::size_t count)
    {
        std::string heard;
        pollfd line = {master_, POLLIN, 0};
        while (heard.size() < count && poll(&line, 1, 1000) > 0) {
            char piece[4096];
            const ssize_t got = read(master_, piece, sizeof piece);
            if (got <= 0) break;
            heard.append(piece, static_cast<std::size_t>(got));
        }
        return heard;
    }

    speed_t Speed() const
    {
        termios line{};
        tcgetattr(master_, &line);
        return cfgetospeed(&line);
    }

    std::string path;

private:
    int master_ = -1;
};

class PosixSerialControlTest : public testing::Test {
protected:
    Antenna antenna;
    PosixSerialControl port{[this](int number) { return NameOf(number); }};

    /// One device under two names, as adapters have them.
    std::string NameOf(int number) const
    {
        if (number == 9) return "/dev/.." + antenna.path;
        return number == 7 ? antenna.path : std::string();
    }

    void Open()
    {
        port.SetCommPort(7);
        port.SetPortOpen(true);
    }

    /// Waits for input as the desktop does.
    bool WaitForInput(int ms = 1000)
    {
        pollfd line = {port.Descriptor(), POLLIN, 0};
        return poll(&line, 1, ms) > 0;
    }

    std::string Read(std::size_t count)
    {
        std::string bytes;
        while (bytes.size() < count && WaitForInput()) bytes += port.Input();
        return bytes;
    }
};

/// The number of the failure that `work` raises; 0 when it raises none.
template <class Work>
int FailureOf(Work work)
{
    try {
        work();
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

std::string AllBytes()
{
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    return bytes;
}

TEST_F(PosixSerialControlTest, EveryByteGoesBothWaysUnchangedAndWhatCameBeforeTheOpenIsGone)
{
    antenna.Say("from before");
    usleep(50000);
    Open();
    EXPECT_GT(port.CommID(), 0);
    EXPECT_EQ(port.CommEvent(), 0);
    EXPECT_EQ(port.Input(), "");
    antenna.Say(AllBytes());
    ASSERT_TRUE(WaitForInput());
    EXPECT_EQ(port.CommEvent(), comEvReceive);
    EXPECT_EQ(Read(256), AllBytes());
    EXPECT_EQ(port.CommEvent(), comEvReceive) << "an event stays until the next open";
    port.Output(AllBytes());
    EXPECT_EQ(antenna.Hear(256), AllBytes());
    antenna.Say("dropped");
    ASSERT_TRUE(WaitForInput());
    EXPECT_EQ(port.InBufferCount(), 7);
    port.ClearInput();
    EXPECT_EQ(port.InBufferCount(), 0);
    port.SetPortOpen(false);
    port.SetPortOpen(true);
    EXPECT_EQ(port.CommEvent(), 0);
}

TEST_F(PosixSerialControlTest, AStalledReaderLosesNothingAndBlocksNobody)
{
    Open();
    std::string sent;
    const std::string data = AllBytes().substr(0, 16);
    const auto start = Clock::now();
    for (int line = 0; line < 10000; ++line) {
        const std::string words = ":10" + std::to_string(line) + data;
        port.Output(words);
        sent += words;
    }
    EXPECT_LT(SecondsSince(start), 5);
    EXPECT_TRUE(port.WantsToWrite());

    std::string heard;
    while (heard.size() < sent.size()) {
        const std::string piece = antenna.Hear(1);
        ASSERT_FALSE(piece.empty()) << heard.size() << " of " << sent.size();
        heard += piece;
        port.CommEvent();  // any call hands over more
    }
    EXPECT_TRUE(heard == sent);
    EXPECT_FALSE(port.WantsToWrite());
}

TEST_F(PosixSerialControlTest, ADeviceThatIsGoneIsReportedByEachReadAndByNothingElse)
{
    Open();
    port.Output(std::string(100000, 'x'));
    antenna.HangUp();
    EXPECT_EQ(port.CommEvent(), comEvReceive);  // the next round reads
    EXPECT_EQ(port.Descriptor(), -1);           // nobody can wait, and so spin, on a line that was hung up
    EXPECT_FALSE(port.WantsToWrite());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(FailureOf([&] { port.Input(); }), FAIL_PORT_LOST);
        EXPECT_EQ(FailureOf([&] { port.InBufferCount(); }), FAIL_PORT_LOST);
        EXPECT_EQ(FailureOf([&] { port.Output("HALT\r"); }), 0);
        EXPECT_EQ(FailureOf([&] { port.SetSettings("38400,N,8,1"); }), 0);
        port.ClearInput();
    }
    EXPECT_EQ(port.TestPort(7), PORT_MISSING);

    const auto start = Clock::now();
    port.SetPortOpen(false);
    EXPECT_LT(SecondsSince(start), 0.5);
    EXPECT_EQ(port.CommID(), 0);
    EXPECT_EQ(FailureOf([&] { port.SetPortOpen(true); }), FAIL_PORT_LOST);

    Antenna again;
    antenna.path = again.path;
    port.SetPortOpen(true);
    EXPECT_EQ(port.Settings(), "38400,N,8,1");
    port.Output("VERSION\r");
    EXPECT_EQ(again.Hear(8), "VERSION\r");
    port.SetPortOpen(false);
}

TEST_F(PosixSerialControlTest, AClosedPortSaysSo)
{
    EXPECT_EQ(FailureOf([&] { port.Output("x"); }), FAIL_PORT_CLOSED);
    EXPECT_EQ(FailureOf([&] { port.InBufferCount(); }), FAIL_PORT_CLOSED);
    EXPECT_EQ(FailureOf([&] { port.Input(); }), FAIL_PORT_CLOSED);
    for (const char* settings : {"", "2400,N,8,1", ",N,8,1", "9600x,N,8,1", "99999999999,N,8,1"})
        EXPECT_THROW(port.SetSettings(settings), std::invalid_argument) << settings;
    EXPECT_EQ(port.Settings(), "9600,N,8,1");
    port.SetCommPort(8);  // a number without a device
    EXPECT_EQ(FailureOf([&] { port.SetPortOpen(true); }), FAIL_PORT_LOST);
    EXPECT_EQ(port.CommID(), 0);
    EXPECT_EQ(port.CommEvent(), 0);
}

TEST_F(PosixSerialControlTest, WhatWasWrittenLeavesBeforeTheSpeedChangesAndBeforeTheClose)
{
    Open();
    EXPECT_EQ(antenna.Speed(), static_cast<speed_t>(B9600));
    const std::string lines(30000, 'L');
    const std::string later(30000, 'M');
    std::string heard;
    speed_t speedWhileWaiting = 0;
    std::thread reader([&] {
        usleep(50000);
        speedWhileWaiting = antenna.Speed();
        heard = antenna.Hear(lines.size() + later.size());
    });
    port.Output(lines);
    EXPECT_TRUE(port.WantsToWrite());
    port.SetSettings("38400,N,8,1");
    EXPECT_FALSE(port.WantsToWrite());
    port.Output(later);
    port.SetPortOpen(false);
    reader.join();
    EXPECT_TRUE(heard == lines + later) << heard.size();
    EXPECT_EQ(speedWhileWaiting, static_cast<speed_t>(B9600));
    EXPECT_EQ(antenna.Speed(), static_cast<speed_t>(B38400));
}

TEST_F(PosixSerialControlTest, ADeadDeviceHoldsUpAChangeOfSpeedForABoundedTime)
{
    port.SetSettings("115200,N,8,1");
    Open();
    port.Output(std::string(22000, 'x'));
    ASSERT_TRUE(port.WantsToWrite());
    const auto start = Clock::now();
    port.SetSettings("9600,N,8,1");
    EXPECT_LT(SecondsSince(start), 4);
    EXPECT_FALSE(port.WantsToWrite());
    EXPECT_EQ(antenna.Speed(), static_cast<speed_t>(B9600));
}

// --- the test of a port ------------------------------------------------------------------------------------------

TEST_F(PosixSerialControlTest, APortHasOneHolder)
{
    EXPECT_EQ(TestDevice(antenna.path), PORT_USABLE);
    Open();
    EXPECT_EQ(TestDevice(antenna.path), PORT_IN_USE);
    EXPECT_EQ(port.TestPort(7), PORT_USABLE);
    EXPECT_EQ(port.TestPort(9), PORT_USABLE);
    EXPECT_EQ(port.TestPort(8), PORT_MISSING);
    PosixSerialControl other([this](int) { return antenna.path; });
    EXPECT_EQ(FailureOf([&] { other.SetPortOpen(true); }), FAIL_PORT_LOST);
    EXPECT_EQ(other.TestPort(7), PORT_IN_USE);

    ASSERT_EQ(chmod(antenna.path.c_str(), 0666), 0);
    {
        // Nor can it be opened by programs that know nothing of locks.
        const OrdinaryUser user;
        if (user.IsValid()) {
            EXPECT_LT(open(antenna.path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK), 0);
            EXPECT_EQ(TestDevice(antenna.path), PORT_IN_USE);
        }
    }
    // The tests have disturbed nothing.
    antenna.Say("$");
    EXPECT_EQ(Read(1), "$");

    port.SetPortOpen(false);
    const OrdinaryUser user;
    EXPECT_EQ(TestDevice(antenna.path), PORT_USABLE);
}

TEST_F(PosixSerialControlTest, WhatIsNoPortIsMissingAndWhatIsForbiddenIsForbidden)
{
    for (const char* path : {"", "/dev/no-such-port", "/etc/passwd/x", "/tmp", "/dev/null"})
        EXPECT_EQ(TestDevice(path), PORT_MISSING) << path;

    ASSERT_EQ(chmod(antenna.path.c_str(), 0), 0);
    const OrdinaryUser user;
    if (!user.IsValid()) GTEST_SKIP() << "no ordinary user here";
    EXPECT_EQ(TestDevice(antenna.path), PORT_FORBIDDEN);
}

}  // namespace
