// Which board is it, and what will be done with it.

#include <gtest/gtest.h>

#include <stdexcept>

#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/RowSearch.h"
#include "knowledge/Utilities.h"
#include "knowledge/VersionReply.h"
#include "persistence/Logs.h"
#include "tests/VirtualComputer.h"

namespace {

TEST(RowSearch, EqualPairsMustBeAsManyAsTheRowsWords)
{
    EXPECT_TRUE(WordsFit("QEL JARL", "qel JARL 1.23 REV A", false));
    EXPECT_TRUE(WordsFit("DOCKSIDE LINK BOX BOARD", " DOCKSIDE LINK BOX BOARD", false));
    EXPECT_FALSE(WordsFit("QEL JARL GL", "QEL JARL 1.23", false));
    EXPECT_FALSE(WordsFit("QEL JARL", "QEL JARL QEL", false)) << "a repeated word overshoots";
    EXPECT_FALSE(WordsFit("DVB/DSS 6", "DVB/DSS 6 LM", true));
    EXPECT_TRUE(WordsFit("DVB/DSS 6 LM", "LM 6 DVB/DSS", true));
    EXPECT_FALSE(WordsFit("", "QEL  JARL", false)) << "a row without words is no board";
}

TEST(RowSearch, EndsAtTheFirstRowThatFitsOrAtTheTablesEnd)
{
    std::vector<AntennaRecord> table(5);
    for (int i : {0, 1, 3, 4}) table[static_cast<std::size_t>(i)].AntennaName = "antenna";
    table[1].BoardIdWords = table[4].BoardIdWords = "QEL JARL";
    EXPECT_TRUE(FindRow(table, 0, "QEL JARL 1", false).fits);
    EXPECT_EQ(FindRow(table, 0, "QEL JARL 1", false).row, 1);
    EXPECT_FALSE(FindRow(table, 2, "QEL JARL 1", false).fits) << "a row without a name ends the table";
    EXPECT_FALSE(FindRow(table, 3, "QEL JARL 1", false).fits) << "the last row ends the table too";
    EXPECT_FALSE(FindRow(table, 99, "QEL JARL 1", false).fits);
    EXPECT_FALSE(FindRow({}, 0, "QEL JARL 1", false).fits);
}

TEST(VersionReply, IsCutOnlyWhenItsLineIsComplete)
{
    EXPECT_FALSE(MainVersionIn("QEL JARL 1.23"));
    EXPECT_FALSE(MainVersionIn("\r\nQEL JARL 1.23"));
    EXPECT_EQ(MainVersionIn("QEL old\r\n>QEL JARL 1.23\r\n>"), "QEL JARL 1.23\r");
    EXPECT_FALSE(RFVersionBehindMain("@VER\r\n>RF: DVB/DSS 6A"));
    EXPECT_FALSE(RFVersionBehindMain(">RF: DVB/DSS 99\r\n"));
    EXPECT_EQ(RFVersionBehindMain("x>RF: RF: 2.1\r\nDVB/DSS 6A\r\n>"), "2.1 DVB/DSS 6A\r");
    EXPECT_FALSE(RFVersionIn("RF 1.0 DVB/DSS 6\r"));
    EXPECT_EQ(RFVersionIn(">RF 1.0\r\nDVB/DSS 6\r\n"), "RF 1.0 DVB/DSS 6");
    EXPECT_EQ(RFVersionIn("DVB/DSS 7 GL\r\n"), "DVB/DSS 7 GL");
    EXPECT_EQ(RevisionIn("\r\nFPGA Rev: B\r\n", "FPGA Rev: "), "B");
    EXPECT_FALSE(RevisionIn("\r\nFPGA Rev: B", "FPGA Rev: "));
    EXPECT_EQ(RevisionOfFile("F61340AB.S19"), "AB");
    EXPECT_EQ(RevisionOfFile(""), "");
}

class Identification : public testing::Test {
protected:
    VirtualComputer machine;
    void SetUp() override
    {
        OpenLog();
        Session.sCommonPreflashMain = {"@VER", "VERSION", ""};
        Session.iCommMode = STATE_GET_VERSIONS;
    }
    static void Reply(const std::string& chunk)
    {
        Session.sCommBuffer += chunk;
        ParseVersionReply();
    }
};

TEST_F(Identification, AMainBoardTellsBothVersionsInPieces)
{
    Session.iCommonPreflashMainIdx = 2;
    Reply(">RF: 2.1 DVB/");
    Reply("DSS 6A");
    EXPECT_EQ(Session.sRFVersion, "");
    Reply("\r\n");
    EXPECT_EQ(Session.sRFVersion, "2.1 DVB/DSS 6A\r");
    EXPECT_EQ(Session.sCommBuffer, "");
    Reply("QEL JARL 1");
    EXPECT_EQ(Session.iCommMode, STATE_GET_VERSIONS);
    Reply(".23\r\n>");
    EXPECT_EQ(Session.iCommMode, STATE_IDLE);
    EXPECT_EQ(frmWizard.lblBoardVersion.Caption(), "Main board: QEL JARL 1.23\nRF board: 2.1 DVB/DSS 6A");
}

TEST_F(Identification, AnAntennaWithAnRF1BoardIsIdentifiedToo)
{
    Session.iCommonPreflashMainIdx = 2;
    Reply("PCB Version A.2\r\n");
    EXPECT_TRUE(Session.bPCBVersionA2);
    Reply("QEL DUNE 1.0\r\n");
    EXPECT_EQ(Session.iCommMode, STATE_IDLE);
    EXPECT_NE(frmWizard.lblBoardVersion.Caption().find("RF1 Board detected"), std::string::npos);
}

TEST_F(Identification, AnRFBoardIsSortedByItsFirstAnswerAndAMultiStageBoardTellsItsRevisions)
{
    WriteFile(machine.directory / "F61340C.S19", "");
    machine.SetPortOpen(true);
    Session.iBoardType = 1;
    Reply("RF 1.0 DVB/DSS 6A GL\r\n");
    EXPECT_EQ(Session.iBoardType, 20);
    EXPECT_EQ(Session.iCommMode, STATE_IDLE);
    Reply("RF 1.0 DVB/DSS 7\r\n");
    EXPECT_EQ(Session.iBoardType, 20);

    Session.iBoardType = 1;
    Session.iCommMode = STATE_GET_VERSIONS;
    Session.sRFVersion.clear();
    Reply("RF 1.0 DVB/DSS 7 GL\r\n");
    EXPECT_EQ(Session.iBoardType, 21);
    EXPECT_EQ(Session.iCommMode, STATE_FPGA_REV);
    Session.sCommBuffer = "FPGA Rev: B\r\n";
    ParseFPGARev();
    EXPECT_EQ(Session.sFPGARev + Session.sLatestFPGARev, "BC");
    Session.sCommBuffer = "BAPI Rev: A\r\n";
    ParseBAPIRev();
    EXPECT_EQ(Session.sBAPIRev, "A");
    EXPECT_EQ(Session.sLatestBAPIRev, "") << "no file of the family is no newer revision";
    EXPECT_EQ(machine.sent, "FPGARev\r\nBAPIRev\r\n");
    EXPECT_EQ(Session.iCommMode, STATE_IDLE);
}

class BoardResolution : public Identification {
protected:
    void SetUp() override
    {
        Identification::SetUp();
        Session.AntennaTable.assign(4, {});
        ParseConfigLine("ANTENNA$First$QEL DUNE$R$P$F61999.HEX$1$0$0", 0);
        ParseConfigLine("ANTENNA$Second$Orbimaster OPAL$ READY $ PGM $F61118A.HEX$ 131072$16$7$DELAYXMIT 12", 1);
        ParseConfigLine("PREFLASH$ HALT $flasha", 1);
        ParseConfigLine("POSTFLASH$", 1);
        Session.sMainVersion = "QEL Orbimaster OPAL 1.2\r";
    }
};

TEST_F(BoardResolution, TheRowGivesThePlanAndTheNewestFile)
{
    for (const char* file : {"F61118A.HEX", "F61118B.HEX", "F61118T1.HEX"}) WriteFile(machine.directory / file, "");
    ResolveBoard();
    EXPECT_EQ(Session.iAntennaIdx, 1);
    EXPECT_EQ(Session.sBoardSignOn, "READY");
    EXPECT_EQ(Session.sFlashCmd, "PGM");
    EXPECT_EQ(Session.FirstFile.ImageSize, 131072);
    EXPECT_EQ(Session.FirstFile.AddressOffset, 16);
    EXPECT_EQ(Session.iLinePauseTicks, 12);
    EXPECT_TRUE(frmWizard.Timer2.Enabled);
    EXPECT_EQ(Session.sPreflashCmds, (std::vector<std::string>{"HALT", "flasha", ""}));
    EXPECT_EQ(Session.sPostflashCmds, (std::vector<std::string>{"", ""}));
    EXPECT_EQ(frmWizard.lblFlashFile.Caption(), "The Burnline will update the board with file: F61118B.HEX");
    EXPECT_NE(machine.Log().find("++>Board picked to flash is Second"), std::string::npos);
}

TEST_F(BoardResolution, AnOlderRFBoardGetsTheSoftwareThatGoesWithIt)
{
    Session.sRFVersion = "DVB/DSS 4";
    ResolveBoard();
    EXPECT_EQ(Session.sFlashFile, "F61118T1.HEX");
    Session.sRF5CompatibleMainFile = "F61999T2.HEX";
    ResolveBoard();
    EXPECT_EQ(Session.sFlashFile, "F61999T2.HEX");
    Session.sRFVersion.clear();
    Session.bPCBVersionA2 = true;
    ResolveBoard();
    EXPECT_EQ(Session.sFlashFile, "F61118L.HEX");
}

TEST_F(BoardResolution, AnUnknownBoardIsToldAndANumberThatIsNoneRefused)
{
    Session.sMainVersion = "QEL UNHEARD OF";
    machine.answers = {Answer::Cancel};
    ResolveBoard();
    EXPECT_TRUE(machine.BoxWasShown("Selected board configuration not found"));
    EXPECT_EQ(Session.sFlashFile, "");
    Session.sMainVersion = "Orbimaster OPAL";
    Session.AntennaTable[1].ImageSize = "128K";
    Session.sFlashCmd = "before";
    EXPECT_THROW(ResolveBoard(), std::invalid_argument);
    EXPECT_EQ(Session.sFlashCmd, "before") << "nothing of a bad row is taken";
}

TEST_F(BoardResolution, AnRFBoardHasTwoFilesAndALoader)
{
    Session.iBoardType = 20;
    Session.sRFVersion = "RF 1.0 DVB/DSS 6";
    Session.sRF6BootloaderFile = "LOADER.S19";
    machine.onModal = [](Form& form) { form.Visible = false; };
    ParseConfigLine("ANTENNA$QEL RF6 Board$DVB/DSS 6 LM$$$X.S19$1$0$0", 0);
    ParseConfigLine("ANTENNA$QEL RF6 Board$DVB/DSS 6$$$A.S19 : B.HEX$1$2$3$4$5$6", 1);
    ResolveBoard();
    EXPECT_EQ(Session.iAntennaIdx, 1);
    EXPECT_EQ(Session.sFlashFileName, "B.HEX");
    EXPECT_EQ(Session.SecondFile.CheckValue, 6);
    EXPECT_EQ(Session.sNewRFBootloaderFile, "LOADER.S19");
    EXPECT_EQ(frmWizard.lblFlashFile.Caption(), "The Burnline will update the board with file: F61205M.S19, B.HEX")
        << "the software of a model that wasn't chosen";
}

}  // namespace
