// What this system can do to the settings file: pipes, rights, a disk that is full, a kill at any moment.

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include "tests/persistence/SettingsFixture.h"
#include "tests/platform/posix/Restrictions.h"

namespace {

namespace fs = std::filesystem;

TEST_F(SettingsTest, APipeIsRefusedAndNotWaitedFor)
{
    ASSERT_EQ(mkfifo(Path("Burnline.ini").c_str(), 0600), 0);
    ExpectRefusedAndUntouched("is not a file");
}

TEST_F(SettingsTest, AFileThatMayNotBeReadIsRefusedAndKept)
{
    Put("Burnline.ini", Everything);
    fs::permissions(Path("Burnline.ini"), fs::perms::none);
    fs::permissions(machine.directory, fs::perms::all);
    {
        const OrdinaryUser user;
        if (!user.IsValid()) GTEST_SKIP() << "no ordinary user here";
        ExpectRefusedAndUntouched("Permission denied");
    }
    fs::permissions(Path("Burnline.ini"), fs::perms::owner_read);
    EXPECT_EQ(Bytes("Burnline.ini"), Everything);
}

TEST_F(SettingsTest, ADirectoryThatMayNotBeWrittenIsToldOnce)
{
    fs::permissions(machine.directory,
                    fs::perms::all & ~(fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write));
    const OrdinaryUser user;
    if (!user.IsValid()) GTEST_SKIP() << "no ordinary user here";
    GetDefaultValues();
    OpenLog();
    OpenUpdatesLog();
    WriteLogLine("nothing is open, nothing happens");
    ASSERT_EQ(machine.boxes.size(), 1u);
    EXPECT_EQ(machine.boxes[0].words.find("There was an error accessing " + machine.directory.string()), 0u);
    EXPECT_TRUE(IsExitRequested());
}

TEST_F(SettingsTest, AFullDiskIsToldAndTheFormerSettingsStay)
{
    Load(Everything);
    {
        const FullDisk full(100);
        SetSetting(SETTING_COMM_PORT, "5");
    }
    ASSERT_EQ(machine.boxes.size(), 1u);
    EXPECT_EQ(machine.boxes[0].words, "The disk is full, we are unable to write the file Burnline.ini");
    EXPECT_TRUE(IsExitRequested());
    EXPECT_EQ(Bytes("Burnline.ini"), Everything);
    EXPECT_FALSE(There("Burnline.ini.new"));
    EXPECT_FALSE(There("Burnline.ini.old"));

    SetSetting(SETTING_COMM_PORT, "5");
    EXPECT_NE(Bytes("Burnline.ini").find("COMMPort=5\r\n"), std::string::npos);
}

/// Saves without end, and tells the other end of the pipe each save that is done.
[[noreturn]] void SaveForEver(int done)
{
    for (int number = 1;; ++number) {
        SetSetting(SETTING_REVISION, std::to_string(number));
        if (write(done, &number, sizeof number) != sizeof number) _exit(1);
    }
}

TEST_F(SettingsTest, WhereverASaveIsKilledTheNextStartHasTheOldOrTheNewSettings)
{
    for (int round = 0; round < 25; ++round) {
        Load(Everything);
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) SaveForEver(ends[1]);
        close(ends[1]);
        int done = 0, number = 0;
        while (done < 3 && read(ends[0], &number, sizeof number) == sizeof number) done = number;
        usleep(static_cast<useconds_t>(round * 97));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        while (read(ends[0], &number, sizeof number) == sizeof number) done = number;
        close(ends[0]);

        GetDefaultValues();
        const int found = std::stoi(GetSetting(SETTING_REVISION));
        EXPECT_TRUE(found == done || found == done + 1) << found << " after " << done;
        EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "14");
        EXPECT_TRUE(IsSettingTrue(SETTING_USE_FAST_BAUD));
        EXPECT_TRUE(machine.boxes.empty());
    }
}

}  // namespace
