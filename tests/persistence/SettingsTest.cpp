#include "persistence/SettingsText.h"
#include "tests/persistence/SettingsFixture.h"

namespace {

namespace fs = std::filesystem;

const std::string Address = "https://updates.example.invalid/bnlupdates/BNLUpdate.txt";

TEST_F(SettingsTest, AFirstStartWritesTheDefaultsInTheirOrder)
{
    GetDefaultValues();
    EXPECT_EQ(Bytes("Burnline.ini"), Header +
                                         "FileName=Burnline.ini\r\nRevision=1\r\nCOMMPort=1\r\nBaudRate=9600\r\n"
                                         "LastUpdate=None\r\nUpdateURL=" +
                                         Address +
                                         "\r\nLastMessage=\r\nAutoCheckForUpdates=True\r\nTransmitDelay=1\r\n"
                                         "AutoRetryOnce=True");
    EXPECT_EQ(GetSetting(SETTING_DRY_RUN), "False");
    EXPECT_FALSE(There("Burnline.ini.old"));
    EXPECT_FALSE(IsExitRequested());
}

TEST_F(SettingsTest, WhatWasSetComesBackByteForByte)
{
    Load(Everything);
    EXPECT_EQ(Bytes("Burnline.ini"), Everything);
    EXPECT_EQ(GetSetting(SETTING_TRANSMIT_DELAY_ORIGINAL), "3");
    EXPECT_TRUE(IsSettingTrue(SETTING_DRY_RUN));

    SetSetting(SETTING_LAST_MESSAGE, "32");
    EXPECT_EQ(GetSetting(SETTING_LAST_MESSAGE), "");
    EXPECT_NE(Bytes("Burnline.ini").find("LastMessage=32\r\n"), std::string::npos);

    // A value from elsewhere can't smuggle further lines into the file.
    SetSetting(SETTING_LAST_UPDATE, "today\r\nCOMMPort=9\nx");
    GetDefaultValues();
    EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "14");
    EXPECT_EQ(GetSetting(SETTING_LAST_UPDATE), "today COMMPort");
}

TEST_F(SettingsTest, ADelayForcedToZeroComesBackThoughTheProgramWasKilled)
{
    Load("TransmitDelay=5\r\n");
    SetSetting(SETTING_TRANSMIT_DELAY, "0");
    GetDefaultValues();
    EXPECT_EQ(GetSetting(SETTING_TRANSMIT_DELAY), "5");
    EXPECT_EQ(GetSetting(SETTING_TRANSMIT_DELAY_ORIGINAL), "5");
}

TEST_F(SettingsTest, ValuesThatCannotBeUsedAreReplacedAlsoInTheFile)
{
    const struct {
        const char* line;
        int setting;
        std::string becomes;
    } cases[] = {
        {"BaudRate=2400", SETTING_BAUD_RATE, "9600"},
        {"BaudRate=fast", SETTING_BAUD_RATE, "9600"},
        {"COMMPort=65", SETTING_COMM_PORT, "1"},
        {"COMMPort=0", SETTING_COMM_PORT, "1"},
        {"COMMPort=64", SETTING_COMM_PORT, "64"},
        {"UpdateURL=example.txt", SETTING_UPDATE_URL, Address},
        {"updateurl=HTTP://x/y", SETTING_UPDATE_URL, "HTTP://x/y"},
        {"UseFastBaud=yes", SETTING_USE_FAST_BAUD, "False"},
        {"AutoRetryOnce=1", SETTING_AUTO_RETRY_ONCE, "True"},
        {"TransmitDelay=0", SETTING_TRANSMIT_DELAY, "1"},
        {"TransmitDelay=99999999999", SETTING_TRANSMIT_DELAY, "1"},
        {"Revision=-4", SETTING_REVISION, "1"},
    };
    for (const auto& one : cases) {
        Load(one.line);
        EXPECT_EQ(GetSetting(one.setting), one.becomes) << one.line;
        EXPECT_NE(Bytes("Burnline.ini").find("=" + one.becomes), std::string::npos) << one.line;
    }
}

TEST_F(SettingsTest, LinesAreReadAsTheyWereEverRead)
{
    Load(
        "  COMMPort=7 ; the long cable \r\n;BaudRate=57600\r\n[Other]\r\nBaudRate=38400\r\nBAUDRATE=19200\r\n"
        "Revision=\r\nRevision=8\r\nUnknown=1\r\nnonsense\r\nLastUpdate=a=b");
    EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "7");
    EXPECT_EQ(GetSetting(SETTING_BAUD_RATE), "38400");  // the first line of a key counts
    EXPECT_EQ(GetSetting(SETTING_REVISION), "8");       // that has a value
    EXPECT_EQ(GetSetting(SETTING_LAST_UPDATE), "a");

    // Edited off Windows, with LF alone, and by an editor that puts a mark at the beginning.
    Load(
        "\xEF\xBB\xBF"
        "COMMPort=7\nBaudRate=38400\n");
    EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "7");
    EXPECT_EQ(GetSetting(SETTING_BAUD_RATE), "38400");

    // The delay to go back to is the one at start, whatever the file says; its line stays.
    Load("TransmitDelay=5\r\nTransmitDelayOriginal=9");
    EXPECT_EQ(GetSetting(SETTING_TRANSMIT_DELAY_ORIGINAL), "5");
    EXPECT_NE(Bytes("Burnline.ini").find("TransmitDelayOriginal=5\r\n"), std::string::npos);
}

TEST_F(SettingsTest, FifteenLinesAreReadAndTheLastOfThemIsNotLookedAt)
{
    std::string lines;
    for (int i = 0; i < 14; ++i) lines += "Unknown" + std::to_string(i) + "=1\r\n";
    Load(lines + "COMMPort=7");
    EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "1");
    EXPECT_FALSE(IsExitRequested());

    lines += "COMMPort=7\r\nBaudRate=38400";
    Put("Burnline.ini", lines);
    ExpectRefusedAndUntouched("#9.");
    EXPECT_EQ(Bytes("Burnline.ini"), lines);
}

TEST_F(SettingsTest, WhatIsNoSettingsFileIsRefusedAndKept)
{
    const std::string large(10 * 1024 * 1024, ';');
    const std::string wide("C\0O\0M\0M\0P\0o\0r\0t\0=\0007\0", 20);
    for (const auto& [content, words] : {std::pair{large, "longer than 64 KB"}, std::pair{wide, "no plain text"}}) {
        machine.boxes.clear();
        Put("Burnline.ini", content);
        ExpectRefusedAndUntouched(words);
        EXPECT_TRUE(Bytes("Burnline.ini") == content);
    }
    fs::remove(Path("Burnline.ini"));
    fs::create_directory(Path("Burnline.ini"));
    machine.boxes.clear();
    ExpectRefusedAndUntouched("is not a file");
}

TEST_F(SettingsTest, ADirectoryThatVanishedIsTold)
{
    Load(Everything);
    fs::remove_all(machine.directory);
    SetSetting(SETTING_COMM_PORT, "5");
    ASSERT_EQ(machine.boxes.size(), 1u);
    EXPECT_EQ(machine.boxes[0].words,
              "The filepath " + machine.directory.string() +
                  " was not found when writing Burnline.ini .  Please contact QEL Systems customer "
                  "support for help.");
}

TEST_F(SettingsTest, ASaveThatFailsHalfWayLeavesTheFormerFile)
{
    Load(Everything);
    fs::create_directories(Path("Burnline.ini.old/full"));
    SetSetting(SETTING_COMM_PORT, "5");
    EXPECT_EQ(machine.boxes.size(), 1u);
    EXPECT_TRUE(IsExitRequested());
    EXPECT_EQ(Bytes("Burnline.ini"), Everything);
}

// --- a save that was interrupted ---------------------------------------------------------------------------------

TEST_F(SettingsTest, AfterAnInterruptedSaveTheOldFileCounts)
{
    // Killed between the renames: the new file has no name yet.
    Put("Burnline.ini.old", Everything);
    Put("Burnline.ini.new", Header + "COMMPort=2");
    GetDefaultValues();
    EXPECT_EQ(Bytes("Burnline.ini"), Everything);
    EXPECT_FALSE(There("Burnline.ini.old"));

    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, Header.size() + 30, Everything.size() - 1}) {
        Put("Burnline.ini.old", Everything);
        Load(Everything.substr(0, length));
        EXPECT_EQ(Bytes("Burnline.ini"), Everything) << length;
    }
    EXPECT_FALSE(IsExitRequested());
    EXPECT_NE(Bytes("BNL.LOG").find("++>Settings: the last save was interrupted"), std::string::npos);
}

TEST_F(SettingsTest, ACompleteFileCountsBesideALeftOverOne)
{
    for (const std::string& leftOver : {Everything, std::string(100000, 'x'), std::string()}) {
        Put("Burnline.ini.old", leftOver);
        std::string present = Everything;
        present.replace(present.find("COMMPort=14"), 11, "COMMPort=1");
        Load(present);
        EXPECT_EQ(Bytes("Burnline.ini"), present);
        EXPECT_FALSE(There("Burnline.ini.old"));
    }
}

TEST(SettingsTextTest, EveryFileCutShortIsSeen)
{
    for (std::size_t length = 0; length < Everything.size(); ++length)
        EXPECT_TRUE(IsCutShort(Everything.substr(0, length), Everything)) << length;
    EXPECT_FALSE(IsCutShort(Everything, Everything));
}

}  // namespace
