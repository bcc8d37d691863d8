// From the board at hand to the flash plan: the row of the antenna table, its files, its commands.

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/RowSearch.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/ProgramFiles.h"
#include "text/Text.h"

namespace {

/// Main boards whose software must match an older RF board behind them.
constexpr std::array rf5Antennas{
    "Orbimaster OPAL", "Orbimaster NEVA", "Orbimaster MAKO", "Orbimaster PERU", "Orbimaster QUAY",
};
constexpr std::string_view rf5CompatibleFile = "F61118T1.HEX";

/// Boards whose RF software depends on the antenna model, and the file for a model that wasn't chosen.
struct ModelBoard {
    const char* nameHolds;
    const char* defaultFile;
};
constexpr std::array<ModelBoard, 2> modelBoards{{
    {" RF6 BOARD", "F61205M.S19"},   // the model is asked here once frmCheckAntennasForRF6 stands
    {" RF6A BOARD", "F61271A.S19"},  // and here with frmCheckAntennasForRF6A
}};

bool IsOneOf(int type, std::initializer_list<int> types)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

const AntennaRecord& ChosenRow() { return Session.AntennaTable.at(static_cast<std::size_t>(Session.iAntennaIdx)); }

bool IsRF5Antenna(const AntennaRecord& row)
{
    return std::any_of(rf5Antennas.begin(), rf5Antennas.end(),
                       [&](const char* words) { return text::Equal(row.BoardIdWords, words); });
}

/// The loader that goes into the boot area of a Block board along with its software.
void ChooseBootloader()
{
    const int type = Session.iBoardType;
    const bool smallBoard = IsOneOf(type, {3, 4, 6, 9, 11, 13});
    if (!smallBoard && !IsOneOf(type, {15, 16, 20})) return;
    const bool searched = !Session.bSkipParams;
    Session.sNewRFBootloaderFile =
        smallBoard && searched ? Session.sRFOrMotorBootloaderFile : Session.sRF6BootloaderFile;
    if (Session.bUSBLink && IsOneOf(type, {15, 16})) Session.sNewRFBootloaderFile = Session.sDeluxeUSBBootloaderFile;
}

/// What the board is called in the table: its own words, or those of its version reply.
std::string SearchText()
{
    const Board& board = BoardOf(Session.iBoardType);
    std::string words = board.searchText != nullptr ? board.searchText
                        : Session.iBoardType == 0   ? Session.sMainVersion
                                                    : Session.sRFVersion;
    words = text::Replace(text::Replace(words, "\r", ""), "\n", "");
    const std::size_t family = text::Find(words, "DVB/DSS");
    return board.group != BoardGroup::Line && HasVersions(board.type) && family > 0 ? text::Mid(words, family) : words;
}

FileArguments Arguments(const std::string& size, const std::string& offset, const std::string& check)
{
    // A row may end ahead of numbers that its board has no use for.
    const auto number = [](const std::string& field) { return field.empty() ? 0 : text::ToLong(field); };
    return {number(size), number(offset), number(check)};
}

/// "DELAYXMIT 12": a pause of 12 ticks between two lines.
std::int16_t PauseTicks(const std::string& extra)
{
    if (extra.empty()) return 0;
    const std::int32_t ticks = text::ToLong(text::Mid(extra, std::string_view("DELAYXMIT").size() + 1));
    if (ticks < 0 || ticks > std::numeric_limits<std::int16_t>::max())
        throw std::overflow_error("a pause of " + text::Num(ticks) + " ticks");
    return static_cast<std::int16_t>(ticks);
}

/// A number that isn't one raises std::invalid_argument, and nothing of the row is taken.
void TakeRow(const AntennaRecord& row)
{
    const FileArguments first = Arguments(row.ImageSize, row.AddressOffset, row.CheckValue);
    const std::size_t colon = row.FlashFiles.find(':');
    if (BoardOf(Session.iBoardType).group == BoardGroup::Line) {
        Session.iLinePauseTicks = PauseTicks(row.Extra1);
        Session.iDelayTicks = Session.iLinePauseTicks;
        if (Session.iLinePauseTicks > 0) frmWizard.Timer2.Enabled = true;
        Session.sFlashFile = text::Trim(row.FlashFiles);
    } else if (colon != std::string::npos) {
        Session.SecondFile = Arguments(row.Extra1, row.Extra2, row.Extra3);
        Session.sFlashFile = text::Trim(row.FlashFiles.substr(0, colon));
        Session.sFlashFileName = text::Trim(row.FlashFiles.substr(colon + 1));
    } else {
        Session.sFlashFile = text::Trim(row.FlashFiles);
    }
    Session.FirstFile = first;
    Session.sBoardSignOn = text::Trim(row.SignOn);
    Session.sFlashCmd = text::Trim(row.FlashCmd);
    Session.sPreflashCmds = CommandsOf(row.PreflashLine);
    Session.iPreflashCmdIdx = 0;
    Session.sPostflashCmds = CommandsOf(row.PostflashLine);
    Session.iPostflashCmdIdx = 0;
}

/// False when the table doesn't know the board.
bool SearchBoard()
{
    const bool ownWords = HasVersions(Session.iBoardType) && Session.iBoardType != 0;
    const RowFound found = FindRow(Session.AntennaTable, Session.iAntennaIdx, SearchText(), ownWords);
    Session.iAntennaIdx = static_cast<std::int16_t>(found.row);
    if (found.fits) TakeRow(ChosenRow());
    return found.fits;
}

/// A picked antenna brings its row and files along; only the link has to be at the boot loader's speed.
bool UsePickedBoard()
{
    if (IsOneOf(Session.iBoardType, {20, 16, 15, 4, 11, 13, 3, 9, 6})) SetLinkSettings("9600,N,8,1");
    return !(ChosenRow().AntennaName.empty() && Session.sFlashFile.empty());
}

/// The main board's software must go with the RF board that is in the antenna already.
void FitFileToRFBoard()
{
    const AntennaRecord& row = ChosenRow();
    if (IsRF5Family(Session.sRFVersion) && IsRF5Antenna(row))
        Session.sFlashFile =
            Session.sRF5CompatibleMainFile.empty() ? std::string(rf5CompatibleFile) : Session.sRF5CompatibleMainFile;
    if (Session.bPCBVersionA2) {
        const std::string family = text::Left(Session.sFlashFile, 6);
        if (text::Holds(Session.sFlashFile, "F61102"))
            Session.sFlashFile = family + "S.HEX";
        else if (text::Holds(Session.sFlashFile, "F61118"))
            Session.sFlashFile = family + "L.HEX";
    }
    // frmCheckAntennasForRF will ask for the model here; without an answer it is the file that goes with any RF board.
    if (Session.bSkipParams && IsRF5Antenna(row)) Session.sFlashFile = rf5CompatibleFile;
}

void ShowFiles()
{
    std::string files = Session.sFlashFile;
    if (Session.iBoardType == 21) {
        if (text::Compare(Session.sLatestFPGARev, Session.sFPGARev) > 0) files += " : " + Session.sFPGAFileName;
        if (text::Compare(Session.sLatestBAPIRev, Session.sBAPIRev) > 0) files += " : " + Session.sBAPIFileName;
    } else if (!Session.sFlashFileName.empty()) {
        files += ", " + Session.sFlashFileName;
    }
    frmWizard.lblFlashFile.Caption = "The Burnline will update the board with file: " + files;
    frmWizard.lblFlashFile.Visible = true;
}

void FitFileToModel()
{
    if (Session.iBoardType == 21 || Session.sFlashFileName.empty()) return;
    for (const ModelBoard& board : modelBoards) {
        if (!text::Holds(ChosenRow().AntennaName, board.nameHolds)) continue;
        if (!Session.bCompatFlashChosen) Session.sCompatFlashFile = board.defaultFile;
        Session.sFlashFile = ResolveFlashFile(Session.sCompatFlashFile);
    }
}

}  // namespace

std::string ResolveFlashFile(const std::string& name)
{
    if (name.empty()) return name;
    const std::string latest = FindLatestFile(name);
    return latest.empty() ? name : latest;
}

void ResolveBoard()
{
    if (!Session.bSkipParams) {
        Session.sFlashFile.clear();
        Session.sFlashFileName.clear();
        Session.iAntennaIdx = 0;
    }
    ChooseBootloader();
    const bool known = Session.bSkipParams ? UsePickedBoard() : SearchBoard();
    if (!known) {
        if (!IsSettingTrue(SETTING_DRY_RUN)) ShowMsgBox(6, "SetStep");
        return;
    }
    // A JARL system with a newer RF board will be offered the satellite library here (frmCheckJarlForGLTV); until then
    // nothing is changed.
    Session.sFlashFile = ResolveFlashFile(Session.sFlashFile);
    FitFileToRFBoard();
    FitFileToModel();
    ShowFiles();
    WriteLogLine("++>Board picked to flash is " + BoardNameForLog());
}
