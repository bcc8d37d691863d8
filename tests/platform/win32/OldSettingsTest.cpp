// What an older version has kept in the registry moves into the settings file, once.

#include <windows.h>

#include "persistence/INIUtilities.h"
#include "session/Wizard.h"
#include "tests/persistence/ProgramDirectory.h"
#include "tests/platform/win32/HeldFile.h"

namespace {

const std::string program = "Software\\VB and VBA Program Settings\\Burnline";
const std::string section = program + "\\Properties";

class OldSettings : public ProgramDirectoryTest {
protected:
    void TearDown() override
    {
        RegDeleteTreeA(HKEY_CURRENT_USER, program.c_str());
        ProgramDirectoryTest::TearDown();
    }

    static void Keep(const std::string& key, const char* name, const std::string& value)
    {
        ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, key.c_str(), name, REG_SZ, value.c_str(),
                                  static_cast<DWORD>(value.size() + 1)),
                  ERROR_SUCCESS);
    }
    static void KeepAll()
    {
        Keep(section, "BaudRate", "38400,N,8,1");
        Keep(section, "CommPort", " 9");
        Keep(section, "LastUpdateCheck", "2026-01-31");
        Keep(section, "UpdateURL", "https://old.example/list.txt");
    }
    static bool IsThere(const std::string& key)
    {
        HKEY handle = nullptr;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ, &handle) != ERROR_SUCCESS) return false;
        RegCloseKey(handle);
        return true;
    }
};

TEST_F(OldSettings, AreTakenOverOnceAndRemoved)
{
    Put("Burnline.ini", "COMMPort=3\r\nBaudRate=19200\r\nTransmitDelay=4\r\n");
    KeepAll();
    GetDefaultValues();
    EXPECT_EQ(GetSetting(SETTING_BAUD_RATE), "38400");
    EXPECT_EQ(GetSetting(SETTING_TRANSMIT_DELAY), "4") << "the old version had none";
    EXPECT_FALSE(IsThere(program));

    SetSetting(SETTING_COMM_PORT, "5");
    GetDefaultValues();
    EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "5");
    EXPECT_EQ(GetSetting(SETTING_LAST_UPDATE), "2026-01-31");
    EXPECT_EQ(GetSetting(SETTING_UPDATE_URL), "https://old.example/list.txt");
    EXPECT_TRUE(machine.boxes.empty());
}

TEST_F(OldSettings, StayUntilTheyStandInTheFile)
{
    KeepAll();
    Keep(program + "\\Others", "Theirs", "1");
    Put("Burnline.ini", "COMMPort=3\r\n");
    Put("Burnline.ini.new", "");
    {
        const HeldFile held(Path("Burnline.ini.new"));
        GetDefaultValues();
    }
    EXPECT_TRUE(machine.BoxWasShown("Please close all programs except the QEL Burnline and try again"));
    EXPECT_TRUE(IsExitRequested());
    EXPECT_TRUE(IsThere(section));
    EXPECT_EQ(Bytes("Burnline.ini"), "COMMPort=3\r\n");

    SetExitRequested(false);
    GetDefaultValues();
    EXPECT_EQ(GetSetting(SETTING_COMM_PORT), "9");
    EXPECT_FALSE(IsThere(section));
    EXPECT_TRUE(IsThere(program + "\\Others"));
}

}  // namespace
