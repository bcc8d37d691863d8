// The port as far as it goes without a device.

#include "platform/win32/Win32SerialControl.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/Computer.h"
#include "platform/Failure.h"
#include "tests/VirtualComputer.h"

namespace {

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

TEST(Win32SerialControlTest, AClosedPortSaysSoAndOneThatIsNotThereCannotBeOpened)
{
    Win32SerialControl port([](int number) { return number == 7 ? "\\\\.\\COM177" : ""; });
    EXPECT_EQ(FailureOf([&] { port.Output("x"); }), FAIL_PORT_CLOSED);
    EXPECT_EQ(FailureOf([&] { port.InBufferCount(); }), FAIL_PORT_CLOSED);
    EXPECT_EQ(FailureOf([&] { port.Input(); }), FAIL_PORT_CLOSED);
    for (const char* settings : {"", "2400,N,8,1", ",N,8,1", "9600x,N,8,1", "99999999999,N,8,1"})
        EXPECT_THROW(port.SetSettings(settings), std::invalid_argument) << settings;
    EXPECT_EQ(port.Settings(), "9600,N,8,1");
    for (const int number : {7, 8}) {
        port.SetCommPort(number);
        EXPECT_EQ(FailureOf([&] { port.SetPortOpen(true); }), FAIL_PORT_LOST);
        EXPECT_EQ(port.TestPort(number), PORT_MISSING);
    }
    EXPECT_EQ(port.CommID(), 0);
    EXPECT_EQ(port.CommEvent(), 0);
    EXPECT_FALSE(port.HasDevice());
}

TEST(Win32SerialControlTest, WhatIsNoPortIsMissing)
{
    const TempDirectory directory;
    WriteFile(directory.path / "file", "no port");
    for (const std::string& path : {std::string(), (directory.path / "file").string(), std::string("\\\\.\\NUL"),
                                    std::string("C:\\nowhere\\COM7")})
        EXPECT_EQ(TestDevice(path), PORT_MISSING) << path;
}

}  // namespace
