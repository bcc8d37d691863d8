// FLASHCFG.TXT: which boards exist, which file belongs on each, what runs before and after its flash.

#include <array>
#include <cerrno>
#include <fstream>
#include <limits>
#include <stdexcept>

#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "persistence/Logs.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "session/Wizard.h"
#include "text/LineReader.h"
#include "text/Text.h"

namespace {

/// Rows, list entries and fields are counted in 16 bits; no real file comes near.
constexpr std::size_t maxEntries = std::numeric_limits<std::int16_t>::max();

struct ListKeyword {
    const char* keyword;
    GroupConfig FlashConfig::*group;
    std::vector<std::string> GroupConfig::*list;
};

struct TextKeyword {
    const char* keyword;
    std::string FlashConfig::*value;
};

struct RowKeyword {
    const char* keyword;
    std::string AntennaRecord::*line;
};

using C = FlashConfig;
using G = GroupConfig;
using R = AntennaRecord;

constexpr std::array<ListKeyword, 4> listKeywords{{
    {"COMMON PREFLASH MAINBOARD", &C::Main, &G::sCommonPreflash},
    {"COMMON POSTFLASH MAINBOARD", &C::Main, &G::sCommonPostflash},
    {"COMMON PREFLASH RFBOARD", &C::RF, &G::sCommonPreflash},
    {"COMMON POSTFLASH RFBOARD", &C::RF, &G::sCommonPostflash},
}};

constexpr std::array<TextKeyword, 10> textKeywords{{
    {"COMMON SIGNON", &C::sSignOn},
    {"COMMON NEWRF_SIGNON", &C::sNewRFSignOn},
    {"COMMON NEWRF_FLASHOK", &C::sNewRFFlashOK},
    {"COMMON NEWRF_CHECKSUM", &C::sNewRFChecksum},
    {"COMMON BOOTLOADER_UPGRADE_FILE", &C::sBootloaderUpgradeFile},
    {"COMMON NEW_RF_BOOTLOADER_FILE", &C::sNewRFBootloaderFile},
    {"COMMON BRIX_RF_OR_MOTOR_BOOTLOADER_FILE", &C::sRFOrMotorBootloaderFile},
    {"COMMON RF6_BOOTLOADER_FILE", &C::sRF6BootloaderFile},
    {"COMMON BRIX_DELUXE_3_OR_4_USB_BOOTLOADER_FILE", &C::sDeluxeUSBBootloaderFile},
    {"NEVAMAKO_RF5_COMPATIBLE_MAINBOARD_FILE", &C::sRF5CompatibleMainFile},
}};

constexpr std::array<RowKeyword, 2> rowKeywords{{{"PREFLASH", &R::PreflashLine}, {"POSTFLASH", &R::PostflashLine}}};

constexpr std::array<std::string R::*, 12> antennaFields{
    &R::AntennaName,   &R::BoardIdWords, &R::SignOn, &R::FlashCmd, &R::FlashFiles, &R::ImageSize,
    &R::AddressOffset, &R::CheckValue,   &R::Extra1, &R::Extra2,   &R::Extra3,     &R::Extra4,
};

/// A section of the file: an antenna's for boards of one group, or a list of antenna models and their files.
struct Section {
    const char* name;
    GroupConfig C::*group;
    std::vector<CompatEntry> C::*list;
};

constexpr std::array<Section, 8> sections{{
    {"MARINE RF7 SOFTWARE COMPATIBILITY", nullptr, &C::CompatMarineRF7},
    {"ANTENNA CONFIG MAINBOARD", &C::Main, nullptr},
    {"ANTENNA CONFIG RFBOARD", &C::RF, nullptr},
    {"MARINE RF6 DISH1000 SOFTWARE COMPATIBILITY", nullptr, &C::CompatMarineRF6},
    {"LAND MOBILE RF6 DISH1000 SOFTWARE COMPATIBILITY", nullptr, &C::CompatLandMobileRF6},
    {"MARINE RF6A DISH1000 SOFTWARE COMPATIBILITY", nullptr, &C::CompatMarineRF6A},
    {"LAND MOBILE RF6A DISH1000 SOFTWARE COMPATIBILITY", nullptr, &C::CompatLandMobileRF6A},
    {"LAND MOBILE RF DISH1000 SOFTWARE COMPATIBILITY", nullptr, &C::CompatLandMobileRF},
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

/// The lines of an antenna: its own, and what runs before and after its flash.
void StoreRowLine(const std::string& line, AntennaRecord& row)
{
    const std::string_view keyword = std::string_view(line).substr(0, line.find('$'));
    if (text::Equal(keyword, "ANTENNA"))
        StoreAntenna(line, row);
    else if (const RowKeyword* commands = FindKeyword(rowKeywords, keyword))
        row.*commands->line = line;
}

/// The lines that may stand anywhere in the file.
void StoreCommonLine(const std::string& line, FlashConfig& config)
{
    const std::string_view keyword = std::string_view(line).substr(0, line.find('$'));
    if (const ListKeyword* entry = FindKeyword(listKeywords, keyword))
        config.*entry->group.*entry->list = CommandsOf(line);
    else if (const TextKeyword* single = FindKeyword(textKeywords, keyword))
        config.*single->value = text::Trim(Fields(line).at(1));
}

/// Reads lines up to the section's end. False when the file ends first.
bool ReadSection(LineReader& file, const Section& section, FlashConfig& config, AntennaRecord& row)
{
    while (!file.AtEnd()) {
        const std::string line = file.Next();
        if (IsFiller(line)) continue;
        if (IsMark(line, "END ", section)) return true;
        if (section.list != nullptr) {
            StorePair(line, config.*section.list);
            continue;
        }
        StoreCommonLine(line, config);
        StoreRowLine(line, row);
    }
    return false;
}

/// Passes over the rest of a section. False when the file ends first.
bool SkipSection(LineReader& file, const Section& section)
{
    while (!file.AtEnd())
        if (IsMark(file.Next(), "END ", section)) return true;
    return false;
}

/// A row that can't be read ends its group's table; the other group's boards have nothing to do with it.
bool ReadRowSection(LineReader& file, const Section& section, FlashConfig& config)
{
    GroupConfig& group = config.*section.group;
    AntennaRecord row;
    bool ended = false;
    try {
        ended = ReadSection(file, section, config, row);
    } catch (const std::exception& failure) {
        std::string detail;
        const int number = FailureNumber(detail);
        if (!group.problem) group.problem = Failure{number, "FLASHCFG.TXT: " + std::string(failure.what())};
        ended = SkipSection(file, section);
    }
    // Half a section may lack the commands that save an antenna's parameters, so its row stays out.
    if (!ended) return false;
    CheckRoom(group.AntennaTable.size());
    if (!group.problem) group.AntennaTable.push_back(std::move(row));
    return true;
}

void ReadAll(LineReader& file, FlashConfig& config)
{
    while (!file.AtEnd()) {
        const std::string line = file.Next();
        if (IsFiller(line)) continue;
        const Section* section = SectionBegunBy(line);
        if (section == nullptr) {
            StoreCommonLine(line, config);
            continue;
        }
        AntennaRecord none;
        const bool ended = section->list != nullptr ? ReadSection(file, *section, config, none)
                                                    : ReadRowSection(file, *section, config);
        if (ended) continue;
        WriteLogLine("++>FLASHCFG.TXT ends before its line END " + std::string(section->name));
        TellFailure(FAIL_PAST_END, "GetLine");
    }
}

}  // namespace

std::optional<FlashConfig> ReadFlashConfig()
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(ProgramFile("FLASHCFG.TXT"), ignored)) return std::nullopt;
    FlashConfig config;
    for (const Section& section : sections)
        if (section.list != nullptr) (config.*section.list).assign(1, {});
    std::ifstream stream(ProgramFile("FLASHCFG.TXT"), std::ios::binary);
    if (!stream) throw Failure{FailureFromErrno(errno), "FLASHCFG.TXT can't be opened"};
    LineReader file(stream);
    file.SkipByteOrderMark();
    ReadAll(file, config);
    if (stream.bad()) throw Failure{FAIL_FILE_ACCESS, "FLASHCFG.TXT can't be read to its end"};
    return config;
}

const GroupConfig& GroupOf(const FlashConfig& config, int boardType)
{
    static const GroupConfig none;
    switch (BoardOf(boardType).group) {
    case BoardGroup::Line: return config.Main;
    case BoardGroup::Block:
    case BoardGroup::MultiStage: return config.RF;
    case BoardGroup::None: break;
    }
    return none;
}

std::vector<std::string> CommandsOf(const std::string& line)
{
    std::vector<std::string> commands = Fields(line);
    commands.erase(commands.begin());
    for (std::string& command : commands) command = text::Trim(command);
    commands.emplace_back();
    return commands;
}
