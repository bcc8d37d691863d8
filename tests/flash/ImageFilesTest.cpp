// The files that are sent from an image: what of them belongs to the board, and what is refused before anything is
// erased. The judge is srec_cat.

#include <gtest/gtest.h>

#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "forms/frmWizard.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "tests/VirtualComputer.h"
#include "tests/flash/FlashFiles.h"
#include "text/Text.h"

namespace {

// A record at the begin of the main leg, of either kind, and an end record.
#define S "S1041900AA38\r\n"
#define H ":0419000001020304D9\r\n"
#define END ":00000001FF\r\n"

class ImageFiles : public testing::Test {
protected:
    ImageFiles() { OpenLog(); }

    void Make(const std::string& name, std::size_t size, int offset, const std::string& options)
    {
        MakeFlashFile(pc.directory / name, size, offset, options);
    }

    /// Laid over an erased image.
    std::string Image(const std::string& name, const std::string& options)
    {
        return Judged(pc.directory / name, options, 131073);
    }

    static std::string Bytes(const BoardImage& image) { return {image.begin(), image.end()}; }
    bool StatusSays(const std::string& words) const { return text::Holds(frmWizard.txtStatus.Text(), words); }

    VirtualComputer pc;
};

TEST_F(ImageFiles, TheBiasAndTheGapsAreTheBoards)
{
    Make("F1.S19", 30000, 20000, "-Motorola -CRLF");
    Shell("srec_cat " + Quoted(pc.directory / "F1.S19") + " -exclude 20000 30000 -o " +
          Quoted(pc.directory / "gaps.S19") + " -Motorola -CRLF");
    for (const int bias : {0, 4000, -500}) {
        CheckS19File("gaps.S19", bias, 11, S19File::Software);
        const std::string offset = bias < 0 ? "- " + std::to_string(-bias) : std::to_string(bias);
        EXPECT_FALSE(Session.flash.bFlashFileBad) << frmWizard.txtStatus.Text();
        EXPECT_EQ(Image("gaps.S19", "-Motorola -offset " + offset), Bytes(Session.flash.FlashImage)) << bias;
    }
    EXPECT_TRUE(text::Holds(pc.Log(), "gaps.S19 passed integrity test. "));
}

TEST_F(ImageFiles, TheSecondFileIsFoldedAtItsLengthButForFourBoards)
{
    Make("F4.HEX", 3000, 100, "-Intel");
    for (const int type : {16, 20}) {
        Session.flash.FlashImage.fill(255);
        CheckHexImageFile("F4.HEX", {65536, type == 16 ? 72208 : 6672, 0}, type);
        EXPECT_FALSE(Session.flash.bFlashFileBad) << frmWizard.txtStatus.Text();
        EXPECT_EQ(Image("F4.HEX", "-Intel -offset 6672"), Bytes(Session.flash.FlashImage)) << type;
    }
    CheckHexImageFile("F4.HEX", {65536, 0, 65000}, 20);
    EXPECT_TRUE(StatusSays("F4.HEX: the file holds no data for this board."));
}

TEST_F(ImageFiles, HalfOfWhatTheRevisionBeforeFillsIsWarnedOf)
{
    Make("F61207A.S19", 58816, 6208, "-Motorola");
    for (const int size : {58816, 45000, 44000}) {
        Make("F61207B.S19", static_cast<std::size_t>(size), 6208, "-Motorola");
        Session.flash.warnings.clear();
        CheckS19File("F61207B.S19", 0, 20, S19File::Software);
        EXPECT_EQ(size == 44000, !Session.flash.warnings.empty()) << size;
    }
    EXPECT_EQ("F61207B.S19: it fills 74 % of its memory, and F61207A.S19 fills 100 %", Session.flash.warnings.front());
}

enum class As { Lines, Software, Boot, Second, Stage };

/// A file that a human would call broken, and why it is refused.
struct Broken {
    const char* name;
    As as;
    const char* content;
    const char* words;
};

class BrokenFile : public ImageFiles, public testing::WithParamInterface<Broken> {};

TEST_P(BrokenFile, IsRefusedWithItsLineAndTheReason)
{
    WriteFile(pc.directory / "broken", GetParam().content);
    switch (GetParam().as) {
    case As::Lines: CheckHexFile("broken"); break;
    case As::Software: CheckS19File("broken", 0, 11, S19File::Software); break;
    case As::Boot: CheckS19File("broken", 0, 11, S19File::BootLoader); break;
    case As::Stage: CheckS19File("broken", 0, 21, S19File::Software); break;
    case As::Second: CheckHexImageFile("broken", {65536, 0, 0}, 16);
    }
    EXPECT_TRUE(Session.flash.bFlashFileBad);
    EXPECT_TRUE(StatusSays(std::string("broken: ") + GetParam().words)) << frmWizard.txtStatus.Text();
}

INSTANTIATE_TEST_SUITE_P(
    All, BrokenFile,
    testing::Values(
        Broken{"BitInTheS", As::Software, S "R1041901AA37\r\nS9030000FC\r\n", "line 2: the line is no S-record"},
        Broken{"BitInTheType", As::Software, S "S5041901AA37\r\nS9030000FC\r\n",
               "line 2: the count doesn't fit the type"},
        Broken{"BitInALineEnd", As::Software, "S1041901AA37\r\v" S "S9030000FC\r\n",
               "line 1: there is a CR without its LF"},
        Broken{"CountThatDiffers", As::Software, S "S5030002FA\r\n",
               "line 2: the file counts 2 data records and holds 1"},
        Broken{"DataBehindTheEnd", As::Software, S "S9030000FC\r\n\r\n" S, "line 4: there is something behind"},
        Broken{"BadSumOutsideTheWindow", As::Software, S "S1040010AA00\r\n", "line 2: the checksum is 00"},
        Broken{"AcrossTheBegin", As::Software, "S107183E0102030498\r\n" S,
               "line 1: data from 183E to 1841 reach out of what the board takes, 1840 to FDFF"},
        Broken{"BeyondTheEnd", As::Software, S "S104FE00AA53\r\n", "line 2: data from FE00 to FE00 reach out"},
        Broken{"BitInATypeBeyondTheMemory", As::Stage, "S306002080010256\r\n", "line 1: data from 208001"},
        Broken{"BootIsHex", As::Boot, H END, "line 1: the line is no S-record"},
        Broken{"BootWithoutItsLeg", As::Boot, "S1040090AAC1\r\nS9030000FC\r\n",
               "the file holds no data for this board"},
        Broken{"HexWithoutItsEnd", As::Lines, H, "the file ends before its end record"},
        Broken{"HexBehindItsEnd", As::Lines, H END H, "line 3: there is something behind the end record"},
        Broken{"BadSumOfAnExtendedAddress", As::Lines, ":020000040001F8\r\n" H END, "line 1: the checksum is F8"},
        Broken{"SecondCutInHalf", As::Second, H, "the file ends before its end record"},
        Broken{"SecondWithABitInAType", As::Second, H ":0419040401020304D5\r\n" END, "line 2: the checksum is D5"},
        Broken{"SecondFoldedOntoPage0", As::Second, H ":020000040001F9\r\n:0402000001020304F0\r\n" END,
               "line 3: data from 10200 to 10203 reach out"}),
    [](const auto& test) { return test.param.name; });

}  // namespace
