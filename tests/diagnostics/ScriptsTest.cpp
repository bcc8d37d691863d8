#include "tests/diagnostics/DiagnosticsFixture.h"

namespace {

class Scripts : public Diagnostics {
protected:
    void Open(const std::string& content, const std::string& name = "demo.txt")
    {
        WriteFile(world.directory / name, content);
        world.openDialogAnswer = {(world.directory / name).string()};
        Press(frmWizard.cmdOpenScriptFile);
    }

    void Pause(bool on)
    {
        frmWizard.chkPauseBetweenCmds.Value = on ? 1 : 0;
        Press(frmWizard.chkPauseBetweenCmds);
    }
};

TEST_F(Scripts, commands_go_out_in_turn_whatever_ends_their_lines_and_the_rest_is_dropped)
{
    EXPECT_FALSE(frmWizard.cmdRunScript.Enabled || frmWizard.chkPauseBetweenCmds.Enabled);
    Open("; who\r\nVERSION\nab\r\r\n wait 3\rWAIT 3\n;x\n@VER");
    EXPECT_EQ(frmWizard.lblScriptFile.Caption(), "demo.txt: 4 commands");
    EXPECT_EQ(frmWizard.lblScriptLine.Caption(), "Next is command 1 of 4: VERSION");
    EXPECT_EQ(frmWizard.sScriptLines.size(), 6u);
    std::string seen;
    world.At(3.5, [&] { seen = frmWizard.lblScriptLine.Caption() + (frmWizard.ScriptProgress.Visible ? " +" : " -"); });
    const double start = world.now;
    Press(frmWizard.cmdRunScript);
    EXPECT_EQ(Sent(), "VERSION| wait 3|@VER|");
    EXPECT_NEAR(world.now - start, 6.2, 0.5) << "a second behind each command, three for the wait";
    EXPECT_EQ(seen, "Command 4 of 4: @VER +");
    EXPECT_FALSE(frmWizard.ScriptProgress.Visible);
    EXPECT_EQ(frmWizard.iScriptLine, 0);
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    EXPECT_TRUE(text::Holds(frmWizard.Text1.Text(), "==>Waiting 3 seconds\r\n==>@VER\r\n"));

    world.openDialogAnswer.clear();
    Press(frmWizard.cmdOpenScriptFile);
    EXPECT_EQ(frmWizard.sScriptLines.size(), 6u) << "cancelled: nothing has changed";
}

TEST_F(Scripts, a_click_each_sends_a_line_each_and_the_last_one_takes_the_button_away)
{
    Open("AAA\nBBB\nCCC\n");
    Pause(true);
    EXPECT_FALSE(Press(frmWizard.cmdRunScript));
    world.At(0.1, [] { Press(frmWizard.cmdDoNext); });  // while the first line is under way
    Press(frmWizard.cmdDoNext);
    EXPECT_EQ(Sent(), "AAA|BBB|");
    EXPECT_EQ(frmWizard.lblScriptLine.Caption(), "Next is command 3 of 3: CCC");
    Press(frmWizard.cmdDoNext);
    EXPECT_TRUE(Press(frmWizard.cmdDoNext));
    EXPECT_FALSE(frmWizard.cmdDoNext.Visible || frmWizard.cmdDoNext.Enabled);
    EXPECT_EQ(Sent(), "AAA|BBB|CCC|");

    Open("DDD\nEEE\n", "next.txt");  // the pause is still on
    EXPECT_TRUE(Press(frmWizard.cmdDoNext));
    Pause(false);
    world.At(0.5, [&] { Pause(true); });
    Press(frmWizard.cmdRunScript);
    EXPECT_EQ(frmWizard.lblScriptLine.Caption(), "Next is command 2 of 2: EEE") << "a run pauses too";
    Press(frmWizard.cmdDoNext);
    EXPECT_EQ(Sent(), "AAA|BBB|CCC|DDD|DDD|EEE|");
}

TEST_F(Scripts, comments_only_and_files_that_can_not_be_read_leave_nothing_to_send)
{
    Open(";one\r\n;two\r\n8\r\n");
    Press(frmWizard.cmdRunScript);
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    Pause(true);
    Press(frmWizard.cmdDoNext);
    EXPECT_FALSE(frmWizard.cmdDoNext.Visible);
    EXPECT_TRUE(world.boxes.empty());

    std::filesystem::create_directory(world.directory / "folder");
    for (const std::string name : {"missing.txt", "folder"}) {
        world.openDialogAnswer = {(world.directory / name).string()};
        Press(frmWizard.cmdOpenScriptFile);
        EXPECT_TRUE(world.BoxWasShown(name)) << name;
        EXPECT_EQ(frmWizard.lblScriptFile.Caption(), name + ": 0 commands");
    }
    EXPECT_EQ(world.boxes.size(), 2u);
    EXPECT_EQ(world.sent, "");
}

TEST_F(Scripts, ten_thousand_lines_run_flat_and_a_hundred_clicks_start_again_without_piling_up)
{
    std::string content;
    for (int line = 0; line < 10000; ++line) content += "LINE " + std::to_string(line) + "\n";
    Open(content);
    char outermost = 0;
    std::ptrdiff_t deepest = 0;
    std::size_t kept = 0;
    std::function<void()> everySecond = [&] {
        char here = 0;
        deepest = std::max(deepest, std::abs(&outermost - &here));
        kept = std::max(kept, Session.link.sCommBuffer.size());
        world.Say("\r\n>a long answer to the command before\r\n");
        world.At(1, everySecond);
    };
    everySecond();
    for (int click = 1; click <= 100; ++click) world.At(click * 2.5, [] { Press(frmWizard.cmdRunScript); });
    Press(frmWizard.cmdRunScript);
    EXPECT_EQ(text::Count(world.sent, '\r'), 10000 + 100 / 2 * (2 + 3)) << "a click each 2.5 s";
    EXPECT_TRUE(world.sent.ends_with("LINE 9998\rLINE 9999\r"));
    EXPECT_LT(deepest, 20'000) << "bytes of stack";
    EXPECT_LT(kept, 1000u);
    EXPECT_LE(frmWizard.Text1.Text().size(), 30000u);
}

TEST_F(Scripts, one_that_runs_gives_way_to_another_file_another_task_and_the_end_of_the_program)
{
    Open("AAA\nBBB\nCCC\n");
    world.At(1.5, [&] { Open("NEW\n", "new.txt"); });
    Press(frmWizard.cmdRunScript);
    world.RunFor(2);
    EXPECT_EQ(Sent(), "AAA|BBB|") << "of the old file nothing more goes out";
    EXPECT_EQ(frmWizard.lblScriptLine.Caption(), "Next is command 1 of 1: NEW");

    const struct {
        const char* name;
        std::function<void()> act;
    } others[] = {
        {"flash mode", [] { cmdNav_Click(2); }},
        {"a list", [] { Press(frmWizard.cmdGetSatListA); }},
        {"the port is gone", [] { mnuCommPort_Item_Click(0), Session.link.iCommID = 0; }},
        {"the end", [] { Press(frmWizard.cmdNav[0]); }},
    };
    Open("AAA\nBBB\nCCC\n");
    for (const auto& other : others) {
        SetStep(STEP_DIAGNOSTICS);
        Session.link.iCommID = 1;
        Session.link.iCommMode = STATE_IDLE;
        world.sent.clear();
        world.At(0.5, other.act);
        Press(frmWizard.cmdRunScript);
        EXPECT_FALSE(text::Holds(world.sent, "BBB")) << other.name;
        EXPECT_TRUE(Session.program.bExitRequested || Session.link.iCommMode != STATE_SCRIPT) << other.name;
        EXPECT_EQ(Session.link.sCmdQueueText, "") << other.name;
        EXPECT_FALSE(frmWizard.ScriptProgress.Visible) << other.name;
    }
    EXPECT_TRUE(Session.program.bExitRequested);
    EXPECT_TRUE(Logged("*** The script was ended ahead of command 2 of 3. ***\r\n"));
    EXPECT_TRUE(Logged("Cancelled by User"));
}

}  // namespace
