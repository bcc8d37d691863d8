// A program that is killed without warning leaves the old settings or the new ones, and a complete log.

#include <windows.h>

#include <chrono>
#include <cstdlib>

#include "tests/persistence/SettingsFixture.h"

namespace {

constexpr const char* homeOfVictim = "BURNLINE_TEST_VICTIM";

class KilledProgram : public ProgramDirectoryTest {
protected:
    /// The log tells of each save that is done.
    [[noreturn]] void SaveForEver(const char* home)
    {
        machine.directory = home;
        GetDefaultValues();
        OpenLog();
        for (int number = 1;; ++number) {
            SetSetting(SETTING_REVISION, std::to_string(number));
            WriteLogLine(std::to_string(number));
        }
    }

    /// This test once more, as a process of its own.
    HANDLE StartVictim() const
    {
        char own[MAX_PATH] = {};
        GetModuleFileNameA(nullptr, own, sizeof own);
        const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
        std::string line =
            std::string("\"") + own + "\" --gtest_filter=" + test->test_suite_name() + "." + test->name();
        SetEnvironmentVariableA(homeOfVictim, machine.directory.string().c_str());
        STARTUPINFOA start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;  // to nowhere
        PROCESS_INFORMATION process{};
        EXPECT_TRUE(
            CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process));
        SetEnvironmentVariableA(homeOfVictim, nullptr);
        CloseHandle(process.hThread);
        return process.hProcess;
    }
};

TEST_F(KilledProgram, LeavesTheOldOrTheNewSettingsAndACompleteLog)
{
    using Clock = std::chrono::steady_clock;
    if (const char* home = std::getenv(homeOfVictim)) SaveForEver(home);
    for (int round = 0; round < 12; ++round) {
        std::filesystem::remove(Path("BNL.LOG"));
        Put("Burnline.ini", Everything);
        const HANDLE victim = StartVictim();
        const auto patience = Clock::now() + std::chrono::seconds(60);
        while (Bytes("BNL.LOG").size() < 9 && Clock::now() < patience) ::Sleep(1);
        const auto moment = Clock::now() + std::chrono::microseconds(round * 97);
        while (Clock::now() < moment) {
        }
        TerminateProcess(victim, 1);
        WaitForSingleObject(victim, INFINITE);
        CloseHandle(victim);

        const std::string log = Bytes("BNL.LOG");
        int done = 0;
        std::string expected;
        while (expected.size() < log.size()) expected += std::to_string(++done) + "\r\n";
        EXPECT_EQ(log, expected);
        EXPECT_GE(done, 3);
        GetDefaultValues();
        CloseLog();
        const int found = std::stoi(GetSetting(SETTING_REVISION));
        EXPECT_TRUE(found == done || found == done + 1) << found << " after " << done;
        EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "14");
        EXPECT_TRUE(machine.boxes.empty());
    }
}

}  // namespace
