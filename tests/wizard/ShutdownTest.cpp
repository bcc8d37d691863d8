#include <algorithm>

#include "tests/wizard/WizardFixture.h"

namespace {

class Shutdown : public Wizard {
protected:
    void SetUp() override
    {
        Start();
        saved = (elsewhere.path / "copy.log").string();
    }

    void SaveAs(const std::string& name)
    {
        world.saveDialogAnswer = name;
        Press(frmWizard.mnuFile_ItemSaveLogFile);
    }

    TempDirectory elsewhere;
    std::string saved;
};

TEST_F(Shutdown, closes_the_port_and_the_log_and_happens_once)
{
    CleanUpForShutdown(2);
    CleanUpForShutdown(1);
    EXPECT_EQ(Session.link.iCommID, 0);
    EXPECT_TRUE(IsExitRequested());
    EXPECT_TRUE(Form_Unload());
    EXPECT_TRUE(Logged("++>Starting Burnline Assistant 2026-11-21 10:15:02 =====\r\n"))
        << "the log of this run is gone";
    EXPECT_TRUE(Logged("++>Shutting down Burnline Assistant - Finished 2026-11-21 10:15:02 =====\r\n"));
    EXPECT_FALSE(Logged("Cancelled"));
}

TEST_F(Shutdown, asks_while_the_parameters_are_not_back)
{
    for (const int mode : {STATE_POSTFLASH, STATE_WAIT_PORT_BACK}) {
        Session.link.iCommMode = static_cast<std::int16_t>(mode);
        Session.flash.bAtRisk = true;
        world.boxes.clear();
        world.answers = {Answer::Cancel};
        Form_QueryUnload();
        EXPECT_EQ(world.boxes.size(), 1u);
        EXPECT_FALSE(Form_Unload());
        EXPECT_GT(Session.link.iCommID, 0);
    }
    CleanUpForShutdown(1);
    EXPECT_TRUE(Form_Unload());
    EXPECT_TRUE(Logged("++>CONFIRM_CANCEL: Premature exit requested.\r\n"));
}

TEST_F(Shutdown, a_saved_log_is_complete_or_the_user_is_told)
{
    SaveAs(saved);
    CleanUpForShutdown(1);
    EXPECT_EQ(ReadFile(saved), world.Log());
    EXPECT_TRUE(text::Holds(ReadFile(saved), "Shutting down"));
    EXPECT_TRUE(world.boxes.empty());

    Start();
    SaveAs((elsewhere.path / "gone" / "copy.log").string());
    CleanUpForShutdown(1);
    EXPECT_TRUE(world.BoxWasShown("The log could not be saved as"));
}

TEST_F(Shutdown, an_existing_file_goes_only_when_the_user_says_so)
{
    WriteFile(saved, "precious");
    world.answers = {Answer::No, Answer::No, Answer::Cancel};
    SaveAs(saved);
    EXPECT_EQ(world.boxes.size(), 3u);
    EXPECT_EQ(world.boxes[0].words, "Replace existing file - " + saved);
    EXPECT_EQ(ReadFile(saved), "precious");
    EXPECT_TRUE(Session.program.sSavedLogName.empty());
    world.answers = {Answer::Yes};
    SaveAs(saved);
    EXPECT_EQ(Session.program.sSavedLogName, saved);
    EXPECT_FALSE(std::filesystem::exists(saved));

    world.saveDialogAnswer.reset();
    Press(frmWizard.mnuFile_ItemSaveLogFile);
    EXPECT_TRUE(Session.program.sSavedLogName.empty()) << "a cancelled dialog takes the former name back";
}

TEST_F(Shutdown, the_log_itself_is_never_deleted_for_its_own_copy)
{
    SaveAs((world.directory / "BNL.LOG").string());
    EXPECT_TRUE(world.boxes.empty());
    CleanUpForShutdown(2);
    EXPECT_TRUE(Logged("++>Starting"));
    EXPECT_TRUE(Logged("Finished"));
}

TEST(Terminal, enter_sends_in_the_idle_mode_and_keeps_the_text_in_any_other)
{
    VirtualComputer world;
    world.StartProgram();
    Control& line = frmWizard.txtSendCmd;
    line.Text = "HALT";
    EXPECT_FALSE(line.KeyPress('x'));
    Session.link.iCommMode = STATE_GET_VERSIONS;
    EXPECT_TRUE(line.KeyPress(13));
    EXPECT_EQ(line.Text(), "HALT");

    Session.link.iCommMode = STATE_IDLE;
    line.KeyPress(13);
    EXPECT_EQ(line.Text(), "");
    line.Text = "VERSION";
    line.KeyPress(13);  // ahead of the tick that sends the first
    world.RunFor(0.5);
    EXPECT_EQ(world.sent, "HALT\r\nVERSION\r\n\r");
}

TEST(Terminal, a_pause_holds_the_output_and_its_end_shows_it)
{
    VirtualComputer world;
    world.StartProgram();
    frmWizard.Text1.Text = "before ";
    Press(frmWizard.cmdPauseOrResume);
    EXPECT_EQ(frmWizard.cmdPauseOrResume.Caption(), "Resume Output");
    world.Say("meanwhile");
    world.RunFor(0.2);
    EXPECT_EQ(frmWizard.Text1.Text(), "before ");
    Press(frmWizard.cmdPauseOrResume);
    EXPECT_EQ(frmWizard.Text1.Text(), "before meanwhile");
    EXPECT_TRUE(frmWizard.sPausedOutput.empty());
}

TEST(Terminal, stays_within_its_bound_however_much_comes_at_once)
{
    VirtualComputer world;
    world.StartProgram();
    const std::string flood(200'000, 'x');
    for (const bool paused : {false, true, false}) {
        if (paused != frmWizard.bOutputPaused) Press(frmWizard.cmdPauseOrResume);
        world.Say(flood + "end");
        world.RunFor(0.2);
        EXPECT_LE(frmWizard.Text1.Text().size(), 28672u + 1024);
        EXPECT_LE(frmWizard.sPausedOutput.size(), 28672u);
    }
    EXPECT_TRUE(frmWizard.Text1.Text().ends_with("end"));
    const std::string log = world.Log();
    EXPECT_EQ(std::count(log.begin(), log.end(), 'x'), 600'000) << "the log holds everything";
}

}  // namespace
