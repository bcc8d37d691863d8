#include <stdexcept>

#include "platform/Failure.h"
#include "tests/wizard/WizardFixture.h"

namespace {

class MessageCatalogue : public Wizard {
protected:
    void SetUp() override
    {
        Start();
        SetSetting(SETTING_AUTO_RETRY_ONCE, "False");
    }

    std::size_t PlaceInLog(const std::string& words) const { return text::Find(world.Log(), words); }
};

TEST_F(MessageCatalogue, a_failed_flash_is_retried_once_without_a_question_when_the_settings_say_so)
{
    SetSetting(SETTING_AUTO_RETRY_ONCE, "True");
    Session.iBoardType = 0;
    Session.iCommMode = STATE_FLASH_FAILED;
    frmWizard.cmdNav[0].Enabled = false;
    ShowMsgBox(15, "TimerHandler");
    EXPECT_TRUE(world.boxes.empty());
    EXPECT_EQ(Session.iCommMode, STATE_WAIT_RESET);
    EXPECT_EQ(Session.iWaitTicks, 0);
    EXPECT_TRUE(frmWizard.cmdNav[0].Enabled);
    ShowMsgBox(15, "TimerHandler");
    EXPECT_EQ(world.boxes.size(), 1u);
    EXPECT_TRUE(Logged("\r\n++>FLASHING_ERROR_CAN_RETRY: Will retry entire flash\r\n"));
    EXPECT_TRUE(Logged("\r\nShowMsgBox was called from TimerHandler with error code 15.\r\n"));
}

TEST_F(MessageCatalogue, boards_that_reset_on_command_are_reset_and_only_the_others_need_a_hand)
{
    for (const int code : {15, 29}) {
        for (const int type : {0, 2, 5, 7, 8, 10, 12, 14, 19}) {
            const bool resets = type >= 2 && type <= 12;
            Session.iBoardType = type;
            frmWizard.lblFlashStatus[0].Visible = false;
            frmWizard.lblFlashStatus[0].Caption = "";
            world.sent.clear();
            ShowMsgBox(code, "");
            EXPECT_EQ(world.sent, resets ? "flasha\r" : "") << "type " << type << " code " << code;
            EXPECT_EQ(frmWizard.lblFlashStatus[0].Visible(), code == 15);
            EXPECT_EQ(text::Holds(frmWizard.lblFlashStatus[0].Caption(), "Please cycle power"), code == 15 && !resets);
            EXPECT_EQ(Session.iCommMode, STATE_WAIT_RESET);
            EXPECT_EQ(Session.iWaitTicks, code == 15 ? 0 : 10);
        }
    }
    EXPECT_FALSE(Logged("ShowMsgBox was called from"));
}

TEST_F(MessageCatalogue, the_log_says_where_a_message_came_from_ahead_of_the_closing_line)
{
    Session.iCommMode = STATE_FLASH_FAILED;
    world.answers = {Answer::Cancel};
    ShowMsgBox(15, "TimerHandler");
    EXPECT_TRUE(IsExitRequested());
    EXPECT_NE(Session.iCommMode, STATE_WAIT_RESET);
    EXPECT_LT(PlaceInLog("++>FLASHING_ERROR_CAN_RETRY"), PlaceInLog("called from TimerHandler with error code 15."));
    EXPECT_LT(PlaceInLog("called from TimerHandler"), PlaceInLog("Shutting down Burnline Assistant - Cancelled"));
}

TEST_F(MessageCatalogue, a_failure_is_told_under_the_name_of_its_procedure_with_its_detail_in_the_log)
{
    Guarded("LoadFile", [] { throw Failure{FAIL_NOT_FOUND, "F61999A.HEX"}; });
    EXPECT_TRUE(world.BoxWasShown("Flash File Not Found."));
    EXPECT_FALSE(IsExitRequested());
    EXPECT_TRUE(Logged("++>LoadFile: F61999A.HEX\r\n"));
    EXPECT_TRUE(Logged("called from LoadFile with error code 53."));
    Guarded("LoadFile", [] { throw std::out_of_range("no such field"); });
    EXPECT_TRUE(world.BoxWasShown("An unknown error was encountered, #9."));
    EXPECT_TRUE(IsExitRequested());
    world.onBox = [](const Box&) { throw std::runtime_error("no screen"); };
    EXPECT_NO_THROW(ShowMsgBox(5, "StartFlash"));
    EXPECT_TRUE(Logged("no screen"));
}

}  // namespace
