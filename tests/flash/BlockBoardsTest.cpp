// Boards that take blocks, and the one of three stages: their memory to the byte, and what happens when they falter.

#include <algorithm>

#include "knowledge/BoardTable.h"
#include "persistence/INIUtilities.h"
#include "tests/flash/FlashFiles.h"
#include "tests/flash/FlashFixture.h"
#include "text/Text.h"

namespace {

namespace fs = std::filesystem;

class BlockFixture : public FlashFixture {
protected:
    /// Every .S19 file of the configuration: a flash file with a gap and data outside the window, or a boot loader.
    void StartBoard(int type, const std::string& unit = {})
    {
        Start(type, unit);
        const bool old = type == 1;
        Make("main.S19", type == 21 ? 3000 : (old ? 30000 : 64024), old ? 1500 + 32768 : 1000, "-Motorola");
        Shell("srec_cat " + Quoted(pc.directory / "main.S19") + " -exclude 6200 6208 -exclude 35000 35200 -o " +
              Quoted(pc.directory / "gap.S19") + " -Motorola -CRLF");
        Make("boot.S19", 4096, 128, "-Motorola");
        Make("upgrade.S19", 20000, 2000, "-Motorola -address-length=2");
        Make("second.HEX", 3000, 10000, "-Intel");
        const std::string config = ReadFile(pc.directory / "FLASHCFG.TXT");
        const std::string fields = text::Replace(text::Replace(text::Replace(config, "\r", ""), "\n", "$"), ":", "$");
        for (const std::string& name : text::Split(fields, "$"))
            if (text::Right(name, 4) == ".S19") Copy(type == 21 ? "main.S19" : "gap.S19", name);
        for (const char* boot : {"F61120A.S19", "F61130A.S19", "F61140A.S19", "F61145A.S19"}) Copy("boot.S19", boot);
        Copy("upgrade.S19", "F61110A.S19");
        for (const char* second : {"F61210A.HEX", "F61275A.HEX"}) Copy("second.HEX", second);
        Make("F61340B.S19", 2000, 9000, "-Motorola -header F61340B");
        Make("F61357B.S19", 1500, 500, "-Motorola -header F61357B");
    }

    void Copy(const std::string& from, const std::string& to)
    {
        WriteFile(pc.directory / to, ReadFile(pc.directory / from));
    }

    void Make(const std::string& name, std::size_t size, int offset, const std::string& options)
    {
        MakeFlashFile(pc.directory / name, size, offset, options);
    }

    /// Laid over an erased image of 128 KB.
    std::string Image(const std::string& name, const std::string& options)
    {
        return Judged(pc.directory / name, options, 131072);
    }

    std::string Held(const sim::Memory& memory) const
    {
        const auto image = memory.Image();
        return {image.begin(), image.end()};
    }

    void ExpectBlocksEqualFiles()
    {
        const bool old = board == 1;
        const bool second = !Session.plan->sFlashFileName.empty();
        const std::string boot = Image("boot.S19", "-Motorola");
        std::string image = Image("gap.S19", old ? "-Motorola -offset - 32768" : "-Motorola");
        if (second) {
            const std::string laidOver = Image("second.HEX", "-Intel");
            std::copy_n(laidOver.begin() + 10000, 3000, image.begin() + 10000);
        }
        if (old) std::copy_n(boot.begin() + 128, 4096, image.begin() + 128);
        std::string expected(old ? 32256 : 65024, '\xFF');
        const int bootFrom = old ? 144 : 512;
        const int bootEnd = old ? 528 : 2048;
        const int mainFrom = old ? 1024 : 6208;
        std::copy(boot.begin() + bootFrom, boot.begin() + bootEnd, expected.begin() + bootFrom);
        std::copy(image.begin() + mainFrom, image.begin() + static_cast<std::ptrdiff_t>(expected.size()),
                  expected.begin() + mainFrom);
        EXPECT_TRUE(expected == Held(pc.antenna().Flash()));
    }

    void ExpectStage(int stage, const std::string& file)
    {
        const std::string held = Held(pc.antenna().Stage(stage));
        EXPECT_TRUE(Image(file, "-Motorola").substr(0, held.size()) == held) << stage;
        EXPECT_GT(held.size(), 1000u) << stage;
    }
};

class EveryBlockBoard : public BlockFixture, public testing::WithParamInterface<std::pair<int, const char*>> {};

TEST_P(EveryBlockBoard, IsFlashedToTheByteAndKeepsItsParameters)
{
    const auto [type, unit] = GetParam();
    StartBoard(type, unit);
    GoToFlash();
    ASSERT_TRUE(FlashRuns(2000)) << frmWizard.txtStatus.Text() << pc.Log();
    ExpectBlocksEqualFiles();
    Finish();
    EXPECT_EQ(parametersBefore, Preserved());
}

INSTANTIATE_TEST_SUITE_P(All, EveryBlockBoard,
                         testing::Values(std::pair{1, "RF5"}, std::pair{3, "CORA MOTOR"},
                                         std::pair{3, "CORA MOTOR OLD"}, std::pair{4, "CORA RF"},
                                         std::pair{6, "DUNE MOTOR"}, std::pair{6, "DUNE MOTOR OLD"},
                                         std::pair{9, "FJOR MOTOR OLD"}, std::pair{11, "BRIX RF"},
                                         std::pair{13, "BRIX MOTOR"}, std::pair{15, "TOSA"}, std::pair{16, "DOCKSIDE"},
                                         std::pair{20, "RF6"}, std::pair{20, "RF6A"}, std::pair{20, "RF6 LM"}),
                         [](const auto& test) {
                             return "Type" + std::to_string(test.param.first) +
                                    text::Replace(test.param.second, " ", "_");
                         });

TEST_F(BlockFixture, AnOldBootLoaderIsReplacedFirst)
{
    StartBoard(1, "RF2 OLD");
    GoToFlash();
    ASSERT_TRUE(pc.RunUntil([this] { return pc.BoxWasShown("The bootloader has been upgraded"); }, 600))
        << frmWizard.txtStatus.Text();
    EXPECT_TRUE(pc.antenna().HasNewLoader());
    const std::string judged = Image("upgrade.S19", "-Motorola");
    EXPECT_TRUE(judged.substr(1024, 31232) == Held(pc.antenna().BootImage()).substr(1024));
    pc.SetPower(false);
    pc.RunFor(3);
    pc.SetPower(true);
    ASSERT_TRUE(FlashRuns()) << frmWizard.txtStatus.Text();
    ExpectBlocksEqualFiles();
}

/// One of the files of a flash.
struct Part {
    int type;
    const char* unit;
    const char* file;
    bool missing;  // else it is empty
};

class AnyFile : public BlockFixture, public testing::WithParamInterface<Part> {};

TEST_P(AnyFile, ThatIsMissingOrBadIsNamedBeforeAnythingIsSent)
{
    const Part& part = GetParam();
    StartBoard(part.type, part.unit);
    WriteFile(pc.directory / part.file, "");
    if (part.missing) fs::remove(pc.directory / part.file);
    GoToFlash();
    const std::size_t sentBefore = pc.sent.size();
    pc.RunFor(60);
    EXPECT_EQ(sentBefore, pc.sent.size()) << pc.sent.substr(sentBefore);
    EXPECT_TRUE(StatusSays(part.file)) << frmWizard.txtStatus.Text();
    EXPECT_EQ(STATE_IDLE, Session.link.iCommMode);
}

INSTANTIATE_TEST_SUITE_P(All, AnyFile,
                         testing::Values(Part{20, "RF6A", "F61275A.HEX", true}, Part{20, "RF6A", "F61275A.HEX", false},
                                         Part{20, "RF6 LM", "F61207A.S19", false},
                                         Part{20, "RF6 LM", "F61140A.S19", true},
                                         Part{1, "RF2 OLD", "F61110A.S19", true},
                                         Part{1, "RF2 OLD", "F61110A.S19", false},
                                         Part{21, "RF7", "F61340B.S19", false}));

TEST_F(BlockFixture, AFileThatMayBeCutIsFlashedOnlyWhenTheUserWantsIt)
{
    StartBoard(20, "RF6 LM");
    const fs::path file = pc.directory / "F61207A.S19";
    const std::string whole = ReadFile(file);
    WriteFile(file, whole.substr(0, whole.find("\nS5") + 1));
    pc.answers = {Answer::No};
    GoToFlash();
    ASSERT_EQ(1u, pc.boxes.size());
    EXPECT_EQ(Answer::No, pc.boxes[0].standard);
    EXPECT_TRUE(text::Holds(pc.boxes[0].words, "F61207A.S19: it has neither an end record nor a count"));
    EXPECT_EQ(STATE_IDLE, Session.link.iCommMode);
    pc.answers = {Answer::Yes};
    ASSERT_TRUE(Press(frmWizard.cmdNav[1]) && Next());
    ASSERT_TRUE(FlashRuns(2000)) << frmWizard.txtStatus.Text();
    ExpectBlocksEqualFiles();
}

/// A course of the three-stage board: its unit, and the stages that it needs.
struct Course {
    const char* unit;
    bool fpga, bapi, fast;
};

class EveryCourse : public BlockFixture, public testing::WithParamInterface<Course> {};

TEST_P(EveryCourse, OfTheThreeStageBoardReachesItsEnd)
{
    const Course course = GetParam();
    StartBoard(21, course.unit);
    if (course.fast) SetSetting(SETTING_USE_FAST_BAUD, "True");
    // One that doesn't tell its revisions is waited for until it says anything at all.
    pc.At(40, [this] { pc.antenna().Print("STATUS OK", pc.now); });
    GoToFlash();
    ASSERT_EQ(21, Session.plan->iBoardType) << frmWizard.lblBoardVersion.Caption();
    ASSERT_TRUE(FlashRuns(3000)) << frmWizard.txtStatus.Text() << pc.Log();
    ExpectStage(1, "main.S19");
    if (course.fpga) ExpectStage(2, "F61340B.S19");
    if (course.bapi) ExpectStage(3, "F61357B.S19");
    EXPECT_EQ(course.fpga, StatusSays("Power cycle to start FPGA flash!"));
    EXPECT_EQ(course.bapi, StatusSays("Power cycle to start Acquisition Processor flash!"));
    EXPECT_EQ("9600,N,8,1", pc.Settings());
    Finish();
    EXPECT_EQ(parametersBefore, Preserved());
}

INSTANTIATE_TEST_SUITE_P(All, EveryCourse,
                         testing::Values(Course{"RF7 NEW", false, false, false}, Course{"RF7 MA", true, false, false},
                                         Course{"RF7 GL", false, true, false}, Course{"RF7", true, true, false},
                                         Course{"RF7", true, true, true}, Course{"RF7 MUTE", true, true, false}),
                         [](const auto& test) {
                             return text::Replace(test.param.unit, " ", "_") + (test.param.fast ? "_fast" : "");
                         });

TEST_F(BlockFixture, BadRepliesAndTimeOutsOfTheThreeStageBoardAreResentUpToTheirLimits)
{
    StartBoard(21, "RF7 NEW");
    GoToFlash();
    SetFault("refuse 20 6");
    SetFault("silent 30");
    SetFault("silent 60");
    ASSERT_TRUE(FlashRuns(3000)) << frmWizard.txtStatus.Text() << pc.Log();
    ExpectStage(1, "main.S19");
    EXPECT_EQ(3, Session.attempt.iLineRetries) << "two silences and the one that follows the sixth bad reply";
}

TEST_F(BlockFixture, FiveSilencesSpreadOverTheFileFailTheThreeStageBoardsTransfer)
{
    StartBoard(21, "RF7 NEW");
    GoToFlash();
    for (const char* silence : {"silent 5", "silent 25", "silent 45", "silent 65", "silent 85"}) SetFault(silence);
    ASSERT_TRUE(FlashRuns(3000)) << frmWizard.txtStatus.Text();
    EXPECT_TRUE(text::Holds(pc.Log(), "Will retry entire flash")) << "the time-outs add up, whatever lies between them";
    ExpectStage(1, "main.S19");
}

class USBLink : public BlockFixture {
protected:
    /// The switch of an antenna whose port lives on its power.
    void Switch(bool on)
    {
        pc.SetPower(on);
        pc.deviceGone = !on;
    }

    void FlashOverUSB()
    {
        StartBoard(15, "TOSA");
        ASSERT_TRUE(Next() && Next());
        Choose(frmWizard.cboOtherBoard, 7);
        ASSERT_TRUE(Next() && Press(frmWizard.optUSB) && Next());
        parametersBefore = Preserved();
        ASSERT_TRUE(Next());
        ASSERT_TRUE(pc.RunUntil([] { return Session.link.iCommMode == STATE_WAIT_RESET; }, 60));
        Switch(false);
        pc.RunFor(5);
        Switch(true);
        ASSERT_TRUE(pc.RunUntil([] { return Session.flash.iFlashPhase == FLASH_FINISHED; }, 600)) << pc.Log();
        EXPECT_TRUE(pc.boxes.empty()) << "the port was expected to go";
        ASSERT_TRUE(Next());
        pc.RunFor(2);
        Switch(false);
        pc.RunFor(8);
    }
};

TEST_F(USBLink, ThatNeverComesBackLeavesWordsAndAWayOut)
{
    FlashOverUSB();
    pc.RunFor(300);
    EXPECT_TRUE(text::Holds(frmWizard.txtParamsSent.Text(), "COM7 has gone with the antenna's power."));
    EXPECT_EQ(STATE_WAIT_PORT_BACK, Session.link.iCommMode);
    ASSERT_TRUE(Press(frmWizard.cmdNav[0]));
    EXPECT_TRUE(pc.BoxWasShown("Parameters have not been uploaded yet!"));
    EXPECT_TRUE(Session.program.bExitRequested);
}

}  // namespace
