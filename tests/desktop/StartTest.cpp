// One program in a directory, and a directory that can't be used.

#include <linux/capability.h>
#include <sys/prctl.h>

#include "tests/desktop/BarePort.h"
#include "tests/desktop/RealWindow.h"

namespace fs = std::filesystem;

namespace {

TEST_F(RealWindow, sends_a_second_one_in_its_directory_away_and_leaves_one_elsewhere_alone)
{
    BarePort port(home.AntennaLink());
    WriteAll(home.Path("Burnline.lock"), "");  // left by one that was killed
    StartWizard();
    wizard->WaitForText("lblCommPortStatus", "Waiting on COM7");
    WizardProcess second(home.Path(""));
    second.AnswerBox("The QEL Burnline Assistant is already running.", "OK");
    EXPECT_TRUE(second.EndsWithin(10));
    EXPECT_EQ(second.ExitCode(), 0);
    EXPECT_EQ(home.Bytes("BNLBAK.LOG"), "") << "the log of the first one was rotated away";
    EXPECT_TRUE(wizard->See("lblCommPortStatus").Says("Waiting on COM7"));

    const ProgramHome elsewhere;
    BarePort otherPort(elsewhere.AntennaLink());
    WizardProcess third(elsewhere.Path(""));
    third.WaitForText("lblCommPortStatus", "Waiting on COM7");
    EXPECT_FALSE(third.HasBox());
}

void ExpectToldOnce(WizardProcess& wizard, const fs::path& directory)
{
    wizard.AnswerBox(directory.string(), "OK");
    EXPECT_TRUE(wizard.EndsWithin(10)) << "one box, and no window behind it";
    EXPECT_FALSE(wizard.Crashed());
    EXPECT_EQ(wizard.ExitCode(), 0);
}

TEST_F(RealWindow, tells_once_that_its_directory_is_none)
{
    const fs::path file = home.Path("file");
    WriteAll(file, "not a directory");
    WizardProcess program(file);
    ExpectToldOnce(program, file);
    EXPECT_EQ(home.Bytes("file"), "not a directory");
}

TEST_F(RealWindow, tells_once_that_its_directory_cannot_be_written)
{
    const std::string settings = home.Bytes("Burnline.ini");
    fs::permissions(home.Path("."), fs::perms::owner_read | fs::perms::owner_exec);
    // Permissions don't bind root, unless it gives that right away.
    const bool bound = geteuid() != 0 || prctl(PR_CAPBSET_READ, CAP_SETPCAP) == 1;
    if (!bound) GTEST_SKIP() << "root can't give its rights away here";
    WizardProcess program(home.Path(""), [] { prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE); });
    ExpectToldOnce(program, home.Path("").parent_path());
    EXPECT_EQ(home.Bytes("Burnline.ini"), settings);
}

}  // namespace
