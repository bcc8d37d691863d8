#include "persistence/Logs.h"

#include <signal.h>
#include <sys/wait.h>

#include "tests/persistence/ProgramDirectory.h"
#include "tests/platform/posix/Restrictions.h"

namespace {

using LogsTest = ProgramDirectoryTest;

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

}  // namespace
