#pragma once
// The settings file Burnline.ini. All settings are texts; a changed one is on the disk before SetSetting returns.

#include <string>

// Settings by number.
inline constexpr int SETTING_COMM_PORT = 2;
inline constexpr int SETTING_BAUD_RATE = 3;
inline constexpr int SETTING_UPDATE_URL = 4;
inline constexpr int SETTING_LAST_UPDATE = 5;
inline constexpr int SETTING_REVISION = 6;
inline constexpr int SETTING_LAST_MESSAGE = 7;
inline constexpr int SETTING_DRY_RUN = 8;
inline constexpr int SETTING_AUTO_CHECK = 9;
inline constexpr int SETTING_TRANSMIT_DELAY = 10;
inline constexpr int SETTING_TRANSMIT_DELAY_ORIGINAL = 11;
inline constexpr int SETTING_AUTO_RETRY_ONCE = 12;
inline constexpr int SETTING_USE_FAST_BAUD = 13;
inline constexpr int SETTING_COMPARE_PARAMETERS = 14;

/// Loads the settings at program start; a failure is told and ends the program.
void GetDefaultValues();

/// False when there were no settings yet at program start and no port was set since.
bool IsPortChosen();

/// The setting's text; empty for number 7 (on purpose) and for a number that isn't there.
std::string GetSetting(int index);

/// Stores a setting and writes the file.
void SetSetting(int index, const std::string& value);

/// True when the setting reads "True" in any case.
bool IsSettingTrue(int index);

/// Corrects values that the program can't use.
void ValidateSettings();

/// Writes the file, guarded: the former one stands beside it until the new one is complete.
void SaveConfigFile();
