// What is known of the antenna's versions, as the user reads it on STEP_3.

#include "display/Display.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

std::string ChosenEntry(const Control& list)
{
    const std::vector<std::string>& entries = list.List;
    const int index = list.ListIndex;
    return index >= 0 && index < static_cast<int>(entries.size()) ? entries[static_cast<std::size_t>(index)] : "";
}

std::string VersionsInWords()
{
    const Reading& reading = Session.reading;
    const std::string main = text::TrimLines(reading.sMainVersion), rf = text::TrimLines(reading.sRFVersion);
    if (!TellsMainVersion(BoardInHand())) return rf;
    if (!reading.bPCBVersionA2) return "Main board: " + main + "\nRF board: " + rf;
    return main + "\nRF1 Board detected in antenna\nAn RF1 board compatible Main board flash file will be used.";
}

void ShowAskingForVersions()
{
    const Board& board = BoardOf(Session.choice.iBoardType);
    if (HasVersions(board.type)) {
        frmWizard.lblBoardVersion.Caption =
            TellsMainVersion(board.type) ? "Getting Main board Version" : "Getting RF board Version";
        return;
    }
    std::string name;
    if (board.list == BoardList::SingleCable) name = ChosenEntry(frmWizard.cboBoardToFlash);
    if (board.list == BoardList::Other) name = ChosenEntry(frmWizard.cboOtherBoard);
    frmWizard.lblStep[3].Visible = false;
    frmWizard.lblBoardVersion.Caption = name + "\n selected. Click Next to continue";
}

void ShowPickedAntenna()
{
    const GroupConfig& group = GroupOf(*Session.config, Session.choice.iBoardType);
    const auto row = static_cast<std::size_t>(Session.choice.pickedRow.value());
    frmWizard.lblBoardVersion.Caption = "Could not automatically determine antenna software versions\nYou selected: " +
                                        group.AntennaTable.at(row).AntennaName +
                                        "\nIf this correct, click Next button to continue, else select another antenna";
}

void ShowNoVersions()
{
    const int type = Session.choice.iBoardType;
    if (TellsMainVersion(type))
        frmWizard.lblBoardVersion.Caption = "Could not retrieve Main Board version!\nIs the antenna on?";
    else if (HasVersions(type))
        frmWizard.lblBoardVersion.Caption =
            "Could not retrieve RF Board version!\nIs the antenna on?\n\nNote: RF1 board is not supported by the "
            "Burnline";
    if (HasVersions(type)) {
        for (Control* way : {&frmWizard.cmdPickAntenna, &frmWizard.cmdRetryGetVersions}) {
            way->Visible = true;
            way->Enabled = true;
        }
    }
    Session.link.iCommMode = STATE_IDLE;
    if (Session.link.bPortOpened) EnableCmdEntry();
    if (HasVersions(type) && frmWizard.iCurrentStep == STEP_3) SetNavCmds(STEP_3);
}

}  // namespace

void UpdateVersionsDisplay(int what)
{
    switch (what) {
    case 6:
        if (HasVersions(BoardInHand())) frmWizard.lblBoardVersion.Caption = VersionsInWords();
        SetNavCmds(NAV_CHOSEN);
        break;
    case 7: ShowAskingForVersions(); break;
    case 8: ShowPickedAntenna(); break;
    case 9: ShowNoVersions(); break;
    default: break;
    }
}
