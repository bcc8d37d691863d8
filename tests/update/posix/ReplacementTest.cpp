#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/Failure.h"
#include "tests/platform/posix/Restrictions.h"
#include "tests/update/ReplacementFixture.h"

/// In a process of its own.
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

TEST_F(Replacement, ChangesNothingOnAFullDisk)
{
    {
        const FullDisk tight(50000);
        EXPECT_THROW(ReplaceFiles(home, Files()), Failure);
    }
    EXPECT_EQ(Found(), former);
}
