#include <array>

#include "tests/wizard/WizardFixture.h"

namespace {

class BoardChoice : public Wizard {
protected:
    void SetUp() override
    {
        Start();
        SetSetting(SETTING_TRANSMIT_DELAY_ORIGINAL, "3");
        SetStep(STEP_2);
    }
};

TEST_F(BoardChoice, each_name_of_the_single_cable_list_leads_to_a_board_of_its_kind)
{
    // The types of the main, the motor and the RF board.
    const std::map<std::string, std::array<int, 3>> types{{"CORA", {2, 3, 4}},  {"DUNE", {5, 6, 11}},
                                                          {"ERIS", {8, 9, 11}}, {"FJOR", {10, 9, 11}},
                                                          {"ALDA", {7, 6, 11}}, {"BRIX", {12, 13, 11}}};
    const std::vector<std::string> names = frmWizard.cboBoardToFlash.List;
    ASSERT_EQ(names.size(), 28u);
    for (int index = 1; index < 28; ++index) {
        const std::string& name = names[static_cast<std::size_t>(index)];
        Choose(frmWizard.cboBoardToFlash, index);
        const std::size_t board = text::Holds(name, "Main") ? 0 : text::Holds(name, "Motor") ? 1 : 2;
        EXPECT_EQ(Session.iBoardType, types.at(name.substr(0, 4))[board]) << name;
    }
}

TEST_F(BoardChoice, one_choice_replaces_the_other_everywhere)
{
    Choose(frmWizard.cboOtherBoard, 6);
    EXPECT_TRUE(frmWizard.bShowPortChoice);
    Choose(frmWizard.cboOtherBoard, 1);
    EXPECT_EQ(world.Settings(), "38400,N,8,1");
    EXPECT_EQ(GetSetting(SETTING_TRANSMIT_DELAY), "0");
    Choose(frmWizard.cboBoardToFlash, 4);
    EXPECT_EQ(frmWizard.cboOtherBoard.ListIndex, 0);
    EXPECT_EQ(Session.iBoardType, 5);
    EXPECT_EQ(world.Settings(), "9600,N,8,1");
    EXPECT_EQ(GetSetting(SETTING_TRANSMIT_DELAY), "3");

    Choose(frmWizard.cboOtherBoard, 1);
    PressOption(frmWizard.Self, frmWizard.optBoardToFlash[1]);
    EXPECT_EQ(Session.iBoardType, 1);
    EXPECT_EQ(frmWizard.cboBoardToFlash.ListIndex, 0);
    EXPECT_EQ(frmWizard.cboOtherBoard.ListIndex, 0);
    EXPECT_EQ(GetSetting(SETTING_TRANSMIT_DELAY), "3");
    EXPECT_EQ(world.Settings(), "9600,N,8,1");
    EXPECT_FALSE(frmWizard.bShowPortChoice);
}

TEST_F(BoardChoice, the_option_of_an_empty_list_does_not_keep_the_board_chosen_before)
{
    PressOption(frmWizard.Self, frmWizard.optBoardToFlash[0]);
    EXPECT_TRUE(frmWizard.cmdNav[2].Enabled);
    PressOption(frmWizard.Self, frmWizard.optBoardToFlash[2]);
    EXPECT_EQ(Session.iBoardType, 22);
    EXPECT_FALSE(frmWizard.cmdNav[2].Enabled);
}

class FlashFileChoice : public Wizard {
protected:
    void SetUp() override
    {
        Start();
        for (const char* name : {"F61999A.HEX", "F61999B.HEX", "F61999A.S19", "F61888A.HEX"})
            WriteFile(world.directory / name, ":");
        Session.iBoardType = 0;
        Session.sFlashFile = "F61999A.HEX";
        SetNavCmds(STEP_4);
    }

    SelectFlashFileForm& dialog = frmSelectFlashFileDialog;
};

TEST_F(FlashFileChoice, offers_the_family_and_takes_one)
{
    cmdOverrideFile_Click();
    EXPECT_TRUE(dialog.Self.Visible);
    EXPECT_FALSE(frmWizard.cmdNav[2].Enabled);
    EXPECT_EQ(dialog.cboChooseFile.List(), (std::vector<std::string>{"F61999A.HEX", "F61999B.HEX"}));
    EXPECT_EQ(dialog.cboChooseFile.ListIndex, 0);
    Choose(dialog.cboChooseFile, 1);
    Press(dialog.cmdOK);
    EXPECT_EQ(Session.sFlashFile, "F61999B.HEX");
    EXPECT_EQ(frmWizard.lblFlashFile.Caption(), "File to Flash is: F61999B.HEX");
    EXPECT_TRUE(Logged("++>Flash file selected by user: F61999B.HEX\r\n"));
    EXPECT_TRUE(frmWizard.cmdNav[2].Enabled);
    EXPECT_FALSE(dialog.Self.Visible);
}

TEST_F(FlashFileChoice, the_boot_areas_file_is_not_offered_but_goes_with_an_rf_boards_file)
{
    for (const char* name : {"DVBDSS.HEX", "DVBDSS2.HEX"}) WriteFile(world.directory / name, ":");
    Session.sFlashFile = "DVBDSS2.HEX";
    Session.iBoardType = 20;
    cmdOverrideFile_Click();
    EXPECT_EQ(dialog.cboChooseFile.List(), std::vector<std::string>{"DVBDSS2.HEX"});
    Press(dialog.cmdOK);
    EXPECT_EQ(Session.sFlashFileName, "DVBDSS.HEX");
    Session.sFlashFile = "F61888A.HEX";
    cmdOverrideFile_Click();
    EXPECT_TRUE(world.BoxWasShown("No other Flash files correct for the board and antenna found!"));
    EXPECT_FALSE(dialog.Self.Visible);
}

TEST_F(FlashFileChoice, cancel_and_leaving_the_step_keep_the_file)
{
    cmdOverrideFile_Click();
    Choose(dialog.cboChooseFile, 1);
    Press(dialog.cmdCancel);
    EXPECT_EQ(Session.sFlashFile, "F61999A.HEX");
    EXPECT_TRUE(frmWizard.cmdNav[2].Enabled);

    cmdOverrideFile_Click();
    SetStep(STEP_2);
    EXPECT_FALSE(dialog.Self.Visible) << "it would give this board's file to the next one";
    Press(dialog.cmdOK);
    EXPECT_EQ(Session.sFlashFile, "F61999A.HEX");
}

}  // namespace
