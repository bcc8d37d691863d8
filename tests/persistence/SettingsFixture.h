#pragma once
// A settings file in which somebody has set everything, and a program that refuses a file.

#include "persistence/INIUtilities.h"
#include "session/Wizard.h"
#include "tests/persistence/ProgramDirectory.h"

inline const std::string Header =
    ";This file is used by the QEL Systems Burnline.\r\n"
    ";Modifying this file will only take effect on the next reboot of the Burnline.\r\n"
    "\r\n"
    ";NOTE: There should be NO spacing between parameter names and values.\r\n"
    "\r\n"
    "[BurnlineParameters]\r\n";

/// What somebody has set: every setting differs from its default, the hidden ones stand in the file.
inline const std::string Everything =
    Header +
    "FileName=Burnline.ini\r\nRevision=12\r\nCOMMPort=14\r\nBaudRate=19200\r\n"
    "LastUpdate=2026-05-01\r\nUpdateURL=ftp://a.example/list.txt\r\nLastMessage=31\r\n"
    "AutoCheckForUpdates=False\r\nTransmitDelay=3\r\nTransmitDelayOriginal=3\r\n"
    "AutoRetryOnce=False\r\nUseFastBaud=True\r\nDryRunMode=TRUE";

class SettingsTest : public ProgramDirectoryTest {
protected:
    void Load(const std::string& file)
    {
        Put("Burnline.ini", file);
        GetDefaultValues();
    }

    void ExpectRefusedAndUntouched(const std::string& words)
    {
        GetDefaultValues();
        ASSERT_EQ(machine.boxes.size(), 1u);
        EXPECT_TRUE(machine.BoxWasShown("While trying to access Burnline.ini, we encountered an unknown error, #"));
        EXPECT_TRUE(machine.BoxWasShown(words)) << machine.boxes[0].words;
        EXPECT_TRUE(IsExitRequested());
        // Whoever sets something before the program has ended doesn't write over the file either.
        SetSetting(SETTING_COMM_PORT, "3");
        EXPECT_FALSE(There("Burnline.ini.old"));
        EXPECT_FALSE(There("Burnline.ini.new"));
    }
};
