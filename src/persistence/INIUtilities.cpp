#include "persistence/INIUtilities.h"

#include <filesystem>

#include "persistence/Logs.h"
#include "persistence/SettingsText.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "platform/ProgramFiles.h"
#include "platform/WholeFile.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace fs = std::filesystem;

namespace {

const std::string FileName = "Burnline.ini";
constexpr std::size_t MaxFileSize = 65536;  // a file with all settings has some 500 bytes
constexpr const char* SomethingInterferes =
    "Please close all programs except the QEL Burnline and try again, something is interfering with proper operation.";

Settings settings;

/// False until the file was read, or found missing. A file that couldn't be read is never written over.
bool maySave = false;
bool portChosen = true;

fs::path ConfigFile() { return ProgramFile(FileName); }
fs::path OldFile() { return ProgramFile(FileName + ".old"); }
fs::path NewFile() { return ProgramFile(FileName + ".new"); }

void Tell(const std::string& words)
{
    computer->MsgBox(words, Buttons::OK, Icon::None, "QEL Burnline Assistant", Answer::OK);
}

/// The settings are read before the program has opened its log.
void LogEarly(const std::string& words)
{
    if (!IsLogOpen()) OpenLog();
    WriteLogLine(words);
}

/// What the system itself says about a failure, as a paragraph of its own.
std::string Detail(const std::string& what) { return what.empty() ? what : "\n\n" + what; }

/// A save writes the new file under a third name, renames the present one to ".old", gives the new one its name and
/// deletes the ".old" one. So the file is complete or, between the two renames, missing; then the ".old" one is
/// complete. A file cut short beside an ".old" one can only come from elsewhere (a copy, a damaged disk), and the
/// ".old" one counts then as well. In all other cases a left-over ".old" file is older and doesn't count.
void UndoInterruptedSave()
{
    std::error_code unusable;
    if (!fs::is_regular_file(OldFile(), unusable)) return;
    if (Exists(ConfigFile())) {
        const std::string present = ReadWholeFile(ConfigFile(), MaxFileSize);
        std::string former;
        try {
            former = ReadWholeFile(OldFile(), MaxFileSize);
        } catch (const Failure&) {
            return;
        }
        if (!IsCutShort(present, former)) return;
    }
    fs::rename(OldFile(), ConfigFile());
    LogEarly("++>Settings: the last save was interrupted, the settings are those from before it");
}

/// What an older version has kept elsewhere is newer than what the file says.
void TakeOver(const OldSettings& old, Settings& loaded)
{
    const auto number = [](const std::string& words) {
        return words.empty() ? words : text::Num(static_cast<long long>(text::Val(words)));
    };
    const struct {
        int index;
        std::string value;
    } found[] = {{SETTING_BAUD_RATE, number(old.BaudRate)},
                 {SETTING_COMM_PORT, number(old.CommPort)},
                 {SETTING_LAST_UPDATE, old.LastUpdateCheck},
                 {SETTING_UPDATE_URL, old.UpdateURL}};
    for (const auto& [index, value] : found)
        if (!value.empty()) loaded[static_cast<std::size_t>(index)].Value = value;
    if (!old.CommPort.empty()) portChosen = true;
}

/// A file of zeros is what a laptop leaves that has lost its power: it holds nothing.
bool IsWreck(const std::string& content)
{
    return !content.empty() && content.find_first_not_of('\0') == std::string::npos;
}

Settings LoadSettings()
{
    UndoInterruptedSave();
    SettingPairs pairs;
    portChosen = Exists(ConfigFile());
    if (portChosen) {
        const std::string content = ReadWholeFile(ConfigFile(), MaxFileSize);
        if (IsWreck(content))
            LogEarly("++>Settings: " + FileName + " holds nothing but zeros, the defaults are used");
        else
            pairs = BuildSettingsTable(ParseSettingsText(content));
    }
    Settings loaded = SettingsFrom(pairs);
    TakeOver(ReadOldSettings(), loaded);
    return loaded;
}

void TellLoadFailure(int number, const std::string& what)
{
    const std::string directory = computer->ProgramDirectory();
    switch (number) {
    case FAIL_NOT_FOUND: LogEarly("File missing from " + directory + "\\"); break;
    case FAIL_ALREADY_OPEN: LogEarly(SomethingInterferes); break;
    case FAIL_PATH:
        LogEarly("The filepath " + directory + "\\ was not found when attempting to read " + FileName +
                 ".\r\nPlease contact QEL Systems customer support for help.");
        break;
    default:
        Tell("While trying to access Burnline.ini, we encountered an unknown error, #" + text::Num(number) +
             ".\nPlease contact QEL Systems customer support for help." + Detail(what));
    }
    SetExitRequested(true);
}

void Rename(const fs::path& from, const fs::path& to)
{
    const std::error_code error = RenameOver(from, to);
    if (error) throw fs::filesystem_error("rename", from, to, error);
}

void WriteSettings()
{
    WriteWholeFile(NewFile(), BuildSettingsText(settings));
    if (Exists(ConfigFile())) Rename(ConfigFile(), OldFile());
    Rename(NewFile(), ConfigFile());
    fs::remove(OldFile());
}

/// After a save that failed half-way the former file has its name again. Whatever can't be done now is done by the
/// next start.
void BringOldFileBack()
{
    std::error_code left;
    fs::remove(NewFile(), left);
    if (!fs::exists(ConfigFile(), left) && fs::is_regular_file(OldFile(), left))
        fs::rename(OldFile(), ConfigFile(), left);
}

void TellSaveFailure(int number, const std::string& what)
{
    switch (number) {
    case FAIL_NOT_FOUND: WriteLogLine("\r\nMissing file in SaveConfigFile"); return;
    case FAIL_ALREADY_OPEN: Tell(SomethingInterferes); break;
    case FAIL_DISK_FULL: Tell("The disk is full, we are unable to write the file " + FileName); break;
    case FAIL_PATH:
        Tell("The filepath " + computer->ProgramDirectory() + " was not found when writing " + FileName +
             " .  Please contact QEL Systems customer support for help.");
        break;
    case FAIL_FILE_ACCESS:
        // The program's directory can't be written; the catalogue has the words for it.
        TellFailure(number, "SaveConfigFile");
        break;
    default:
        Tell("While trying to access " + FileName + ", we encountered an unknown error, #" + text::Num(number) +
             ".  Please contact QEL Systems customer support for help." + Detail(what));
    }
    SetExitRequested(true);
}

}  // namespace

void GetDefaultValues()
{
    settings = SettingDefaults();
    maySave = false;
    try {
        settings = LoadSettings();
    } catch (...) {
        std::string what;
        const int number = FailureNumber(what);
        TellLoadFailure(number, what);
        return;
    }
    maySave = true;
    ValidateSettings();
    SaveConfigFile();
    // Only once they stand in the file.
    if (!IsExitRequested()) Guarded("GetDefaultValues", RemoveOldSettings);
}

bool IsPortChosen() { return portChosen; }

std::string GetSetting(int index)
{
    // Number 7 isn't answered, on purpose: each update check starts without a last message.
    if (index < 0 || index >= SettingCount || index == SETTING_LAST_MESSAGE) return {};
    return settings[index].Value;
}

void SetSetting(int index, const std::string& value)
{
    if (index < 0 || index >= SettingCount)
        WriteLogLine("Unable to write INI file with parameter #" + text::Num(index) + ".  No such parameter number.");
    else  // a value is one line of the file, wherever it came from
        settings[index].Value = index == 0 ? value : text::Replace(text::Replace(value, "\r", ""), "\n", " ");
    if (index == SETTING_COMM_PORT) portChosen = true;
    // Should the program end before a forced zero goes back, the file says what it was.
    if (index == SETTING_TRANSMIT_DELAY && value == "0") settings[SETTING_TRANSMIT_DELAY_ORIGINAL].Written = true;
    SaveConfigFile();
}

bool IsSettingTrue(int index) { return text::Equal(GetSetting(index), "True"); }

void ValidateSettings() { CorrectSettings(settings); }

void SaveConfigFile()
{
    if (!maySave) return;
    try {
        WriteSettings();
    } catch (...) {
        std::string what;
        const int number = FailureNumber(what);
        BringOldFileBack();
        TellSaveFailure(number, what);
    }
}
