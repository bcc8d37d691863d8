#include <stdexcept>

#include "flash/Phases.h"
#include "platform/Failure.h"
#include "tests/wizard/WizardFixture.h"

namespace {

class MessageCatalogue : public Wizard {
protected:
    void SetUp() override { Start(); }
};

TEST_F(MessageCatalogue, a_failed_flash_is_retried_once_without_a_question_when_the_settings_say_so)
{
    constexpr const char* origin = "\r\nShowMsgBox was called from TimerHandler with error code 15.\r\n";
    Session.flash.iFlashAutoRetries = 4;  // the silent ones are over
    world.answers = {Answer::Retry, Answer::Cancel};
    for (const auto& [once, boxes] : {std::pair{"False", 1u}, {"True", 1u}, {"True", 2u}}) {
        EXPECT_FALSE(IsExitRequested());
        SetSetting(SETTING_AUTO_RETRY_ONCE, once);
        FailFlash();
        ReportFlashFailure();
        EXPECT_EQ(world.boxes.size(), boxes);
        EXPECT_EQ(Session.link.iCommMode == STATE_WAIT_RESET, boxes == 1);
    }
    EXPECT_TRUE(IsExitRequested());
    EXPECT_EQ(text::Split(world.Log(), origin).size(), 3u + 1);
    EXPECT_LT(world.Log().rfind(origin), text::Find(world.Log(), "Shutting down Burnline Assistant - Cancelled"));
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
