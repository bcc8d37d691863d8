#include <sys/stat.h>

#include "tests/diagnostics/DiagnosticsFixture.h"

namespace {

TEST_F(Diagnostics, a_script_that_is_a_pipe_is_refused_and_not_waited_for)
{
    ASSERT_EQ(mkfifo((world.directory / "pipe.txt").c_str(), 0600), 0);
    world.openDialogAnswer = {(world.directory / "pipe.txt").string()};
    Press(frmWizard.cmdOpenScriptFile);
    EXPECT_TRUE(world.BoxWasShown("pipe.txt"));
    EXPECT_EQ(frmWizard.lblScriptFile.Caption(), "pipe.txt: 0 commands");
}

}  // namespace
