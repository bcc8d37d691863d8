// Which board is to be flashed: the options and the two lists of STEP_2.

#include <array>

#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "wizard/frmWizard_Events.h"

namespace {

constexpr int NoBoard = 22;

constexpr const char* NormalLink = "9600,N,8,1";

struct OtherBoard {
    bool showPortChoice;
    const char* link;
    bool noDelay;  // a fast board: nothing is paced
};

/// Each entry of cboOtherBoard, behind the empty one.
constexpr std::array<OtherBoard, 7> otherBoards{{
    {false, "38400,N,8,1", true},
    {false, NormalLink, false},
    {false, NormalLink, false},
    {false, NormalLink, false},
    {false, NormalLink, false},
    {true, NormalLink, false},
    {true, NormalLink, false},
}};

/// While it lives the lists change by program, and their handlers keep still.
struct Busy {
    Busy() { frmWizard.bBoardChoiceBusy = true; }
    ~Busy() { frmWizard.bBoardChoiceBusy = false; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
};

bool IsOnIntro() { return frmWizard.iCurrentStep == STEP_INTRO; }

void RestoreTransmitDelay() { SetSetting(SETTING_TRANSMIT_DELAY, GetSetting(SETTING_TRANSMIT_DELAY_ORIGINAL)); }

void ChooseNothing()
{
    Session.iBoardType = NoBoard;
    ClearOptions(frmWizard.optBoardToFlash);
    if (!IsOnIntro()) SetNavCmds(15);
}

/// The board behind an entry of cboBoardToFlash is taken.
void TakeSingleCableBoard(int index)
{
    ResetFlashConfig();
    SetLinkSettings(NormalLink);
    RestoreTransmitDelay();
    frmWizard.bShowPortChoice = true;
    Session.iBoardType = BoardTypeOf(index, 0);
    SelectOption(frmWizard.Self, frmWizard.optBoardToFlash[2]);
}

/// The board behind an entry of cboOtherBoard is taken.
void TakeOtherBoard(int index)
{
    const auto at = static_cast<std::size_t>(index - 1);
    const OtherBoard board = at < otherBoards.size() ? otherBoards[at] : OtherBoard{false, NormalLink, false};
    ResetFlashConfig();
    SetLinkSettings(board.link);
    RestoreTransmitDelay();
    if (board.noDelay) SetSetting(SETTING_TRANSMIT_DELAY, "0");
    frmWizard.bShowPortChoice = board.showPortChoice;
    Session.iBoardType = BoardTypeOf(index, 1);
    SelectOption(frmWizard.Self, frmWizard.optBoardToFlash[3]);
}

void ListClicked(const char* name, Control& list, Control& otherList, void (*take)(int))
{
    const int index = list.ListIndex;
    if (frmWizard.bBoardChoiceBusy || index == -1) return;
    Guarded(name, [&] {
        const Busy busy;
        if (!IsOnIntro()) otherList.Select(0);
        if (index == 0) {
            ChooseNothing();
        } else {
            take(index);
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
    Session.iBoardType = NoBoard;
    SetNavCmds(STEP_2);
}

void IdentifiedBoardClicked(int type)
{
    Session.iBoardType = type;
    if (IsOnIntro()) return;
    const Busy busy;
    frmWizard.cboBoardToFlash.Select(0);
    frmWizard.cboOtherBoard.Select(0);
    RestoreTransmitDelay();
}

void OptionClicked(int index)
{
    ResetFlashConfig();
    if (!frmWizard.bBoardChoiceBusy) {
        frmWizard.bShowPortChoice = false;
        Session.lBaudRate = 9600;
        SetSetting(SETTING_BAUD_RATE, "9600");
        SetLinkSettings(NormalLink);
        if (index == 2) return ListOptionClicked(frmWizard.cboBoardToFlash);
        if (index == 3) return ListOptionClicked(frmWizard.cboOtherBoard);
    }
    if (index == 0 || index == 1) IdentifiedBoardClicked(index);
    SetNavCmds(STEP_2);
}

}  // namespace

void cboBoardToFlash_Click()
{
    ListClicked("cboBoardToFlash_Click", frmWizard.cboBoardToFlash, frmWizard.cboOtherBoard, TakeSingleCableBoard);
}

void cboOtherBoard_Click()
{
    ListClicked("cboOtherBoard_Click", frmWizard.cboOtherBoard, frmWizard.cboBoardToFlash, TakeOtherBoard);
}

void optBoardToFlash_Click(int index)
{
    Guarded("optBoardToFlash_Click", [index] { OptionClicked(index); });
}
