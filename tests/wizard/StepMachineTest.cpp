#include "tests/wizard/WizardFixture.h"

namespace {

class StepMachine : public Wizard {
protected:
    void SetUp() override
    {
        WriteFile(world.directory / "FLASHCFG.TXT", "COMMON PREFLASH MAINBOARD$@VER$VERSION\r\n");
        Start();
    }
};

TEST_F(StepMachine, the_diagnostics_are_entered_by_a_chord_and_left_to_the_first_step_but_never_during_a_flash)
{
    EXPECT_FALSE(Form_KeyDown('A', true, true, true));
    EXPECT_FALSE(Form_KeyDown('A', false, true, false));
    EXPECT_EQ(ShownStep(), STEP_INTRO);
    EXPECT_TRUE(Form_KeyDown('A', false, true, true));
    EXPECT_EQ(ShownStep(), STEP_DIAGNOSTICS);
    EXPECT_EQ(frmWizard.cmdNav[2].Caption(), "&Flash Mode >");
    cmdNav_Click(2);
    EXPECT_EQ(ShownStep(), STEP_INTRO);
    EXPECT_EQ(frmWizard.cmdNav[2].Caption(), "&Next >");

    Session.link.iCommMode = STATE_SEND_LINES;
    Form_KeyDown('A', false, true, true);
    EXPECT_EQ(ShownStep(), STEP_INTRO);
}

TEST_F(StepMachine, a_board_without_a_row_leads_back_to_the_versions_as_often_as_one_tries)
{
    Choose(frmWizard.cboOtherBoard, 3);
    SetStep(STEP_3);
    for (int turn = 1; turn <= 3; ++turn) {
        cmdNav_Click(2);
        EXPECT_EQ(ShownStep(), STEP_3);
        EXPECT_EQ(world.boxes.size(), static_cast<std::size_t>(turn));
        EXPECT_TRUE(frmWizard.mnuCommPort.Enabled);
    }
    EXPECT_TRUE(world.BoxWasShown("Selected board configuration not found"));
}

TEST_F(StepMachine, next_waits_for_the_version_of_a_board_that_tells_it)
{
    for (const int type : {0, 1, 18}) {
        Session.choice = {.iBoardType = type};
        SetNavCmds(NAV_CHOSEN);
        EXPECT_EQ(frmWizard.cmdNav[2].Enabled(), type == 18) << "type " << type;
    }
}

}  // namespace
