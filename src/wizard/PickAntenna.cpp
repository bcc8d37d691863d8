// An antenna that doesn't tell its versions is picked by hand: the button of STEP_3, its dialog, and what it means for
// the session.

#include <exception>

#include "forms/frmPickAntennaDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "forms/frmWizard.h"
#include "knowledge/RowTable.h"
#include "knowledge/Utilities.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "wizard/Choosers.h"
#include "wizard/ModelChooser.h"

namespace {

PickAntennaForm& dialog = frmPickAntennaDialog;

const std::vector<AntennaRecord>& Rows() { return GroupOf(*Session.config, Session.choice.iBoardType).AntennaTable; }

void ListAntennas()
{
    std::vector<std::string> names;
    const bool hasAnswered = !Session.reading.sMainVersion.empty() || !Session.reading.sRFVersion.empty();
    dialog.RowOf.clear();
    int index = 0;
    for (const AntennaRecord& row : Rows()) {
        if (row.AntennaName.empty()) break;
        if (CanBePicked(row, hasAnswered)) {
            names.push_back(row.AntennaName);
            dialog.RowOf.push_back(index);
        }
        ++index;
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

/// The row can't be used: nothing of it is taken, and no entry is chosen.
void RefuseRow(const AntennaRecord& row, const std::string& why)
{
    dialog.lstAntennas.ListIndex = -1;
    dialog.cmdOK.Enabled = false;
    WriteLogLine("++>The entry of " + row.AntennaName + " in FLASHCFG.TXT can't be used: " + why);
    computer->MsgBox("The entry of " + row.AntennaName + " in the configuration file cannot be used: " + why +
                         ".\n\nPlease Check for Updates and try again, or select another antenna.",
                     Buttons::OK, Icon::Exclamation, "QEL Burnline Assistant - Select Antenna/RF Board", Answer::OK);
}

int ChosenRow()
{
    const int entry = dialog.lstAntennas.ListIndex;
    const bool isThere = entry >= 0 && entry < static_cast<int>(dialog.RowOf.size());
    return isThere ? dialog.RowOf[static_cast<std::size_t>(entry)] : -1;
}

/// A row whose numbers can't be read is refused here, where another one can be taken.
void lstAntennas_Click()
{
    const int index = ChosenRow();
    dialog.cmdOK.Enabled = index >= 0;
    if (index < 0) return;
    const AntennaRecord& row = Rows().at(static_cast<std::size_t>(index));
    try {
        ReadRow(row, BoardTypeOf(row).value_or(Session.choice.iBoardType));
    } catch (const std::exception& failure) {
        RefuseRow(row, failure.what());
    }
}

void frmPickAntennaDialog_cmdOK_Click()
{
    const int row = ChosenRow();
    HideDialog();
    if (row < 0) return;
    Session.choice.pickedRow = row;
    WriteLogLine("++>Antenna selected by user: " + Rows().at(static_cast<std::size_t>(row)).AntennaName);
    UpdateVersionsDisplay(8);
    SetNavCmds(NAV_CHOSEN);
    frmWizard.cmdRetryGetVersions.Enabled = false;
}

/// An antenna that was picked before stays in use.
void frmPickAntennaDialog_cmdCancel_Click()
{
    HideDialog();
    SetNavCmds(NAV_CHOSEN);
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
    ListAntennas();
    frmWizard.cmdNav[2].Enabled = false;  // what it would go on with is being chosen
    dialog.Self.Visible = true;
}

void ShowPostFlashCmds()
{
    const std::string commands = PostFlashCmdsForUser();
    frmShowPostFlashCmds.txtShowPostFlashCmds.Text = commands;
    frmShowPostFlashCmds.Self.Visible = !commands.empty();
}
