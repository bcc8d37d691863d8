// A main board from "Welcome!" to "Finished!", and everything that can go wrong on the way.

#include "knowledge/BoardTable.h"
#include "session/Wizard.h"
#include "tests/flash/FlashFixture.h"
#include "text/Text.h"

namespace {

class EveryLineBoard : public FlashFixture, public testing::WithParamInterface<std::pair<int, const char*>> {};

TEST_P(EveryLineBoard, IsFlashedToTheByteAndKeepsItsParameters)
{
    const auto [type, unit] = GetParam();
    Start(type, unit);
    GoToFlash();
    ASSERT_TRUE(FlashRuns()) << frmWizard.txtStatus.Text() << pc.Log();
    ExpectMemoryEqualsFile();
    EXPECT_EQ(0, pc.antenna().RefusedLines());
    EXPECT_EQ(0, pc.antenna().StrayBytes());
    EXPECT_FALSE(pc.highPriority);
    if (BoardOf(type).holdsNoParams) {
        ASSERT_TRUE(Next());
        EXPECT_EQ(STEP_FINISHED, frmWizard.iCurrentStep);
        EXPECT_TRUE(text::Holds(frmWizard.lblPickAntennaInfo.Caption(), "RESTART the antenna now."));
        return;
    }
    if (!parametersBefore.empty()) {
        EXPECT_NE(parametersBefore, Preserved()) << "the erase should have lost them";
    }
    Finish();
    EXPECT_EQ(parametersBefore, Preserved());
    EXPECT_TRUE(pc.BoxWasShown("Parameter Upload Successful"));
    for (const char* told :
         {"++>Starting Burnline Assistant", "++>Version: 11-7702 Rev. T", "File to flash is ", "passed integrity test",
          "flashing, sending commands to antenna", "++>.....Erase done", "DO NOT POWER OFF ANTENNA",
          "++>.....PLEASE PRESS NEXT", "++>Post-Flash Successful, Parameters uploaded"})
        EXPECT_TRUE(text::Holds(pc.Log(), told)) << told;
}

INSTANTIATE_TEST_SUITE_P(All, EveryLineBoard,
                         testing::Values(std::pair{0, ""}, std::pair{2, ""}, std::pair{5, ""}, std::pair{7, ""},
                                         std::pair{8, ""}, std::pair{10, ""}, std::pair{12, ""}, std::pair{14, ""},
                                         std::pair{17, ""}, std::pair{18, ""}, std::pair{19, ""}),
                         [](const auto& test) { return "Type" + std::to_string(test.param.first); });

class HopelessFault : public FlashFixture {
protected:
    int Times(const std::string& words) const
    {
        int times = 0;
        const std::string log = pc.Log();
        for (std::size_t at = log.find(words); at != std::string::npos; at = log.find(words, at + 1)) ++times;
        return times;
    }

    /// Four silent retries, one more by the setting, then the question.
    void ExpectTheWholeLadder()
    {
        EXPECT_EQ(4, Times("++>FLASHING_ERROR_AUTO_RETRY: Will retry entire flash"));
        EXPECT_TRUE(Session.flash.bAutoRetryUsed);
        ASSERT_FALSE(pc.boxes.empty());
        EXPECT_EQ(Buttons::RetryCancel, pc.boxes.front().buttons);
        EXPECT_TRUE(text::Holds(pc.boxes.front().words, "inoperative until flashed again"));
    }

    /// Runs until the question is asked, then answers it.
    void RunToQuestion(Answer answer)
    {
        pc.answers = {answer};
        ASSERT_TRUE(pc.RunUntil([this] { return !pc.boxes.empty(); }, 3000)) << frmWizard.txtStatus.Text();
    }
};

TEST_F(HopelessFault, ALineThatStaysUnansweredEndsInTheQuestionAndRetrySucceeds)
{
    Start(5);
    GoToFlash();
    SetFault("silent 4 always");
    pc.onBox = [this](const Box&) { SetFault("clear"); };
    RunToQuestion(Answer::Retry);
    ExpectTheWholeLadder();
    ASSERT_TRUE(FlashRuns());
    ExpectMemoryEqualsFile();
    Finish();
    EXPECT_EQ(parametersBefore, Preserved()) << "the retries must not lose what was read at first";
}

TEST_F(HopelessFault, ALineThatIsRefusedForEverEndsInTheQuestionAndCancelEndsTheProgram)
{
    Start(5);
    GoToFlash();
    SetFault("refuse 3 always");
    RunToQuestion(Answer::Cancel);
    ExpectTheWholeLadder();
    EXPECT_TRUE(Session.program.bExitRequested);
    EXPECT_TRUE(text::Holds(pc.Log(), "++>Shutting down Burnline Assistant - Cancelled by User "));
}

TEST_F(HopelessFault, AnAntennaThatNeverSignsOnIsWaitedForWithWordsThatSayWhatToDo)
{
    Start(5);
    GoToFlash();
    SetFault("no-sign-on always");
    ASSERT_FALSE(FlashRuns(200));
    EXPECT_EQ(4, Times("++>FLASHING_ERROR_AUTO_RETRY: Will retry entire flash"));
    EXPECT_EQ(1, Times("++>FLASHING_ERROR_CAN_RETRY: Will retry entire flash"));
    EXPECT_TRUE(text::Holds(frmWizard.lblFlashStatus[0].Caption(), "cycle its power"));
    EXPECT_TRUE(frmWizard.cmdNav[0].Enabled());
    SetFault("clear");
    pc.SetPower(false);
    pc.RunFor(2);
    pc.SetPower(true);
    ASSERT_TRUE(FlashRuns());
    ExpectMemoryEqualsFile();
}

class LateAnswer : public FlashFixture, public testing::WithParamInterface<const char*> {};

/// Whoever has run ahead of the antenna repeats the wrong line at the refusal.
TEST_P(LateAnswer, CostsTimeAndNothingElse)
{
    Start(5);
    GoToFlash();
    ASSERT_TRUE(pc.RunUntil([] { return Session.link.iCommMode == STATE_SEND_LINES; }, 600));
    SetFault(GetParam());
    SetFault("refuse 9");
    ASSERT_TRUE(FlashRuns()) << frmWizard.txtStatus.Text() << pc.Log();
    SetFault("clear");
    pc.RunFor(5);
    ExpectMemoryEqualsFile();
    EXPECT_TRUE(text::Holds(frmWizard.txtStatus.Text(), "The antenna answers late, after "));
    Finish();
    EXPECT_EQ(parametersBefore, Preserved());
}

INSTANTIATE_TEST_SUITE_P(All, LateAnswer, testing::Values("late 3 1500", "slow 1160", "busy about 1 1900 86575"));

TEST_F(FlashFixture, WhatIsSentIsWhatWasTestedWithoutBlankLines)
{
    Start(5);
    ASSERT_TRUE(Next() && Next());
    Choose(frmWizard.cboBoardToFlash, 4);
    ASSERT_TRUE(Next() && Press(frmWizard.optSerial) && Next());
    const std::filesystem::path file = pc.directory / Session.plan->stages.front().sFlashFile;
    const std::string tested = "\r\n" + text::Replace(ReadFile(file), "\r\n:1022", "\r\n \r\n:1022") + "\r\n\t\r\n\r\n";
    WriteFile(file, tested);
    ASSERT_TRUE(Next());
    WriteFile(file, ReadFile(pc.directory / "F61118L.HEX"));
    ASSERT_TRUE(FlashRuns()) << frmWizard.txtStatus.Text();
    WriteFile(file, tested);
    ExpectMemoryEqualsFile();
    EXPECT_EQ(0, pc.antenna().RefusedLines());
    EXPECT_FALSE(text::Holds(pc.sent, ":00000001FF"));
}

}  // namespace
