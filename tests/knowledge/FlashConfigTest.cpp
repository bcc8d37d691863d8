// FLASHCFG.TXT, well formed, careless and hostile.

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "frame/SessionState.h"
#include "knowledge/Utilities.h"
#include "persistence/Logs.h"
#include "platform/Failure.h"
#include "tests/VirtualComputer.h"

namespace {

constexpr const char* mainSection =
    "BEGIN ANTENNA CONFIG MAINBOARD\r\n"
    "ANTENNA$ QEL DUNE $DUNE MAIN$BOOT READY$PGM_MAIN$F61999A.HEX$131072$0$0$DELAYXMIT 12\r\n"
    "PREFLASH$ HALT$BIASAZ $flasha\r\n"
    "POSTFLASH$BIASAZ\r\n"
    "END ANTENNA CONFIG MAINBOARD\r\n";
constexpr const char* rfSection =
    "BEGIN ANTENNA CONFIG RFBOARD\r\n"
    "COMMON SIGNON$inside the RF section\r\n"
    "ANTENNA$QEL RF$DVB/DSS 6$RF READY$PGM_RF$F61998A.S19\r\n"
    "END ANTENNA CONFIG RFBOARD\r\n";

class FlashConfig : public testing::Test {
protected:
    VirtualComputer machine;
    int Load(const std::string& content)
    {
        WriteFile(machine.directory / "FLASHCFG.TXT", content);
        return ReadFlashConfig();
    }
};

TEST_F(FlashConfig, RowsOfTheBoardsGroupAreLoadedAndNoOthers)
{
    ASSERT_EQ(Load(std::string(rfSection) + mainSection + rfSection), 0);
    ASSERT_EQ(Session.AntennaTable.size(), 3u);  // the row, the empty one that ends the table, and one to spare
    const AntennaRecord& row = Session.AntennaTable[0];
    EXPECT_EQ(row.AntennaName, "QEL DUNE");
    EXPECT_EQ(row.FlashFiles, "F61999A.HEX");
    EXPECT_EQ(row.Extra1, "DELAYXMIT 12");
    EXPECT_EQ(row.PreflashLine, "PREFLASH$ HALT$BIASAZ $flasha");
    EXPECT_EQ(Session.AntennaTable[1].AntennaName, "");
    EXPECT_EQ(Session.sSignOn, "") << "a skipped section's lines don't count";
}

TEST_F(FlashConfig, AnEditorsMarkAheadOfTheFirstLineHidesNothing)
{
    ASSERT_EQ(Load(std::string("\xEF\xBB\xBF") + mainSection), 0);
    EXPECT_EQ(Session.AntennaTable[0].AntennaName, "QEL DUNE");
}

TEST_F(FlashConfig, AChoiceBehindTheFirstLoadBringsTheOtherGroup)
{
    ASSERT_EQ(Load(std::string(mainSection) + rfSection), 0);
    for (const int choice : {1, 0}) {
        Session.iBoardType = choice;
        ResetFlashConfig();
        ASSERT_EQ(ReadFlashConfig(), 0);
        EXPECT_EQ(Session.AntennaTable[0].AntennaName, "QEL RF") << "only the first choice of a run reads it again";
    }
    EXPECT_EQ(Session.AntennaTable.size(), 3u);
}

TEST_F(FlashConfig, OnlyLinesOfTheExactFormCount)
{
    ASSERT_EQ(Load("; COMMON SIGNON$comment\n"
                   "END\n"
                   "common signon$ Loader Ready \n"
                   "COMMON SIGNON $untrimmed keyword\n"
                   "\n"
                   " BEGIN ANTENNA CONFIG MAINBOARD\n"
                   "COMMON PREFLASH MAINBOARD$HALT$ @VER $VERSION\r"
                   "COMMON POSTFLASH RFBOARD\n"
                   "COMMON RF6_BOOTLOADER_FILE$one$two\n"
                   "COMMON RF6_BOOTLOADER_FILE$F61999B.S19"),
              0);
    EXPECT_EQ(Session.sSignOn, "Loader Ready");
    EXPECT_EQ(Session.sCommonPreflashMain, (std::vector<std::string>{"HALT", "@VER", "VERSION", ""}));
    EXPECT_EQ(Session.sCommonPostflashRF, std::vector<std::string>{""});
    EXPECT_EQ(Session.sRF6BootloaderFile, "F61999B.S19") << "the last line of a keyword counts";
    EXPECT_TRUE(machine.boxes.empty());
}

TEST_F(FlashConfig, AnOpenSectionIsToldOnceAndItsHalfRowIsNotUsed)
{
    OpenLog();
    std::string cut = std::string(mainSection) + mainSection;
    cut.resize(cut.rfind("POSTFLASH"));
    EXPECT_EQ(Load(cut), 0);
    EXPECT_EQ(ReadFlashConfig(), 0);
    ASSERT_EQ(machine.boxes.size(), 1u);
    EXPECT_NE(machine.boxes[0].words.find("#62"), std::string::npos);
    EXPECT_NE(machine.Log().find("END ANTENNA CONFIG MAINBOARD"), std::string::npos);
    EXPECT_NE(machine.Log().find("GetLine"), std::string::npos);
    EXPECT_EQ(Session.AntennaTable[0].AntennaName, "QEL DUNE");
    EXPECT_EQ(Session.AntennaTable[1].AntennaName, "");
}

TEST_F(FlashConfig, FailuresGoToTheCaller)
{
    EXPECT_THROW(Load("COMMON SIGNON\n"), std::out_of_range);
    EXPECT_FALSE(Session.bFlashConfigLoaded);
    EXPECT_THROW(ParseConfigLine("ANTENNA$1$2$3$4$5$6$7$8$9$10$11$12$13", 0), std::out_of_range);
    EXPECT_EQ(Session.AntennaTable[0].AntennaName, "");
    EXPECT_THROW(ParseConfigLine("PREFLASH$HALT", 99), std::out_of_range);
    EXPECT_NO_THROW(ParseConfigLine("ANTENNA$1$2$3$4$5$6$7$8$9$10$11$12", 0));
    EXPECT_EQ(Session.AntennaTable[0].Extra4, "12");
}

TEST_F(FlashConfig, WhatIsNoFileIsMissing)
{
    EXPECT_EQ(ReadFlashConfig(), 1);
    std::filesystem::create_directory(machine.directory / "FLASHCFG.TXT");
    EXPECT_EQ(ReadFlashConfig(), 1);
    EXPECT_FALSE(Session.bFlashConfigLoaded);
}

TEST_F(FlashConfig, AnEndlessLineOrListIsRefusedBeforeItFillsTheMemory)
{
    const std::string endless(1'000'000, '$');
    EXPECT_THROW(Load("COMMON PREFLASH MAINBOARD" + endless), std::overflow_error);
    EXPECT_EQ(Load(endless), 0) << "an unknown keyword, however long, is dropped";
    Session.bFlashConfigLoaded = false;
    std::string pairs = "BEGIN MARINE RF7 SOFTWARE COMPATIBILITY\n";
    for (int i = 0; i < 40'000; ++i) pairs += "a$bc\n";
    EXPECT_THROW(Load(pairs), std::overflow_error);
}

/// Runs what may raise a standard exception or a Failure, and nothing else.
template <class Body>
void MayFail(Body body)
{
    try {
        body();
    } catch (const std::exception&) {
    } catch (const Failure&) {
    }
}

TEST_F(FlashConfig, ADamagedFileNeitherCrashesNorHangs)
{
    const std::string whole = std::string("COMMON PREFLASH MAINBOARD$HALT$VERSION\r\nCOMMON SIGNON$x\r\n") +
                              mainSection + rfSection + "BEGIN MARINE RF6 DISH1000 SOFTWARE COMPATIBILITY\na$bc\n" +
                              "END MARINE RF6 DISH1000 SOFTWARE COMPATIBILITY\n";
    std::mt19937 random(20261121);
    for (int round = 0; round < 400; ++round) {
        std::string damaged = whole;
        for (std::size_t hits = random() % 6 + 1; hits > 0 && !damaged.empty(); --hits) {
            const std::size_t at = random() % damaged.size();
            switch (random() % 4) {
            case 0: damaged[at] = static_cast<char>(random()); break;
            case 1: damaged.erase(at, random() % 40); break;
            case 2: damaged.insert(at, damaged.substr(random() % damaged.size(), random() % 60)); break;
            default: damaged.insert(at, 1, "$\r\n\0;"[random() % 5]); break;
            }
        }
        Session.bFlashConfigLoaded = false;
        Session.iBoardType = static_cast<int>(random() % 23);
        MayFail([&] { Load(damaged); });
        // Whatever came in, the table ends where its readers stop.
        ASSERT_GE(Session.AntennaTable.size(), 2u);
        ASSERT_EQ(Session.AntennaTable.back().AntennaName, "");
        MayFail([&] { ParseConfigLine(damaged.substr(0, 200), static_cast<int>(random() % 3)); });
    }
}

}  // namespace
