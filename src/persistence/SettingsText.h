#pragma once
// The text of the settings file, without the file: from text to settings and back.

#include <array>
#include <string>
#include <string_view>
#include <vector>

inline constexpr int SettingCount = 15;

/// One setting. `Key` ends in "="; `Written` says that its line stands in the file.
struct SettingRecord {
    std::string Key;
    std::string Value;
    bool Written = true;
};

using Settings = std::array<SettingRecord, SettingCount>;

/// One line of the file, split at "=".
struct SettingPair {
    std::string Key;  // with its "="
    std::string Value;
};

/// As many lines as a file may hold; unused ones stay empty.
using SettingPairs = std::array<SettingPair, SettingCount>;

/// The settings of a program that was never started before.
const Settings& SettingDefaults();

/// The lines that mean something: no comments, no section names, nothing empty. Raises Failure 13 when the text holds
/// zero bytes, as it does in the two-byte alphabets that some editors write.
std::vector<std::string> ParseSettingsText(std::string_view words);

/// Raises Failure 9 when there are more lines than a file may hold.
SettingPairs BuildSettingsTable(const std::vector<std::string>& members);

/// The value that the pairs give for the record's key, and the record is marked as written; `Default` when they give
/// none.
std::string LookupSetting(SettingRecord& record, const std::string& Default, const SettingPairs& pairs);

/// The settings that a file gives.
Settings SettingsFrom(const SettingPairs& pairs);

/// Puts the default in the place of each value that the program can't use.
void CorrectSettings(Settings& settings);

/// The whole file.
std::string BuildSettingsText(const Settings& settings);

/// True when `words` is a settings file that somebody stopped writing: it lacks a setting that the former file, `old`,
/// holds, or its last value is only the beginning of the former one.
bool IsCutShort(std::string_view words, std::string_view old);
