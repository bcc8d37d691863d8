#include "persistence/Logs.h"

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
