// An antenna that doesn't tell its versions is picked by hand: the button of STEP_3, its dialog, and what it means for
// the session.

#include <algorithm>
#include <array>
#include <exception>

#include "forms/frmPickAntennaDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardRow.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "text/Text.h"
#include "wizard/Choosers.h"
#include "wizard/ModelChooser.h"

namespace {

PickAntennaForm& dialog = frmPickAntennaDialog;

/// The kind of board behind the words of a row.
struct PickedBoard {
    const char* words;
    int type;
};

constexpr std::array<PickedBoard, 21> pickedBoards{{
    {"BRIX MAIN BOARD", 12},
    {"CORA MAIN BOARD", 2},
    {"FJOR ST/FJOR DX MAIN BOARD", 10},
    {"ERIS MAIN BOARD", 8},
    {"DUNE ST/DUNE DX MAIN BOARD", 5},
    {"ALDA ST/ALDA DX MAIN BOARD", 7},
    {"ADCU", 14},
    {"HOLMMCU", 18},
    {"JARLGLMCU", 19},
    {"KELP Unit", 17},
    {"DVB/DSS 6", 20},
    {"DVB/DSS LM", 20},
    {"DVB/DSS MA", 20},
    {"DVB/DSS 6A", 20},
    {"DVB/DSS 6A LM", 20},
    {"DVB/DSS 6A MA", 20},
    {"DVB/DSS 7", 21},
    {"DVB/DSS 7 MA", 21},
    {"DVB/DSS 7 GL", 21},
    {"DOCKSIDE LINK BOX BOARD", 16},
    {"TOSA RECEIVER BOARD", 15},
}};

/// Boards whose software depends on the model, so that the name alone says too little.
constexpr std::array neverListed{
    "QEL MAKOSL/NEVASL/MAKO/NEVA/OPAL RF6 Board",
    "QEL RIGA/SOLA RF6 Board",
    "QEL MAKOSL/NEVASL/MAKO/NEVA/OPAL RF6A Board",
    "QEL RIGA/SOLA RF6A Board",
    "QEL JARL GLTV RF6A Board",
};

bool IsListed(const AntennaRecord& row)
{
    if (text::Holds(row.PreflashLine, "flashr") || text::Holds(row.PreflashLine, "PORT2")) return false;
    return std::none_of(neverListed.begin(), neverListed.end(),
                        [&](const char* name) { return text::Equal(row.AntennaName, name); });
}

const PickedBoard* BoardBehind(const AntennaRecord& row)
{
    const auto found = std::find_if(pickedBoards.begin(), pickedBoards.end(), [&](const PickedBoard& board) {
        return text::Equal(text::Trim(row.BoardIdWords), board.words);
    });
    return found == pickedBoards.end() ? nullptr : &*found;
}

/// What stood before the first click, so that a row without a board type of its own keeps that and going back finds it.
void SaveBeforePick()
{
    if (dialog.bPicked) return;
    Session.iSavedBoardType = Session.iBoardType;
    dialog.bUpgradeBootloader = Session.bUpgradeBootloader;
    dialog.bRFBootPhase = Session.bRFBootPhase;
}

void RestoreBeforePick()
{
    Session.iBoardType = Session.iSavedBoardType;
    Session.bUpgradeBootloader = dialog.bUpgradeBootloader;
    Session.bRFBootPhase = dialog.bRFBootPhase;
}

void ListAntennas()
{
    std::vector<std::string> names;
    dialog.RowOf.clear();
    const int last = static_cast<int>(Session.AntennaTable.size()) - 1;
    for (int index = 0; index < last; ++index) {
        const AntennaRecord& row = Session.AntennaTable[static_cast<std::size_t>(index)];
        if (row.AntennaName.empty()) break;
        if (!IsListed(row)) continue;
        names.push_back(row.AntennaName);
        dialog.RowOf.push_back(index);
    }
    dialog.lstAntennas.List = names;
    dialog.lstAntennas.ListIndex = -1;
    dialog.cmdOK.Enabled = false;
}

void HideDialog()
{
    dialog.lstAntennas.List = std::vector<std::string>{};
    dialog.lstAntennas.ListIndex = -1;
    dialog.Self.Visible = false;
}

void ShowPickedFiles()
{
    frmWizard.lblFlashFile.Caption = Session.sFlashFileName.empty()
                                         ? "Flash file is: " + Session.sFlashFile
                                         : "Flash files are: \r\n" + Session.sFlashFile + ", " + Session.sFlashFileName;
}

/// The row can't be used: nothing of it is taken, and no entry is chosen.
void RefuseRow(const AntennaRecord& row, const std::string& why)
{
    dialog.lstAntennas.ListIndex = -1;
    dialog.cmdOK.Enabled = false;
    WriteLogLine("++>The entry of " + row.AntennaName + " in FLASHCFG.TXT can't be used: " + why);
    computer->MsgBox("The entry of " + row.AntennaName + " in the configuration file cannot be used: " + why +
                         ".\n\nPlease Check for Updates and try again, or select another antenna.",
                     Buttons::OK, Icon::Exclamation, "QEL Burnline Assistant - Select Antenna/RF Board");
}

void TakeAntenna(int index)
{
    const AntennaRecord& row = Session.AntennaTable.at(static_cast<std::size_t>(index));
    const PickedBoard* board = BoardBehind(row);
    try {
        ReadRow(row, board != nullptr ? board->type : Session.iSavedBoardType);
    } catch (const std::exception& failure) {
        return RefuseRow(row, failure.what());
    }
    RestoreBeforePick();
    dialog.bPicked = true;
    if (board != nullptr) {
        Session.iBoardType = board->type;
        if (BoardOf(board->type).group != BoardGroup::Line) {
            Session.bUpgradeBootloader = false;
            Session.bRFBootPhase = true;
        }
    }
    TakeRow(row);
    ShowPickedFiles();
    Session.iAntennaIdx = static_cast<std::int16_t>(index);
    dialog.cmdOK.Enabled = true;
}

void lstAntennas_Click()
{
    const int entry = dialog.lstAntennas.ListIndex;
    dialog.cmdOK.Enabled = entry >= 0;
    if (entry < 0 || entry >= static_cast<int>(dialog.RowOf.size())) return;
    Guarded("lstAntennas_Click", [entry] { TakeAntenna(dialog.RowOf[static_cast<std::size_t>(entry)]); });
}

void frmPickAntennaDialog_cmdOK_Click()
{
    HideDialog();
    Session.bSkipParams = true;
    SetNavCmds(11);
    frmWizard.cmdRetryGetVersions.Enabled = false;
}

/// The session stays as the clicks have made it. Where an antenna is in use already, the user reads which one it is
/// now.
void frmPickAntennaDialog_cmdCancel_Click()
{
    HideDialog();
    if (Session.bSkipParams) SetNavCmds(11);
}

}  // namespace

void ConnectChoosers()
{
    frmWizard.cmdPickAntenna.Click = cmdPickAntenna_Click;
    dialog.lstAntennas.Click = lstAntennas_Click;
    dialog.cmdOK.Click = frmPickAntennaDialog_cmdOK_Click;
    dialog.cmdCancel.Click = frmPickAntennaDialog_cmdCancel_Click;
    frmShowPostFlashCmds.cmdDismiss.Click = [] { frmShowPostFlashCmds.Self.Visible = false; };
    frmShowPostFlashCmds.txtShowPostFlashCmds.Locked = true;
    ConnectModelChoosers();
}

void CloseChoosers()
{
    if (dialog.Self.Visible) HideDialog();
    frmShowPostFlashCmds.Self.Visible = false;
}

void cmdPickAntenna_Click()
{
    SaveBeforePick();
    ListAntennas();
    frmWizard.cmdNav[2].Enabled = false;  // a click in the list changes what Next would go on with
    dialog.Self.Visible = true;
}

void ForgetPickedAntenna()
{
    Session.bSkipParams = false;
    if (!dialog.bPicked) return;
    dialog.bPicked = false;
    RestoreBeforePick();
    SetLinkSettings("9600,N,8,1");
}

void ShowPostFlashCmds()
{
    const std::string commands = PostFlashCmdsForUser();
    frmShowPostFlashCmds.txtShowPostFlashCmds.Text = commands;
    frmShowPostFlashCmds.Self.Visible = !commands.empty();
}
