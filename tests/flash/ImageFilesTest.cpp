// The files that are sent from an image: what of them belongs to the board, and what is refused before anything is
// erased. The judge is srec_cat.

#include <gtest/gtest.h>

#include "flash/FlashRFBoard.h"
#include "forms/frmWizard.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "tests/VirtualComputer.h"
#include "tests/flash/FlashFiles.h"
#include "text/Text.h"

namespace {

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

TEST_F(ImageFiles, TheWindowTheBiasAndTheGapsAreTheBoards)
{
    Make("F1.S19", 70000, 1000, "-Motorola -CRLF");
    Shell("srec_cat " + Quoted(pc.directory / "F1.S19") + " -exclude 20000 30000 -o " +
          Quoted(pc.directory / "gaps.S19") + " -Motorola -CRLF");
    for (const int bias : {0, 4000, -500}) {
        CheckS19File("gaps.S19", bias, 11, S19File::Software);
        const std::string offset = bias < 0 ? "- " + std::to_string(-bias) : std::to_string(bias);
        EXPECT_FALSE(Session.flash.bFlashFileBad) << frmWizard.txtStatus.Text();
        // A record counts as a whole when it begins inside the window; these lie 28 bytes apart at the most.
        const std::string judged = Image("gaps.S19", "-Motorola -offset " + offset);
        const std::string image = Bytes(Session.flash.FlashImage);
        EXPECT_EQ(judged.substr(6208 + 32, 131072 - 6208 - 32), image.substr(6208 + 32, 131072 - 6208 - 32)) << bias;
        EXPECT_EQ(std::string(6208, '\xFF'), image.substr(0, 6208));
    }
    EXPECT_TRUE(text::Holds(pc.Log(), "gaps.S19 passed integrity test. "));
}

TEST_F(ImageFiles, BoardOneFoldsItsHighCopyDown)
{
    Make("F2.S19", 30000, 33000, "-Motorola");
    CheckS19File("F2.S19", 0, 1, S19File::Software);
    EXPECT_FALSE(Session.flash.bFlashFileBad);
    EXPECT_EQ(Image("F2.S19", "-Motorola -offset - 32768"), Bytes(Session.flash.FlashImage));
}

TEST_F(ImageFiles, TheBootLoaderIsLaidOverTheImageInsideItsOwnWindow)
{
    Make("F3.S19", 50000, 6208, "-Motorola");
    Make("BOOT.S19", 4096, 128, "-Motorola");
    CheckS19File("F3.S19", 0, 20, S19File::Software);
    CheckS19File("BOOT.S19", 0, 20, S19File::BootLoader);
    const std::string main = Image("F3.S19", "-Motorola");
    const std::string boot = Image("BOOT.S19", "-Motorola");
    EXPECT_EQ(boot.substr(0, 6208) + main.substr(6208), Bytes(Session.flash.FlashImage));
}

TEST_F(ImageFiles, TheSecondFileIsFoldedAtItsLengthButForFourBoards)
{
    Make("F4.HEX", 3000, 100, "-Intel");
    for (const int type : {16, 20}) {
        Session.flash.FlashImage.fill(255);
        CheckHexImageFile("F4.HEX", {65536, 66000, 0}, type);
        EXPECT_FALSE(Session.flash.bFlashFileBad) << frmWizard.txtStatus.Text();
        const std::string offset = std::to_string(type == 16 ? 66000 - 65536 : 66000);
        EXPECT_EQ(Image("F4.HEX", "-Intel -offset " + offset), Bytes(Session.flash.FlashImage)) << type;
    }
    CheckHexImageFile("F4.HEX", {65536, 0, 65000}, 20);
    EXPECT_FALSE(Session.flash.bFlashFileBad);
}

/// One line in the middle of a sound file, and whether it is refused. The first record stands in line 1.
struct Odd {
    const char* name;
    const char* line;
    bool refused;
};

class OddRecord : public ImageFiles, public testing::WithParamInterface<Odd> {};

TEST_P(OddRecord, IsRefusedWithItsNumberOrPassesAsItShould)
{
    WriteFile(pc.directory / "odd.S19",
              std::string("S0030000FC\r\nS1041900AA38\r\n") + GetParam().line + "\r\nS9030000FC\r\n");
    CheckS19File("odd.S19", 0, 11, S19File::Software);
    EXPECT_EQ(GetParam().refused, Session.flash.bFlashFileBad) << frmWizard.txtStatus.Text();
    EXPECT_EQ(GetParam().refused, StatusSays("Possible file corruption at record: 3"));
    EXPECT_EQ(GetParam().refused, StatusSays("odd.S19: "));
    EXPECT_EQ(0xAA, Session.flash.FlashImage[0x1900]);
}

INSTANTIATE_TEST_SUITE_P(
    All, OddRecord,
    testing::Values(Odd{"BadSumInsideTheWindow", "S1041901AA38", true},
                    Odd{"BadSumOutsideTheWindow", "S1040010AA00", false},
                    Odd{"CountBeyondTheLine", "S1201901AA37", true}, Odd{"CountTooSmall", "S1011901AA37", true},
                    Odd{"NoHexDigit", "S10419G1AA37", true}, Odd{"TypeIsNoNumber", "SX041901AA37", true},
                    Odd{"JustTheLetter", "S", true}, Odd{"CountRecord", "S5030001FB", false},
                    Odd{"LongStartRecord", "S70500000000FA", false}, Odd{"LowerCase", "s1041901aa37", false},
                    Odd{"BlankLine", "", false}, Odd{"AnotherKindOfLine", "; made today", false}),
    [](const auto& test) { return test.param.name; });

TEST_F(ImageFiles, FilesThatCouldEraseABoardForNothingAreRefused)
{
    WriteFile(pc.directory / "none.S19", "S0030000FC\nS9030000FC\n");
    CheckS19File("none.S19", 0, 11, S19File::Software);
    EXPECT_TRUE(Session.flash.bFlashFileBad);
    EXPECT_TRUE(StatusSays("none.S19: the file holds no data for this board."));

    Session.flash.bFlashFileBad = false;
    Make("F5.S19", 1000, 131000, "-Motorola");
    CheckS19File("F5.S19", 0, 11, S19File::Software);
    EXPECT_TRUE(Session.flash.bFlashFileBad);
    EXPECT_TRUE(StatusSays("F5.S19: an address lies beyond the board's memory."));

    Session.flash.bFlashFileBad = false;
    CheckS19File("absent.S19", 0, 11, S19File::Software);
    EXPECT_TRUE(Session.flash.bFlashFileBad);
}

TEST_F(ImageFiles, TwoMegabytesForTheThreeStageBoardPassWhateverTheirAddresses)
{
    Make("F6.S19", 900000, 0, "-Motorola");
    ASSERT_GT(std::filesystem::file_size(pc.directory / "F6.S19"), 2000000u);
    const BoardImage before = Session.flash.FlashImage;
    CheckS19File("F6.S19", 0, 21, S19File::Software);
    EXPECT_FALSE(Session.flash.bFlashFileBad) << frmWizard.txtStatus.Text();
    EXPECT_EQ(before, Session.flash.FlashImage);
}

}  // namespace
