#include "persistence/SettingsText.h"

#include <stdexcept>

#include "persistence/INIUtilities.h"
#include "platform/Failure.h"
#include "text/Text.h"

namespace {

constexpr int SETTING_HEADER = 0;
constexpr int SETTING_FILE_NAME = 1;

/// The order of the lines in the file; it differs from the order of the numbers on purpose.
constexpr int OrderInFile[SettingCount] = {SETTING_HEADER,
                                           SETTING_FILE_NAME,
                                           SETTING_REVISION,
                                           SETTING_COMM_PORT,
                                           SETTING_BAUD_RATE,
                                           SETTING_LAST_UPDATE,
                                           SETTING_UPDATE_URL,
                                           SETTING_LAST_MESSAGE,
                                           SETTING_AUTO_CHECK,
                                           SETTING_TRANSMIT_DELAY,
                                           SETTING_TRANSMIT_DELAY_ORIGINAL,
                                           SETTING_AUTO_RETRY_ONCE,
                                           SETTING_USE_FAST_BAUD,
                                           SETTING_COMPARE_PARAMETERS,
                                           SETTING_DRY_RUN};

std::vector<std::string> MeaningfulLines(std::string_view words)
{
    std::vector<std::string> members;
    // A file that was edited off Windows may have LF alone at its line ends.
    for (const std::string& line : text::Split(text::Replace(words, text::CrLf, "\n"), "\n")) {
        std::string member = text::Trim(line);
        if (member.empty() || member.front() == ';') continue;
        member = text::Trim(member.substr(0, member.find(';')));
        if (member.front() == '[') continue;
        members.push_back(std::move(member));
    }
    return members;
}

SettingPair PairFrom(const std::string& member)
{
    const std::vector<std::string> parts = text::Split(member, "=");
    return {parts[0] + "=", parts.size() > 1 ? parts[1] : std::string()};
}

/// The last row isn't looked at, on purpose: a file of this program's own never fills it.
const SettingPair* FindPair(const SettingPairs& pairs, const std::string& key)
{
    for (int i = 0; i < SettingCount - 1; ++i)
        if (text::Equal(pairs[i].Key, key) && !pairs[i].Value.empty()) return &pairs[i];
    return nullptr;
}

bool IsWithin(const std::string& value, std::int32_t lowest, std::int32_t highest)
{
    try {
        const std::int32_t number = text::ToLong(value);
        return number >= lowest && number <= highest;
    } catch (const std::logic_error&) {  // no number, or none that fits
        return false;
    }
}

bool IsPort(const std::string& value) { return IsWithin(value, 1, 64); }
bool IsAtLeastOne(const std::string& value) { return IsWithin(value, 1, 0x7FFFFFFF); }

bool IsBaudRate(const std::string& value)
{
    for (const char* rate : {"9600", "19200", "38400", "57600", "115200"})
        if (value == rate) return true;
    return false;
}

bool IsTrueOrFalse(const std::string& value) { return text::Equal(value, "True") || text::Equal(value, "False"); }

bool IsAddress(const std::string& value)
{
    return text::StartsWith(value, "http://") || text::StartsWith(value, "ftp://") ||
           text::StartsWith(value, "https://");
}

struct Check {
    int setting;
    bool (*passes)(const std::string& value);
};

constexpr Check Checks[] = {{SETTING_COMM_PORT, IsPort},
                            {SETTING_BAUD_RATE, IsBaudRate},
                            {SETTING_DRY_RUN, IsTrueOrFalse},
                            {SETTING_AUTO_RETRY_ONCE, IsTrueOrFalse},
                            {SETTING_AUTO_CHECK, IsTrueOrFalse},
                            {SETTING_USE_FAST_BAUD, IsTrueOrFalse},
                            {SETTING_COMPARE_PARAMETERS, IsTrueOrFalse},
                            {SETTING_UPDATE_URL, IsAddress},
                            {SETTING_REVISION, IsAtLeastOne},
                            {SETTING_TRANSMIT_DELAY, IsAtLeastOne},
                            {SETTING_TRANSMIT_DELAY_ORIGINAL, IsAtLeastOne}};

}  // namespace

const Settings& SettingDefaults()
{
    static const Settings defaults = {{
        {"",
         ";This file is used by the QEL Systems Burnline.\r\n"
         ";Modifying this file will only take effect on the next reboot of the Burnline.\r\n"
         "\r\n"
         ";NOTE: There should be NO spacing between parameter names and values.\r\n"
         "\r\n"
         "[BurnlineParameters]",
         true},
        {"FileName=", "Burnline.ini", true},
        {"COMMPort=", "1", true},
        {"BaudRate=", "9600", true},
        {"UpdateURL=", "https://updates.example.invalid/bnlupdates/BNLUpdate.txt", true},
        {"LastUpdate=", "None", true},
        {"Revision=", "1", true},
        {"LastMessage=", "", true},
        {"DryRunMode=", "False", false},
        {"AutoCheckForUpdates=", "True", true},
        {"TransmitDelay=", "1", true},
        {"TransmitDelayOriginal=", "1", false},
        {"AutoRetryOnce=", "True", true},
        {"UseFastBaud=", "False", false},
        {"CompareParameters=", "True", false},
    }};
    return defaults;
}

std::vector<std::string> ParseSettingsText(std::string_view words)
{
    if (words.find('\0') != std::string_view::npos)
        throw Failure{FAIL_TYPE_MISMATCH, "The file is no plain text. Please save it as plain text (ANSI or UTF-8)."};
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    if (text::StartsWith(words, utf8Mark)) words.remove_prefix(utf8Mark.size());
    return MeaningfulLines(words);
}

SettingPairs BuildSettingsTable(const std::vector<std::string>& members)
{
    SettingPairs pairs;
    if (members.size() > pairs.size())
        throw Failure{FAIL_SUBSCRIPT, "The file holds " + std::to_string(members.size()) + " settings, " +
                                          std::to_string(SettingCount) +
                                          " at most are possible. Please remove the lines that don't belong there."};
    for (std::size_t i = 0; i < members.size(); ++i) pairs[i] = PairFrom(members[i]);
    return pairs;
}

std::string LookupSetting(SettingRecord& record, const std::string& Default, const SettingPairs& pairs)
{
    const SettingPair* found = FindPair(pairs, record.Key);
    if (found == nullptr) return Default;
    record.Written = true;
    return found->Value;
}

Settings SettingsFrom(const SettingPairs& pairs)
{
    Settings settings = SettingDefaults();
    for (int i = 0; i < SettingCount; ++i)
        if (i != SETTING_HEADER && i != SETTING_FILE_NAME)
            settings[i].Value = LookupSetting(settings[i], settings[i].Value, pairs);
    // A delay of zero was forced for a fast board and the program ended before it went back.
    if (settings[SETTING_TRANSMIT_DELAY].Value == "0")
        settings[SETTING_TRANSMIT_DELAY].Value = settings[SETTING_TRANSMIT_DELAY_ORIGINAL].Value;
    // The delay to go back to is the one at start, whatever the file says; a line for it stays in the file all the
    // same.
    settings[SETTING_TRANSMIT_DELAY_ORIGINAL].Value = settings[SETTING_TRANSMIT_DELAY].Value;
    return settings;
}

void CorrectSettings(Settings& settings)
{
    for (const Check& check : Checks)
        if (!check.passes(settings[check.setting].Value))
            settings[check.setting].Value = SettingDefaults()[check.setting].Value;
}

std::string BuildSettingsText(const Settings& settings)
{
    std::string words;
    for (const int i : OrderInFile)
        if (settings[i].Written) words.append(text::CrLf).append(settings[i].Key).append(settings[i].Value);
    return text::TrimLines(words);
}

bool IsCutShort(std::string_view words, std::string_view old)
{
    std::vector<SettingPair> now, before;
    for (const std::string& member : MeaningfulLines(words)) now.push_back(PairFrom(member));
    for (const std::string& member : MeaningfulLines(old)) before.push_back(PairFrom(member));

    const auto valueIn = [](const std::vector<SettingPair>& pairs, const std::string& key) -> const std::string* {
        for (const SettingPair& pair : pairs)
            if (text::Equal(pair.Key, key)) return &pair.Value;
        return nullptr;
    };
    for (const SettingRecord& record : SettingDefaults()) {
        const std::string* former = valueIn(before, record.Key);
        if (former == nullptr) continue;
        const std::string* present = valueIn(now, record.Key);
        if (present == nullptr) return true;
        const bool isLast = present == &now.back().Value;
        if (isLast && present->size() < former->size() && text::StartsWith(*former, *present)) return true;
    }
    return false;
}
