#include "persistence/Logs.h"

#include <signal.h>
#include <sys/wait.h>

#include "tests/persistence/ProgramDirectory.h"

namespace {

namespace fs = std::filesystem;

using LogsTest = ProgramDirectoryTest;

TEST_F(LogsTest, TheLastTwoRunsAreKept)
{
    for (const char* run : {"first\r\n", "second\r\n", "third\r\n"}) {
        OpenLog();
        WriteLog(run);
        OpenLog();  // a log that is open stays
        WriteLog("");
        CloseLog();
    }
    EXPECT_EQ(Bytes("BNL.LOG"), "third\r\n");
    EXPECT_EQ(Bytes("BNLBAK.LOG"), "second\r\n");
    WriteLog("nobody listens");
    EXPECT_EQ(Bytes("BNL.LOG"), "third\r\n");
}

TEST_F(LogsTest, AKilledProgramLeavesACompleteLog)
{
    constexpr int lines = 500;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        OpenLog();
        for (int i = 0; i < lines; ++i) WriteLogLine("==>" + std::to_string(i) + std::string(1, '\0') + "\xFF");
        raise(SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    std::string expected;
    for (int i = 0; i < lines; ++i) expected += "==>" + std::to_string(i) + std::string(1, '\0') + "\xFF\r\n";
    EXPECT_EQ(Bytes("BNL.LOG"), expected);
}

TEST_F(LogsTest, AFullDiskLosesLinesAndNothingElse)
{
    OpenLog();
    WriteLogLine("before");
    {
        const FullDisk full(8);
        WriteLogLine("lost");
    }
    WriteLogLine("after");
    EXPECT_EQ(Bytes("BNL.LOG"), "before\r\nafter\r\n");
    EXPECT_TRUE(machine.boxes.empty());
}

TEST_F(LogsTest, ALogThatCannotBeKeptIsToldOnceAndTheProgramGoesOn)
{
    Put("BNL.LOG", "the run before");
    fs::create_directories(Path("BNLBAK.LOG/full"));
    fs::create_directory(Path("BNLUPDATES.HTM"));
    OpenLog();
    OpenUpdatesLog();
    EXPECT_FALSE(IsLogOpen());
    EXPECT_FALSE(IsUpdatesLogOpen());
    WriteLogLine("x");
    WriteUpdatesLog("x");
    EXPECT_EQ(machine.boxes.size(), 1u);
    EXPECT_EQ(Bytes("BNL.LOG"), "the run before");
}

}  // namespace
