// Which board is to be flashed: the options and the two lists of STEP_2.

#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "wizard/Handlers.h"
#include "wizard/frmWizard_Events.h"

namespace {

/// While it lives the lists change by program, and their handlers keep still.
struct Busy {
    Busy() { frmWizard.bBoardChoiceBusy = true; }
    ~Busy() { frmWizard.bBoardChoiceBusy = false; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
};

bool IsOnIntro() { return frmWizard.iCurrentStep == STEP_INTRO; }

void ChooseNothing()
{
    ChooseBoard(NoBoard);
    ClearOptions(frmWizard.optBoardToFlash);
    if (!IsOnIntro()) SetNavCmds(NAV_CHOICE);
}

/// The board behind an entry of a list is taken.
void TakeBoard(int type, int option)
{
    ChooseBoard(type);
    SelectOption(frmWizard.Self, frmWizard.optBoardToFlash[option]);
}

void ListClicked(const char* name, Control& list, Control& otherList, unsigned table, int option)
{
    const int index = list.ListIndex;
    if (frmWizard.bBoardChoiceBusy || index == -1) return;
    Guarded(name, [&] {
        const Busy busy;
        if (!IsOnIntro()) otherList.Select(0);
        if (index == 0) {
            ChooseNothing();
        } else {
            TakeBoard(BoardTypeOf(index, table), option);
        }
    });
}

/// The option of a list stands for what the list shows. With nothing chosen there, the board chosen before must not
/// stay in force unseen.
void ListOptionClicked(Control& list)
{
    if (list.ListIndex > 0) {
        list.Click();
        return;
    }
    ChooseBoard(NoBoard);
    SetNavCmds(STEP_2);
}

void IdentifiedBoardClicked(int type)
{
    ChooseBoard(type);
    if (IsOnIntro()) return;
    const Busy busy;
    frmWizard.cboBoardToFlash.Select(0);
    frmWizard.cboOtherBoard.Select(0);
}

void OptionClicked(int index)
{
    if (!frmWizard.bBoardChoiceBusy) {
        Session.link.lBaudRate = 9600;
        SetSetting(SETTING_BAUD_RATE, "9600");
        if (index == 2) return ListOptionClicked(frmWizard.cboBoardToFlash);
        if (index == 3) return ListOptionClicked(frmWizard.cboOtherBoard);
    }
    if (index == 0 || index == 1) IdentifiedBoardClicked(index);
    SetNavCmds(STEP_2);
}

}  // namespace

void ChooseBoard(int boardType)
{
    Session.choice = {.iBoardType = boardType};
    Session.reading = {};
    if (!IsOnIntro()) SetLinkSettings(BoardOf(boardType).link);
}

void cboBoardToFlash_Click()
{
    ListClicked("cboBoardToFlash_Click", frmWizard.cboBoardToFlash, frmWizard.cboOtherBoard, 0, 2);
}

void cboOtherBoard_Click()
{
    ListClicked("cboOtherBoard_Click", frmWizard.cboOtherBoard, frmWizard.cboBoardToFlash, 1, 3);
}

void optBoardToFlash_Click(int index)
{
    Guarded("optBoardToFlash_Click", [index] { OptionClicked(index); });
}
