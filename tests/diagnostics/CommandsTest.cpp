#include "tests/diagnostics/DiagnosticsFixture.h"

namespace {

using Commands = Diagnostics;

TEST_F(Commands, each_button_sends_its_line_at_once)
{
    WizardForm& form = frmWizard;
    std::string sent;
    for (Control* button : {&form.cmdGetVersion, &form.cmdGetState, &form.cmdGetSigStrength, &form.cmdGetSatsInstalled,
                            &form.cmdGetSerNum, &form.cmdGetGPS, &form.cmdHalt, &form.cmdZAP, &form.cmdDebugOn,
                            &form.cmdUp, &form.cmdDown, &form.cmdLeft, &form.cmdRight})
        sent += SentBy(*button) + " ";
    EXPECT_EQ(sent, "VERSION|@VER| STATE| SIGLEVEL| SATINSTALL| =SERNUM| GPS| HALT| ZAP| DEBUGON| 8| 2| 4| 6| ");
    EXPECT_EQ(SentBy(form.cmdCalGyro), "HALT|DEBUGON|=CALGYRO|");
    EXPECT_EQ(SentBy(form.cmdCalAZ), "HALT|DEBUGON|=CALAZ|");
    EXPECT_EQ(SentBy(form.cmdCalEL), "HALT|DEBUGON|=CALEL|");
    EXPECT_EQ(SentBy(form.cmdClrEE), "HALT|DEBUGON|CLEAREE|");
    EXPECT_TRUE(text::Holds(form.Text1.Text(), "==>HALT\r\n==>DEBUGON\r\n==>CLEAREE\r\n"));
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
}

TEST_F(Commands, a_position_goes_out_as_it_stands_and_with_a_field_empty_as_a_bare_CR)
{
    EXPECT_EQ(SentBy(frmWizard.cmdGoTo), "|");
    frmWizard.txtAZ.Text = " 180.5 ";
    EXPECT_EQ(SentBy(frmWizard.cmdGoTo), "|");
    frmWizard.txtEl.Text = "high ";
    EXPECT_EQ(SentBy(frmWizard.cmdGoTo), "GOTO,AZ180.5,ELhigh|");

    frmWizard.txtLat.Text = " 42.5";
    EXPECT_EQ(SentBy(frmWizard.cmdUpdateGPS), "|");
    frmWizard.txtLongitude[0].Text = "71 ";
    EXPECT_EQ(SentBy(frmWizard.cmdUpdateGPS), "GPS, 42.5,N,71 ,W|");
    PressOption(frmWizard.Self, frmWizard.optSouth);
    PressOption(frmWizard.Self, frmWizard.optEast[0]);
    EXPECT_EQ(SentBy(frmWizard.cmdUpdateGPS), "GPS, 42.5,S,71 ,E|");

    EXPECT_EQ(SentBy(frmWizard.cmdSetSerNum), "");
    frmWizard.txtSerNum.Text = " 0042 ";
    EXPECT_EQ(SentBy(frmWizard.cmdSetSerNum), "=SERNUM,0042|");
}

TEST_F(Commands, ctrl_with_the_arrows_moves_the_antenna_only_while_its_buttons_are_in_front)
{
    const auto press = [&](int key) { return Form_KeyDown(key, false, true, false); };
    EXPECT_FALSE(press(UpKey));
    frmWizard.SSTab1.ListIndex = 1;
    for (const int key : {UpKey, DownKey, LeftKey, RightKey}) EXPECT_TRUE(press(key));
    EXPECT_EQ(world.sent, "8\r2\r4\r6\r");
    EXPECT_FALSE(Form_KeyDown(UpKey, true, true, false));
    EXPECT_FALSE(Form_KeyDown(UpKey, false, false, false));
    EXPECT_FALSE(press('A'));
    SetStep(STEP_INTRO);
    EXPECT_FALSE(press(UpKey));
    EXPECT_EQ(world.sent, "8\r2\r4\r6\r");
}

TEST_F(Commands, up_and_down_walk_through_what_was_sent_and_give_back_what_was_being_typed)
{
    const auto press = [](int key) {
        EXPECT_TRUE(frmWizard.txtSendCmd.KeyDown(key));
        return frmWizard.txtSendCmd.Text();
    };
    const auto send = [&](const std::string& command) {
        frmWizard.txtSendCmd.Text = command;
        frmWizard.txtSendCmd.KeyPress(13);
        world.RunFor(0.3);
    };
    EXPECT_EQ(press(UpKey), "");
    for (const char* command : {"GPS", "STATE", "", "GPS"}) send(command);
    frmWizard.txtSendCmd.Text = "HAL";
    std::string walk;
    for (const int key : {UpKey, UpKey, UpKey, DownKey, DownKey, DownKey}) walk += press(key) + " ";
    EXPECT_EQ(walk, "GPS STATE STATE GPS HAL HAL ");
    EXPECT_FALSE(frmWizard.txtSendCmd.KeyDown(LeftKey));
    EXPECT_EQ(world.sent, "GPS\r\n\rSTATE\r\n\r\r\n\rGPS\r\n\r");

    for (int number = 0; number < 120; ++number) send("C" + std::to_string(number));
    for (int turn = 0; turn < 150; ++turn) press(UpKey);
    EXPECT_EQ(frmWizard.txtSendCmd.Text(), "C20");
    Session.link.iCommMode = STATE_SAT_LIST_A;  // the link is busy: the text stays and counts as not sent
    frmWizard.txtSendCmd.KeyPress(13);
    EXPECT_EQ(frmWizard.txtSendCmd.Text(), "C20");
}

}  // namespace
