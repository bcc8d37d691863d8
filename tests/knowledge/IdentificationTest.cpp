// Which board is it, and what will be done with it.

#include <gtest/gtest.h>

#include <stdexcept>

#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "knowledge/RowSearch.h"
#include "knowledge/Utilities.h"
#include "knowledge/VersionReply.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "tests/VirtualComputer.h"
#include "wizard/Handlers.h"

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
    std::vector<AntennaRecord> table(4);
    for (int i : {0, 1, 3}) table[static_cast<std::size_t>(i)].AntennaName = "antenna";
    table[1].BoardIdWords = table[3].BoardIdWords = "QEL JARL";
    EXPECT_EQ(FindRow(table, "QEL JARL 1", false).row, 1);
    table[1].BoardIdWords.clear();
    EXPECT_FALSE(FindRow(table, "QEL JARL 1", false).fits) << "a row without a name ends the table";
    table.erase(table.begin() + 2);
    EXPECT_EQ(FindRow(table, "QEL JARL 1", false).row, 2);
    EXPECT_FALSE(FindRow({}, "QEL JARL 1", false).fits);
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
    FlashConfig config;
    Reading& reading = Session.reading;
    void SetUp() override
    {
        OpenLog();
        config.Main.sCommonPreflash = {"@VER", "VERSION", ""};
        config.Main.AntennaTable = {
            {"", "First", "QEL DUNE", "R", "P", "F61999.HEX", "1", "0", "0", "", "", "", "", "", ""},
            {"", "Second", "Orbimaster OPAL", " READY ", " PGM ", "F61118A.HEX", " 131072", "16", "7", "DELAYXMIT 12",
             "", "", "", "PREFLASH$ HALT $flasha", "POSTFLASH$"},
        };
        config.RF.AntennaTable = {
            {"", "RF6 Board", "DVB/DSS 6 LM", "", "", "X.S19", "1", "0", "0", "", "", "", "", "", ""},
            {"", "QEL RF6 Board", "DVB/DSS 6", "", "", "A.S19 : B.HEX", "1", "2", "3", "4", "5", "6", "", "", ""},
            {"", "QEL RF7 Board", "DVB/DSS 7 GL", "", "", "X.S19", "1", "0", "0", "", "", "", "", "", ""},
        };
        config.sRF6BootloaderFile = "LOADER.S19";
        Session.config = config;
        Ask(0);
    }
    void Ask(int boardType)
    {
        Session.choice.iBoardType = boardType;
        InitAntennaInfoVars();
        reading.iCommonPreflashIdx = 2;  // the queries are out
    }
    static void Reply(const std::string& chunk)
    {
        Session.link.sCommBuffer += chunk;
        OnVersionReply(chunk);
    }
    FlashPlan Plan(const PlanAnswers& answers = {}) { return ResolveBoard(config, Session.choice, reading, answers); }
    std::string File(const PlanAnswers& answers = {}) { return Plan(answers).stages.front().sFlashFile; }
};

TEST_F(Identification, AMainBoardTellsBothVersionsInPieces)
{
    Reply(">RF: 2.1 DVB/");
    Reply("DSS 6A");
    EXPECT_EQ(reading.sRFVersion, "");
    Reply("\r\n");
    EXPECT_EQ(reading.sRFVersion, "2.1 DVB/DSS 6A\r");
    EXPECT_EQ(Session.link.sCommBuffer, "");
    Reply("QEL JARL 1");
    EXPECT_EQ(Session.link.iCommMode, STATE_GET_VERSIONS);
    Reply(".23\r\n>");
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    EXPECT_EQ(frmWizard.lblBoardVersion.Caption(), "Main board: QEL JARL 1.23\nRF board: 2.1 DVB/DSS 6A");
}

TEST_F(Identification, AnAntennaWithAnRF1BoardIsIdentifiedToo)
{
    Reply("PCB Version A.2\r\n");
    Reply("QEL DUNE 1.0\r\n");
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    EXPECT_NE(frmWizard.lblBoardVersion.Caption().find("RF1 Board detected"), std::string::npos);
}

TEST_F(Identification, AnRFBoardIsSortedByItsFirstAnswerAndAMultiStageBoardTellsItsRevisions)
{
    WriteFile(machine.directory / "F61340C.S19", "");
    machine.SetPortOpen(true);
    Ask(1);
    Reply("RF 1.0 DVB/DSS 6A GL\r\n");
    EXPECT_EQ(BoardInHand(), 20);
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    Reply("RF 1.0 DVB/DSS 7\r\n");
    EXPECT_EQ(BoardInHand(), 20);

    Ask(1);
    Reply("RF 1.0 DVB/DSS 7 GL\r\n");
    EXPECT_EQ(BoardInHand(), 21);
    EXPECT_EQ(Session.choice.iBoardType, 1) << "a reply never changes what the user chose";
    EXPECT_EQ(Session.link.iCommMode, STATE_FPGA_REV);
    Session.link.sCommBuffer = "FPGA Rev: B\r\n";
    OnFPGARevReply({});
    Session.link.sCommBuffer = "BAPI Rev: A\r\n";
    OnBAPIRevReply({});
    EXPECT_EQ(reading.sFPGARev + reading.sBAPIRev, "BA");
    EXPECT_EQ(machine.sent, "FPGARev\r\nBAPIRev\r\n");
    EXPECT_EQ(Session.link.iCommMode, STATE_IDLE);
    ASSERT_EQ(Plan().stages.size(), 2u) << "no file of the family is no newer revision";
    EXPECT_EQ(Plan().stages[1].sFlashFile, "F61340C.S19");
}

TEST_F(Identification, TheRowGivesThePlanAndTheNewestFile)
{
    for (const char* file : {"F61118A.HEX", "F61118B.HEX", "F61118T1.HEX"}) WriteFile(machine.directory / file, "");
    reading.sMainVersion = "QEL Orbimaster OPAL 1.2\r";
    SetStep(STEP_4);
    const FlashPlan& plan = *Session.plan;
    EXPECT_EQ(plan.row.AntennaName, "Second");
    EXPECT_EQ(plan.sBoardSignOn, "READY");
    EXPECT_EQ(plan.stages.front().sFlashCmd, "PGM");
    EXPECT_EQ(plan.FirstFile.ImageSize, 131072);
    EXPECT_EQ(plan.FirstFile.AddressOffset, 16);
    EXPECT_EQ(plan.iLinePauseTicks, 12);
    EXPECT_TRUE(frmWizard.Timer2.Enabled);
    EXPECT_EQ(plan.sPreflashCmds, (std::vector<std::string>{"HALT", "flasha", ""}));
    EXPECT_EQ(plan.sPostflashCmds, (std::vector<std::string>{"", ""}));
    EXPECT_EQ(frmWizard.lblFlashFile.Caption(), "The Burnline will update the board with file: F61118B.HEX");
    EXPECT_NE(machine.Log().find("++>Board picked to flash is Second"), std::string::npos);
}

TEST_F(Identification, AnOlderRFBoardGetsTheSoftwareThatGoesWithIt)
{
    reading.sMainVersion = "QEL Orbimaster OPAL 1.2\r";
    reading.sRFVersion = "DVB/DSS 4";
    EXPECT_EQ(File(), "F61118T1.HEX");
    config.sRF5CompatibleMainFile = "F61999T2.HEX";
    EXPECT_EQ(File(), "F61999T2.HEX");
    reading.sRFVersion.clear();
    reading.bPCBVersionA2 = true;
    EXPECT_EQ(File(), "F61118L.HEX");
}

TEST_F(Identification, AnUnknownBoardHasNoPlanAndANumberThatIsNoneIsRefused)
{
    reading.sMainVersion = "QEL UNHEARD OF";
    EXPECT_FALSE(Plan().IsKnown());
    reading.sMainVersion = "Orbimaster OPAL";
    config.Main.AntennaTable[1].ImageSize = "128K";
    EXPECT_THROW(Plan(), std::invalid_argument);
}

TEST_F(Identification, AnRFBoardHasTwoFilesAndALoader)
{
    Session.choice.iBoardType = 1;
    reading.told = 20;
    reading.sRFVersion = "RF 1.0 DVB/DSS 6";
    const FlashPlan plan = Plan();
    EXPECT_EQ(plan.row.BoardIdWords, "DVB/DSS 6");
    EXPECT_EQ(plan.sFlashFileName, "B.HEX");
    EXPECT_EQ(plan.SecondFile.CheckValue, 6);
    EXPECT_EQ(plan.sNewRFBootloaderFile, "LOADER.S19");
    EXPECT_EQ(plan.asksModel, ModelList::RF6);
    PlanAnswers answers;
    answers.modelFile = "";
    EXPECT_EQ(File(answers), "F61205M.S19") << "the software of a model that isn't listed";
}

}  // namespace
