// Files are replaced all or none, wherever the program is killed and whatever the disk refuses.

#include "platform/Failure.h"
#include "tests/update/ReplacementFixture.h"

namespace {

TEST_F(Replacement, PutsEveryFileInItsPlaceAndKeepsItsPermissions)
{
    fs::permissions(home / "burnline", fs::perms::owner_all);
    const fs::perms before = fs::status(home / "burnline").permissions();
    ReplaceFiles(home, Files());
    EXPECT_EQ(Found(), New());
    EXPECT_EQ(fs::status(home / "burnline").permissions(), before);
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
            try {
                ReplaceFiles(home, Files(), blockedHook);
            } catch (const Failure&) {
                return;
            }
            throw std::logic_error("the directory was in nobody's way");
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

}  // namespace
