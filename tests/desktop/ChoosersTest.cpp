// The dialogs in which the user names the antenna, in the real window.

#include <QThread>

#include "tests/desktop/RealWindow.h"

namespace {

class Choosers : public RealWindow {
protected:
    void StartUnit(int board, const std::string& unit)
    {
        antenna = std::make_unique<AntennaProcess>(board, home.AntennaLink(), true, unit);
    }

    /// From "Welcome!" to the versions, and what is said of them.
    void AskForVersions(const std::string& board, const std::string& told)
    {
        StartWizard();
        AwaitPortReady();
        wizard->Click("cmdNav_2");
        wizard->Click("cmdNav_2");
        wizard->Click(board);
        wizard->Click("cmdNav_2");
        wizard->WaitForText("lblBoardVersion", told, 60);
    }

    void AwaitShown(const std::string& dialog)
    {
        wizard->WaitUntil(dialog + " opens", [&] { return wizard->See(dialog).visible; });
    }

    void AwaitGone(const std::string& dialog)
    {
        wizard->WaitUntil(dialog + " closes", [&] { return !wizard->See(dialog).visible; });
    }

    /// A dialog that wants an answer ignores Escape. The key is through when the click behind it has had its effect.
    void ExpectStaysOpen(const std::string& dialog, const std::string& option)
    {
        EXPECT_FALSE(wizard->See(dialog + "/cmdOK").enabled);
        wizard->PressKey("Escape");
        wizard->Click(dialog + "/" + option);
        wizard->WaitUntil("OK", [&] { return wizard->See(dialog + "/cmdOK").enabled; });
        EXPECT_TRUE(wizard->See(dialog).visible);
    }
};

TEST_F(Choosers, a_long_list_of_models_scrolls_and_fits_the_screen)
{
    std::string config = home.Bytes("FLASHCFG.TXT");
    const std::string begin = "BEGIN MARINE RF6 DISH1000 SOFTWARE COMPATIBILITY\n";
    std::string models;
    for (int model = 1; model <= 60; ++model) models += "Marine Model " + std::to_string(model) + "$F61205M.S19\n";
    models += "Marine Model 61$F61205D.S19\n";
    config.insert(config.find(begin) + begin.size(), models);
    WriteAll(home.Path("FLASHCFG.TXT"), config);
    WriteAll(home.Path("F61205D.S19"), "");
    StartUnit(20, "RF6");
    AskForVersions("optBoardToFlash_1", "DVB/DSS 6");
    wizard->Click("cmdNav_2");
    AwaitShown("frmCheckAntennasForRF6");
    ExpectStaysOpen("frmCheckAntennasForRF6", "optLM_0");
    wizard->Click("frmCheckAntennasForRF6/optMarine_60");
    wizard->WaitUntil("one model in both lists",
                      [&] { return !wizard->See("frmCheckAntennasForRF6/optLM_0").checked; });
    EXPECT_TRUE(wizard->See("frmCheckAntennasForRF6/optMarine_60").checked);
    wizard->Click("frmCheckAntennasForRF6/cmdOK");
    wizard->WaitForText("lblFlashFile", "F61205D.S19, F61210A.HEX");
    AwaitGone("frmCheckAntennasForRF6");
}

TEST_F(Choosers, the_library_is_offered_to_a_jarl_until_it_is_answered_or_the_program_ends)
{
    for (const char* file : {"F61293A.HEX", "F61236A.HEX"}) home.MakeFlashFile(file, 10);
    StartUnit(0, "JARL 6A");
    AskForVersions("optBoardToFlash_0", "QEL JARL");
    wizard->Click("cmdNav_2");
    AwaitShown("frmCheckJarlForGLTV");
    ExpectStaysOpen("frmCheckJarlForGLTV", "optGLTV_0");
    wizard->Click("frmCheckJarlForGLTV/optGLTV_1");
    wizard->WaitUntil("one option", [&] { return !wizard->See("optGLTV_0").checked; });
    wizard->Click("frmCheckJarlForGLTV/optGLTV_0");
    wizard->Click("frmCheckJarlForGLTV/cmdOK");
    wizard->WaitForText("lblFlashFile", "F61293A.HEX");

    wizard->Click("cmdNav_1");
    wizard->WaitForText("lblBoardVersion", "QEL JARL", 20);
    wizard->Click("cmdNav_2");
    AwaitShown("frmCheckJarlForGLTV");
    EXPECT_FALSE(wizard->See("optGLTV_0").checked);
    wizard->Close();
    EXPECT_TRUE(wizard->EndsWithin(10));
    EXPECT_EQ(wizard->ExitCode(), 0);
    EXPECT_EQ(FirstOutOfOrder(home.Bytes("BNL.LOG"), {"Burnline Assistant - Cancelled by User"}), "");
}

}  // namespace
