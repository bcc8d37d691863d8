// FLASHCFG.TXT: which boards exist, which file belongs on each, what runs before and after its flash.

#include <array>
#include <cerrno>
#include <fstream>
#include <limits>
#include <stdexcept>

#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "persistence/Logs.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "text/LineReader.h"
#include "text/Text.h"

namespace {

/// Rows, list entries and fields are counted in 16 bits; no real file comes near.
constexpr std::size_t maxEntries = std::numeric_limits<std::int16_t>::max();

struct ListKeyword {
    const char* keyword;
    std::vector<std::string> SessionState::*list;
    std::int16_t SessionState::*index;
};

struct TextKeyword {
    const char* keyword;
    std::string SessionState::*value;
};

struct RowKeyword {
    const char* keyword;
    std::string AntennaRecord::*line;
};

using S = SessionState;
using R = AntennaRecord;

constexpr std::array<ListKeyword, 4> listKeywords{{
    {"COMMON PREFLASH MAINBOARD", &S::sCommonPreflashMain, &S::iCommonPreflashMainIdx},
    {"COMMON POSTFLASH MAINBOARD", &S::sCommonPostflashMain, &S::iCommonPostflashMainIdx},
    {"COMMON PREFLASH RFBOARD", &S::sCommonPreflashRF, &S::iCommonPreflashRFIdx},
    {"COMMON POSTFLASH RFBOARD", &S::sCommonPostflashRF, &S::iCommonPostflashRFIdx},
}};

constexpr std::array<TextKeyword, 10> textKeywords{{
    {"COMMON SIGNON", &S::sSignOn},
    {"COMMON NEWRF_SIGNON", &S::sNewRFSignOn},
    {"COMMON NEWRF_FLASHOK", &S::sNewRFFlashOK},
    {"COMMON NEWRF_CHECKSUM", &S::sNewRFChecksum},
    {"COMMON BOOTLOADER_UPGRADE_FILE", &S::sBootloaderUpgradeFile},
    {"COMMON NEW_RF_BOOTLOADER_FILE", &S::sNewRFBootloaderFile},
    {"COMMON BRIX_RF_OR_MOTOR_BOOTLOADER_FILE", &S::sRFOrMotorBootloaderFile},
    {"COMMON RF6_BOOTLOADER_FILE", &S::sRF6BootloaderFile},
    {"COMMON BRIX_DELUXE_3_OR_4_USB_BOOTLOADER_FILE", &S::sDeluxeUSBBootloaderFile},
    {"NEVAMAKO_RF5_COMPATIBLE_MAINBOARD_FILE", &S::sRF5CompatibleMainFile},
}};

constexpr std::array<RowKeyword, 2> rowKeywords{{{"PREFLASH", &R::PreflashLine}, {"POSTFLASH", &R::PostflashLine}}};

constexpr std::array<std::string R::*, 12> antennaFields{
    &R::AntennaName,   &R::BoardIdWords, &R::SignOn, &R::FlashCmd, &R::FlashFiles, &R::ImageSize,
    &R::AddressOffset, &R::CheckValue,   &R::Extra1, &R::Extra2,   &R::Extra3,     &R::Extra4,
};

/// A section of the file: an antenna's for boards of one group, or a list of antenna models and their files.
struct Section {
    const char* name;
    BoardGroup group;
    std::vector<CompatEntry> S::*list;
};

constexpr std::array<Section, 8> sections{{
    {"MARINE RF7 SOFTWARE COMPATIBILITY", BoardGroup::None, &S::CompatMarineRF7},
    {"ANTENNA CONFIG MAINBOARD", BoardGroup::Line, nullptr},
    {"ANTENNA CONFIG RFBOARD", BoardGroup::Block, nullptr},
    {"MARINE RF6 DISH1000 SOFTWARE COMPATIBILITY", BoardGroup::None, &S::CompatMarineRF6},
    {"LAND MOBILE RF6 DISH1000 SOFTWARE COMPATIBILITY", BoardGroup::None, &S::CompatLandMobileRF6},
    {"MARINE RF6A DISH1000 SOFTWARE COMPATIBILITY", BoardGroup::None, &S::CompatMarineRF6A},
    {"LAND MOBILE RF6A DISH1000 SOFTWARE COMPATIBILITY", BoardGroup::None, &S::CompatLandMobileRF6A},
    {"LAND MOBILE RF DISH1000 SOFTWARE COMPATIBILITY", BoardGroup::None, &S::CompatLandMobileRF},
}};

bool IsFiller(const std::string& line) { return line.size() < 4 || line.front() == ';'; }

bool IsMark(const std::string& line, std::string_view word, const Section& section)
{
    return line.size() > word.size() && text::StartsWith(line, word) &&
           text::Equal(std::string_view(line).substr(word.size()), section.name);
}

const Section* SectionBegunBy(const std::string& line)
{
    for (const Section& section : sections)
        if (IsMark(line, "BEGIN ", section)) return &section;
    return nullptr;
}

template <class Table>
const typename Table::value_type* FindKeyword(const Table& table, std::string_view keyword)
{
    for (const auto& entry : table)
        if (text::Equal(entry.keyword, keyword)) return &entry;
    return nullptr;
}

void CheckRoom(std::size_t used)
{
    if (used > maxEntries) throw std::overflow_error("FLASHCFG.TXT holds more entries than can be counted");
}

std::vector<std::string> Fields(const std::string& line)
{
    CheckRoom(static_cast<std::size_t>(text::Count(line, '$')) + 1);
    return text::Split(line, "$");
}

void StoreAntenna(const std::string& line, AntennaRecord& row)
{
    const std::string trimmed = text::Trim(line);
    const std::vector<std::string> fields = Fields(trimmed);
    if (fields.size() > antennaFields.size() + 1)
        throw std::out_of_range("an ANTENNA line has more than twelve fields: " + text::Left(trimmed, 80));
    row.Line = trimmed;
    for (std::size_t i = 1; i < fields.size(); ++i) row.*antennaFields[i - 1] = text::Trim(fields[i]);
}

/// The list's last element is the empty pair that ends it. A line that is no pair leaves an empty pair too, and the
/// choosers stop there: that is on purpose.
void StorePair(const std::string& line, std::vector<CompatEntry>& list)
{
    CheckRoom(list.size());
    const std::size_t mark = line.find('$');
    if (mark != std::string::npos && mark == line.rfind('$'))
        list.back() = {text::Trim(line.substr(0, mark)), text::Trim(line.substr(mark + 1))};
    list.emplace_back();
}

/// Reads lines up to the section's end. False when the file ends first.
bool ReadSection(LineReader& file, const Section& section, int row)
{
    const bool wanted = section.list == nullptr && BoardOf(Session.iBoardType).group == section.group;
    while (!file.AtEnd()) {
        const std::string line = file.Next();
        if (IsFiller(line)) continue;
        if (IsMark(line, "END ", section)) return true;
        if (section.list != nullptr) StorePair(line, Session.*section.list);
        if (wanted) ParseConfigLine(line, row);
    }
    return false;
}

/// Half a section may lack the commands that save an antenna's parameters, so its row is taken out again.
void RefuseOpenSection(const Section& section, int row)
{
    Session.AntennaTable[static_cast<std::size_t>(row)] = {};
    WriteLogLine("++>FLASHCFG.TXT ends before its line END " + std::string(section.name));
    ShowMsgBox(FAIL_PAST_END, "GetLine");
}

void ReadAll(LineReader& file)
{
    int row = 0;
    while (!file.AtEnd()) {
        const std::string line = file.Next();
        if (IsFiller(line)) continue;
        const Section* section = SectionBegunBy(line);
        if (section == nullptr) {
            ParseConfigLine(line, row);
            continue;
        }
        if (!ReadSection(file, *section, row)) return RefuseOpenSection(*section, row);
        if (section->list != nullptr || BoardOf(Session.iBoardType).group != section->group) continue;
        CheckRoom(Session.AntennaTable.size());
        ++row;
        Session.AntennaTable.emplace_back();
    }
}

}  // namespace

int ReadFlashConfig()
{
    if (Session.bFlashConfigLoaded) return 0;
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(ProgramFile("FLASHCFG.TXT"), ignored)) return 1;
    Session.AntennaTable.assign(2, {});
    for (const Section& section : sections)
        if (section.list != nullptr) (Session.*section.list).assign(1, {});
    std::ifstream stream(ProgramFile("FLASHCFG.TXT"), std::ios::binary);
    if (!stream) throw Failure{FailureFromErrno(errno), "FLASHCFG.TXT can't be opened"};
    LineReader file(stream);
    file.SkipByteOrderMark();
    ReadAll(file);
    if (stream.bad()) throw Failure{FAIL_FILE_ACCESS, "FLASHCFG.TXT can't be read to its end"};
    Session.bFlashConfigLoaded = true;
    return 0;
}

void ParseConfigLine(const std::string& line, int row)
{
    const std::string_view keyword = std::string_view(line).substr(0, line.find('$'));
    if (const ListKeyword* entry = FindKeyword(listKeywords, keyword)) {
        Session.*entry->list = CommandsOf(line);
        Session.*entry->index = 0;
    } else if (const TextKeyword* single = FindKeyword(textKeywords, keyword)) {
        Session.*single->value = text::Trim(Fields(line).at(1));
    } else if (text::Equal(keyword, "ANTENNA")) {
        StoreAntenna(line, Session.AntennaTable.at(static_cast<std::size_t>(row)));
    } else if (const RowKeyword* commands = FindKeyword(rowKeywords, keyword)) {
        Session.AntennaTable.at(static_cast<std::size_t>(row)).*commands->line = line;
    }
}

void ResetFlashConfig()
{
    if (!Session.bFlashConfigWasReset) {
        Session.bFlashConfigWasReset = true;
        Session.bFlashConfigLoaded = false;
    }
    if (Session.bFlashConfigLoaded) return;
    Session.AntennaTable.assign(1, {});
}

std::vector<std::string> CommandsOf(const std::string& line)
{
    std::vector<std::string> commands = Fields(line);
    commands.erase(commands.begin());
    for (std::string& command : commands) command = text::Trim(command);
    commands.emplace_back();
    return commands;
}
