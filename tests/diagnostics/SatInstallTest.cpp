#include "diagnostics/Diagnostics.h"
#include "tests/diagnostics/DiagnosticsFixture.h"

namespace {

class SatInstall : public Diagnostics {
protected:
    static std::string Entries(const Control& list)
    {
        std::string entries;
        for (const std::string& entry : list.List()) entries += entry + " ";
        return entries;
    }

    void Answer(const std::string& words)
    {
        world.Say(words);
        world.RunFor(0.05);
    }

    std::string Install() { return SentBy(frmWizard.cmdSatInstall); }
};

TEST_F(SatInstall, the_lists_are_asked_for_one_behind_the_other_and_the_pick_wins_over_the_predefined_pair)
{
    EXPECT_FALSE(frmWizard.cboSatA.Visible || frmWizard.cboSatB.Visible);
    Press(frmWizard.cmdGetSatListB);
    EXPECT_EQ(world.sent, "") << "the second satellite depends on the first";
    Press(frmWizard.cmdGetSatListA);
    EXPECT_EQ(Session.link.iCommMode, STATE_SAT_LIST_A);
    Answer("\r\n>SATLISTA,DSS_101, ECHO_119 ,HOTBIRD\r\n");
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    EXPECT_TRUE(frmWizard.cboSatA.Visible);
    EXPECT_EQ(Entries(frmWizard.cboSatA), "DSS_101 ECHO_119 HOTBIRD TRISAT ");
    Choose(frmWizard.cboSatA, 1);
    Press(frmWizard.cmdGetSatListB);
    Answer("\r\n>SATLISTB,ECHO_110,ECHO_61\r\n");
    EXPECT_EQ(world.sent, "SATLISTA\rSATLISTB,ECHO_119\r");
    EXPECT_EQ(Entries(frmWizard.cboSatB), "ECHO_110 ECHO_61 NONE ");
    EXPECT_EQ(Install(), "HALT|DEBUGON|SATINSTALL,ECHO_119,ECHO_110|");
    EXPECT_EQ(Install(), "") << "until something is picked again";
    Choose(frmWizard.cboSatB, 2);
    EXPECT_EQ(Install(), "") << "the second satellite alone is no pick";

    frmWizard.txtSendCmd.Text = "GPS";  // the command line is alive
    frmWizard.txtSendCmd.KeyPress(13);
    world.sent.clear();
    world.RunFor(0.5);
    EXPECT_EQ(world.sent, "GPS\r\n\r");
}

TEST_F(SatInstall, each_predefined_pair_has_its_line_and_the_first_one_is_chosen_at_the_start)
{
    EXPECT_EQ(Install(), "HALT|DEBUGON|SATINSTALL,DSS_101,NONE|");
    const char* const lines[] = {"DSS_101,NONE|", "DSS_101,DSS_119|", "ECHO_119,NONE|", "ECHO_119,ECHO_110|"};
    for (int index = 0; index < 4; ++index) {
        Choose(frmWizard.cboPredefinedSats, index);
        EXPECT_EQ(Install(), "HALT|DEBUGON|SATINSTALL," + std::string(lines[index]));
    }
}

TEST_F(SatInstall, three_satellites_are_picked_without_asking_and_an_old_second_pick_is_gone)
{
    ParseSatListA("SATLISTA,DSS_101,ECHO_119");
    ParseSatListB("SATLISTB,DSS_119,DSS_110");
    Choose(frmWizard.cboSatA, 2);
    Press(frmWizard.cmdGetSatListB);
    EXPECT_EQ(world.sent, "");
    EXPECT_EQ(Entries(frmWizard.cboSatB), "DSS EWB EUR SCN ");
    EXPECT_TRUE(frmWizard.cboSatB.Visible);
    EXPECT_EQ(frmWizard.cboSatB.ListIndex, -1);
    EXPECT_EQ(frmWizard.sInstallSatB, "");
    Choose(frmWizard.cboSatB, 3);
    EXPECT_EQ(Install(), "HALT|DEBUGON|SATINSTALL,TRISAT,SCN|");
}

TEST_F(SatInstall, an_answer_in_pieces_is_read_when_it_is_whole_and_nothing_else_is_taken_for_it)
{
    Press(frmWizard.cmdGetGPS);
    world.Say("\r\n>SATLISTA,OLD1,OLD2\r\n");  // waits unread: it answers a question from before
    Press(frmWizard.cmdGetSatListA);
    for (const char* piece : {"\r\n>GPS,42,N,71,W\r\n", "SATLISTA\r\n", "\r\n>SATLI", "STA,DSS_101,ECHO_119,HOT"}) {
        Answer(piece);
        EXPECT_EQ(Session.link.iCommMode, STATE_SAT_LIST_A) << piece;
        EXPECT_FALSE(frmWizard.cboSatA.Visible) << piece;
    }
    Answer("BIRD,\r\nASTRA1\r\nAZ,1,2\r\n");
    EXPECT_EQ(Entries(frmWizard.cboSatA), "DSS_101 ECHO_119 HOTBIRD ASTRA1 TRISAT ");

    Press(frmWizard.cmdGetSatListA);
    Answer("\r\n");
    EXPECT_EQ(Session.link.iCommMode, STATE_SAT_LIST_A) << "the answer from before is no answer";

    Press(frmWizard.cmdGetSatListB);
    Answer("SATLISTB,A1,B1");
    EXPECT_EQ(Session.link.iCommMode, STATE_SAT_LIST_B);
    world.RunFor(1.2);
    EXPECT_EQ(Entries(frmWizard.cboSatB), "A1 B1 NONE ") << "an answer without a line end";
}

TEST_F(SatInstall, a_list_that_never_comes_is_given_up_after_twenty_seconds_with_words)
{
    Press(frmWizard.cmdGetSatListA);
    world.RunFor(19.5);
    EXPECT_EQ(Session.link.iCommMode, STATE_SAT_LIST_A);
    world.RunFor(1);
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    EXPECT_TRUE(text::Holds(frmWizard.Text1.Text(), "*** No list of satellites came from the antenna."));
    EXPECT_TRUE(Logged("click Get List for 'A' again. ***\r\n"));

    ParseSatListA("SATLISTA,DSS_101,ECHO_119");
    Press(frmWizard.cmdGetSatListB);
    Answer("\r\n>SATLISTB,DSS_119\r\n");
    EXPECT_EQ(Session.link.iCommMode, STATE_SAT_LIST_B) << "one satellite is no choice";
    EXPECT_EQ(Entries(frmWizard.cboSatB), "");
    world.RunFor(21);
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    EXPECT_TRUE(Logged("*** The antenna has no choice of satellites for 'B'."));
}

TEST_F(SatInstall, a_user_satellite_is_described_by_what_was_chosen_and_needs_its_longitude)
{
    const auto configure = [&] { return SentBy(frmWizard.cmdConfigUSERSat); };
    WizardForm& form = frmWizard;
    PressOption(form.Self, form.optUSERSats[1]);
    EXPECT_EQ(configure(), "");
    form.txtLongitude[1].Text = " 61.5 ";
    EXPECT_EQ(configure(), "HALT|DEBUGON|SATCONFIG,USER2,61.5,|");
    PressOption(form.Self, form.optDecodeType[2]);
    EXPECT_EQ(configure(), "HALT|DEBUGON|SATCONFIG,USER2,61.5,3,|");
    PressOption(form.Self, form.optUSERSats[0]);
    PressOption(form.Self, form.optWest[2]);
    PressOption(form.Self, form.optDecodeType[0]);
    PressOption(form.Self, form.optLNBPolarization[1]);
    EXPECT_EQ(configure(), "HALT|DEBUGON|SATCONFIG,USER1,61.5,W,1,L|");
    PressOption(form.Self, form.optEast[2]);
    PressOption(form.Self, form.optDecodeType[1]);
    PressOption(form.Self, form.optLNBPolarization[0]);
    EXPECT_EQ(configure(), "HALT|DEBUGON|SATCONFIG,USER1,61.5,E,2,C|");
}

}  // namespace
