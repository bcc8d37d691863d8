// From the board at hand to the flash plan: the row of the antenna table, its files, its commands.

#include <algorithm>
#include <array>

#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardRow.h"
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

/// Boards whose RF software depends on the antenna model, and the file for a model that isn't in the list.
struct ModelBoard {
    const char* nameHolds;
    ModelList list;
    const char* defaultFile;
};
constexpr std::array<ModelBoard, 2> modelBoards{{
    {" RF6 BOARD", ModelList::RF6, "F61205M.S19"},
    {" RF6A BOARD", ModelList::RF6A, "F61271A.S19"},
}};

/// The link of a board that was picked by hand; what isn't here speaks as the antenna does.
constexpr int fastBoard = 14;
constexpr const char* fastLink = "38400,N,8,1";

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
    if (Session.iBoardType == fastBoard) SetLinkSettings(fastLink);
    if (IsOneOf(Session.iBoardType, {20, 16, 15, 4, 11, 13, 3, 9, 6})) SetLinkSettings("9600,N,8,1");
    return !(ChosenRow().AntennaName.empty() && Session.sFlashFile.empty());
}

/// A JARL system with a newer RF board may get the satellite library. What is known of its versions is the main board's
/// business alone.
void OfferLibrary()
{
    Session.bUpgradeToGLTV = false;
    if (Session.iBoardType != 0 || !text::Holds(Session.sMainVersion, "QEL JARL")) return;
    if (text::Holds(Session.sMainVersion, "QEL JARL GL")) return;
    if (IsRF7Family(Session.sRFVersion) || text::Holds(Session.sRFVersion, "DVB/DSS 6A")) AskForLibraryUpgrade();
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
    // Nothing was read, so the user has to know; without a model it is the file that goes with any RF board.
    if (Session.bSkipParams && IsRF5Antenna(row) && !AskForModel(ModelList::RF)) Session.sFlashFile = rf5CompatibleFile;
}

/// A further stage of board 21, when its newest file is newer than what the antenna has told; one that told nothing
/// gets it in any case.
std::string StageFile(const std::string& latest, const std::string& revision, std::string file, const char* family)
{
    if (text::Compare(latest, revision) <= 0) return {};
    if (file.empty()) file = FindLatestFile(family);
    return file.empty() ? file : " : " + file;
}

void ShowFiles()
{
    std::string files = Session.sFlashFile;
    if (Session.iBoardType == 21) {
        files += StageFile(Session.sLatestFPGARev, Session.sFPGARev, Session.sFPGAFileName, "F61340A.S19");
        files += StageFile(Session.sLatestBAPIRev, Session.sBAPIRev, Session.sBAPIFileName, "F61357A.S19");
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
        if (!AskForModel(board.list)) Session.sCompatFlashFile = board.defaultFile;
        Session.sFlashFile = ResolveFlashFile(Session.sCompatFlashFile);
        ShowFiles();
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
    OfferLibrary();
    Session.sFlashFile = ResolveFlashFile(Session.sFlashFile);
    FitFileToRFBoard();
    ShowFiles();
    FitFileToModel();
    if (IsExitRequested()) return;  // the program was closed instead of an answer, and its log with it
    WriteLogLine("++>Board picked to flash is " + BoardNameForLog());
}
