#include "knowledge/BoardTable.h"
#include "tests/wizard/WizardFixture.h"

namespace {

class BoardChoice : public Wizard {
protected:
    void SetUp() override
    {
        Start();
        SetStep(STEP_2);
    }
};

TEST_F(BoardChoice, the_option_of_an_empty_list_does_not_keep_the_board_chosen_before)
{
    PressOption(frmWizard.Self, frmWizard.optBoardToFlash[0]);
    EXPECT_TRUE(frmWizard.cmdNav[2].Enabled);
    PressOption(frmWizard.Self, frmWizard.optBoardToFlash[2]);
    EXPECT_EQ(Session.choice.iBoardType, NoBoard);
    EXPECT_FALSE(frmWizard.cmdNav[2].Enabled);
}

class FlashFileChoice : public Wizard {
protected:
    void SetUp() override
    {
        Start();
        for (const char* name : {"F61999A.HEX", "F61999B.HEX", "F61999A.S19", "F61888A.HEX"})
            WriteFile(world.directory / name, ":");
        FlashConfig config;
        config.Main.AntennaTable = {Row("HOLMMCU", "F61999A.HEX"), Row("KELP Unit", "F61888A.HEX")};
        config.RF.AntennaTable = {Row("CORA RF BOARD", "DVBDSS2.HEX")};
        Session.config = config;
        Plan(frmWizard.cboOtherBoard, 2);
    }

    static AntennaRecord Row(const std::string& words, const std::string& file)
    {
        AntennaRecord row;
        row.AntennaName = row.BoardIdWords = words;
        row.FlashFiles = file;
        return row;
    }

    static void Plan(Control& list, int entry)
    {
        Choose(list, entry);
        SetStep(STEP_4);
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
    Press(dialog.cmdOK);
    EXPECT_EQ(Session.plan->stages.front().sFlashFile, "F61999A.HEX");
    EXPECT_EQ(frmWizard.lblFlashFile.Caption(), "File to Flash is: F61999A.HEX");
    EXPECT_TRUE(Logged("++>Flash file selected by user: F61999A.HEX\r\n"));
    EXPECT_TRUE(frmWizard.cmdNav[2].Enabled);
    EXPECT_FALSE(dialog.Self.Visible);
}

TEST_F(FlashFileChoice, the_boot_areas_file_is_not_offered_but_goes_with_an_rf_boards_file)
{
    for (const char* name : {"DVBDSS2.HEX", "DVBDSS3.HEX"}) WriteFile(world.directory / name, ":");
    Plan(frmWizard.cboBoardToFlash, 3);
    for (const std::string second : {"", "DVBDSS.HEX"}) {  // it doesn't when it isn't there
        if (!second.empty()) WriteFile(world.directory / second, ":");
        cmdOverrideFile_Click();
        EXPECT_EQ(dialog.cboChooseFile.List(), (std::vector<std::string>{"DVBDSS2.HEX", "DVBDSS3.HEX"}));
        Press(dialog.cmdOK);
        EXPECT_EQ(Session.plan->sFlashFileName, second);
    }
    Plan(frmWizard.cboOtherBoard, 5);
    cmdOverrideFile_Click();
    EXPECT_TRUE(world.BoxWasShown("No other Flash files correct for the board and antenna found!"));
    EXPECT_FALSE(dialog.Self.Visible);
}

TEST_F(FlashFileChoice, cancel_and_leaving_the_step_keep_the_file)
{
    cmdOverrideFile_Click();
    Press(dialog.cmdCancel);
    EXPECT_EQ(Session.plan->stages.front().sFlashFile, "F61999B.HEX");
    EXPECT_TRUE(frmWizard.cmdNav[2].Enabled);

    cmdOverrideFile_Click();
    SetStep(STEP_2);
    EXPECT_FALSE(dialog.Self.Visible) << "it would give this board's file to the next one";
    Press(dialog.cmdOK);
    EXPECT_EQ(Session.plan->stages.front().sFlashFile, "F61999B.HEX");
}

}  // namespace
