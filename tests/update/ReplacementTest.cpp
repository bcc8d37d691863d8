// Files are replaced all or none, wherever the program is killed and whatever the disk refuses.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <map>

#include "platform/Failure.h"
#include "tests/VirtualComputer.h"
#include "tests/platform/Restrictions.h"
#include "update/Replacement.h"

namespace fs = std::filesystem;

namespace {

using Set = std::map<std::string, std::string>;  // names and contents

class Replacement : public testing::Test {
protected:
    Replacement()
    {
        fs::create_directories(staging);
        fs::create_directories(home);
        Lay();
    }

    /// Two files with predecessors, one without, and one that is nobody's business.
    void Lay()
    {
        for (const auto& entry : fs::directory_iterator(home)) fs::remove_all(entry.path());
        for (const auto& [name, bytes] : former) WriteFile(home / name, bytes);
        for (const auto& [name, bytes] : brought) WriteFile(staging / name, bytes);
    }

    std::vector<PlacedFile> Files() const
    {
        std::vector<PlacedFile> files;
        for (const auto& [name, bytes] : brought) files.push_back({staging / name, home / name});
        return files;
    }

    Set Found() const
    {
        Set found;
        for (const auto& entry : fs::directory_iterator(home))
            found[entry.path().filename().string()] = entry.is_regular_file() ? ReadFile(entry.path()) : "(directory)";
        return found;
    }

    Set New() const
    {
        Set all = former;
        for (const auto& [name, bytes] : brought) all[name] = bytes;
        return all;
    }

    TempDirectory temp;
    const fs::path home = temp.path / "home", staging = temp.path / "staging";
    const Set former{{"A.HEX", "old a"}, {"burnline", "old program"}, {"Burnline.ini", "mine"}};
    const Set brought{{"A.HEX", "new a"}, {"B.S19", std::string(100000, 'b')}, {"burnline", "new program"}};
};

/// Runs it in a process of its own, which is killed ahead of its `step`th change of the disk; true when it was.
bool KilledAt(int step, const std::function<void(const StepHook&)>& act)
{
    const pid_t child = fork();
    if (child == 0) {
        int steps = 0;
        try {
            act([&] {
                if (++steps == step) kill(getpid(), SIGKILL);
            });
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_FALSE(WIFEXITED(status) && WEXITSTATUS(status) != 0) << "step " << step;
    return WIFSIGNALED(status);
}

TEST_F(Replacement, PutsEveryFileInItsPlaceAndKeepsItsPermissions)
{
    fs::permissions(home / "burnline", fs::perms::owner_all);
    ReplaceFiles(home, Files());
    EXPECT_EQ(Found(), New());
    EXPECT_EQ(fs::status(home / "burnline").permissions(), fs::perms::owner_all);
    EXPECT_EQ(FinishReplacement(home), Leftover::None);
}

TEST_F(Replacement, LeavesTheOldSetOrTheNewOneWhereverItIsKilled)
{
    int step = 1, finished = 0, undone = 0;
    for (; KilledAt(step, [&](const StepHook& hook) { ReplaceFiles(home, Files(), hook); }); ++step) {
        // The next starts are killed as well, each a little later, until one gets to its end.
        int again = 1;
        while (KilledAt(again, [&](const StepHook& hook) { FinishReplacement(home, hook); })) ++again;
        EXPECT_EQ(FinishReplacement(home), Leftover::None) << "the start that was not killed has ended it";
        const bool isNew = Found() == New();
        EXPECT_TRUE(isNew || Found() == former) << "killed at step " << step;
        ++(isNew ? finished : undone);
        Lay();
    }
    EXPECT_EQ(Found(), New()) << "nobody killed the last one";
    EXPECT_GT(finished, 5);
    EXPECT_GT(undone, 10);
}

TEST_F(Replacement, IsUndoneWhereverItIsKilledWhenAFileCannotTakeItsPlace)
{
    // Others are in their places already when a directory turns up in the place of one.
    const auto block = [this] {
        if (fs::exists(home / "BNLUpdate.placing")) fs::create_directories(home / "B.S19" / "full");
    };
    Set expected = former;
    expected["B.S19"] = "(directory)";
    int undone = 0;
    for (int step = 1;; ++step) {
        const bool killed = KilledAt(step, [&](const StepHook& hook) {
            const auto blockedHook = [&] {
                block();
                hook();
            };
            EXPECT_THROW(ReplaceFiles(home, Files(), blockedHook), Failure);
        });
        try {
            FinishReplacement(home, block);
        } catch (const Failure&) {
            // Finishing meets the same directory, and has undone it.
        }
        EXPECT_TRUE(Found() == expected || Found() == former) << "killed at step " << step;
        undone += Found() == expected;
        if (!killed) break;
        Lay();
    }
    EXPECT_GT(undone, 10);
}

TEST_F(Replacement, ChangesNothingOnAFullDisk)
{
    {
        const FullDisk tight(50000);
        EXPECT_THROW(ReplaceFiles(home, Files()), Failure);
    }
    EXPECT_EQ(Found(), former);
}

}  // namespace
