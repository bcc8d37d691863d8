// FLASHCFG.TXT, well formed, careless and hostile.

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "knowledge/Utilities.h"
#include "persistence/Logs.h"
#include "platform/Failure.h"
#include "tests/VirtualComputer.h"

namespace {

const std::string mainSection =
    "BEGIN ANTENNA CONFIG MAINBOARD\r\n"
    "ANTENNA$ QEL DUNE $DUNE MAIN$BOOT READY$PGM_MAIN$F61999A.HEX$131072$0$0$DELAYXMIT 12\r\n"
    "PREFLASH$ HALT$BIASAZ $flasha\r\n"
    "POSTFLASH$BIASAZ\r\n"
    "END ANTENNA CONFIG MAINBOARD\r\n";
const std::string rfSection =
    "BEGIN ANTENNA CONFIG RFBOARD\r\n"
    "COMMON SIGNON$inside the RF section\r\n"
    "ANTENNA$QEL RF$DVB/DSS 6$RF READY$PGM_RF$F61998A.S19\r\n"
    "END ANTENNA CONFIG RFBOARD\r\n";

class Configuration : public testing::Test {
protected:
    VirtualComputer machine;
    FlashConfig Load(const std::string& content)
    {
        WriteFile(machine.directory / "FLASHCFG.TXT", content);
        return ReadFlashConfig().value();
    }
};

TEST_F(Configuration, EachGroupHasItsRowsAndAnEditorsMarkHidesNone)
{
    const FlashConfig config = Load("\xEF\xBB\xBF" + mainSection + rfSection + rfSection);
    ASSERT_EQ(config.Main.AntennaTable.size(), 1u);
    EXPECT_EQ(config.RF.AntennaTable.size(), 2u);
    const AntennaRecord& row = config.Main.AntennaTable[0];
    EXPECT_EQ(row.AntennaName, "QEL DUNE");
    EXPECT_EQ(row.FlashFiles, "F61999A.HEX");
    EXPECT_EQ(row.Extra1, "DELAYXMIT 12");
    EXPECT_EQ(row.PreflashLine, "PREFLASH$ HALT$BIASAZ $flasha");
    EXPECT_EQ(config.sSignOn, "inside the RF section");
}

TEST_F(Configuration, OnlyLinesOfTheExactFormCount)
{
    const FlashConfig config = Load(
        "; COMMON SIGNON$comment\n"
        "END\n"
        "common signon$ Loader Ready \n"
        "COMMON SIGNON $untrimmed keyword\n"
        "\n"
        " BEGIN ANTENNA CONFIG MAINBOARD\n"
        "COMMON PREFLASH MAINBOARD$HALT$ @VER $VERSION\r"
        "COMMON POSTFLASH RFBOARD\n"
        "COMMON RF6_BOOTLOADER_FILE$one$two\n"
        "COMMON RF6_BOOTLOADER_FILE$F61999B.S19");
    EXPECT_EQ(config.sSignOn, "Loader Ready");
    EXPECT_EQ(config.Main.sCommonPreflash, (std::vector<std::string>{"HALT", "@VER", "VERSION", ""}));
    EXPECT_EQ(config.RF.sCommonPostflash, std::vector<std::string>{""});
    EXPECT_EQ(config.sRF6BootloaderFile, "F61999B.S19") << "the last line of a keyword counts";
    EXPECT_TRUE(machine.boxes.empty());
}

TEST_F(Configuration, AnOpenSectionIsToldAndItsHalfRowIsNotUsed)
{
    OpenLog();
    const std::string twice = mainSection + mainSection;
    EXPECT_EQ(Load(twice.substr(0, twice.rfind("POSTFLASH"))).Main.AntennaTable.size(), 1u);
    ASSERT_EQ(machine.boxes.size(), 1u);
    EXPECT_NE(machine.boxes[0].words.find("#62"), std::string::npos);
    EXPECT_NE(machine.Log().find("END ANTENNA CONFIG MAINBOARD"), std::string::npos);
    EXPECT_NE(machine.Log().find("GetLine"), std::string::npos);
}

TEST_F(Configuration, AFieldTooManyEndsTheTableOfItsGroupAlone)
{
    EXPECT_THROW(Load("COMMON SIGNON\n"), std::out_of_range);
    const auto section = [](const std::string& fields) {
        return "BEGIN ANTENNA CONFIG MAINBOARD\nANTENNA$" + fields + "\nEND ANTENNA CONFIG MAINBOARD\n";
    };
    const std::string twelve = "1$2$3$4$5$6$7$8$9$10$11$12";
    const FlashConfig config = Load(section(twelve) + section(twelve + "$13") + mainSection + rfSection);
    ASSERT_EQ(config.Main.AntennaTable.size(), 1u);
    EXPECT_EQ(config.Main.AntennaTable[0].Extra4, "12");
    EXPECT_EQ(config.Main.problem.value().number, FAIL_SUBSCRIPT);
    EXPECT_EQ(config.RF.AntennaTable.size(), 1u);
    EXPECT_FALSE(config.RF.problem);
}

TEST_F(Configuration, WhatIsNoFileIsMissing)
{
    EXPECT_FALSE(ReadFlashConfig());
    std::filesystem::create_directory(machine.directory / "FLASHCFG.TXT");
    EXPECT_FALSE(ReadFlashConfig());
}

TEST_F(Configuration, AnEndlessLineOrListIsRefusedBeforeItFillsTheMemory)
{
    const std::string endless(1'000'000, '$');
    EXPECT_THROW(Load("COMMON PREFLASH MAINBOARD" + endless), std::overflow_error);
    EXPECT_NO_THROW(Load(endless)) << "an unknown keyword, however long, is dropped";
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

TEST_F(Configuration, ADamagedFileNeitherCrashesNorHangs)
{
    const std::string whole = "COMMON PREFLASH MAINBOARD$HALT$VERSION\r\nCOMMON SIGNON$x\r\n" + mainSection +
                              rfSection + "BEGIN MARINE RF6 DISH1000 SOFTWARE COMPATIBILITY\na$bc\n" +
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
        MayFail([&] {
            const FlashConfig config = Load(damaged);
            for (const GroupConfig* group : {&config.Main, &config.RF})
                for (const AntennaRecord& row : group->AntennaTable)
                    ASSERT_NE(damaged.find(row.Line), std::string::npos) << "a row is a line of the file";
            Reading reading;
            reading.sMainVersion = "QEL DUNE MAIN 1.2\r";
            reading.sRFVersion = "DVB/DSS 6";
            ResolveBoard(config, {static_cast<int>(random() % 23)}, reading, {});
        });
    }
}

}  // namespace
