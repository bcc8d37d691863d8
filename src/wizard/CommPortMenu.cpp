// The COM menu: which ports there are, and which one is the antenna's.

#include "display/PortStatus.h"
#include "forms/frmWizard.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "wizard/Handlers.h"
#include "wizard/frmWizard_Events.h"

namespace {

/// What the menu's making found.
struct PortsFound {
    int nextItem = 1;                 // the menu's next free element; 1: there is no port
    int currentState = PORT_MISSING;  // a PORT_ value: how the port of the settings stands
};

int PortOfItem(int index)
{
    const double port = text::Val(text::Mid(frmWizard.mnuCommPort_Item[index].Caption(), 4));
    return port >= 1 && port <= 64 ? static_cast<int>(port) : 0;
}

/// What is known of a port, and for one that this user may not open, how to be allowed to.
std::string ToolTipOf(int port, int state)
{
    const PortInfo info = computer->DescribeCommPort(port);
    return state == PORT_FORBIDDEN ? info.toolTip + ". " + info.remedy : info.toolTip;
}

void ShowItem(int index, int port, int state, bool checked)
{
    if (index >= frmWizard.mnuCommPort_Item.size())
        frmWizard.mnuCommPort_Item.Load("").Click = [index] { mnuCommPort_Item_Click(index); };
    Control& item = frmWizard.mnuCommPort_Item[index];
    item.Caption = "COM" + text::Num(port);
    item.ToolTipText = ToolTipOf(port, state);
    item.Value = checked ? 1 : 0;
    item.Visible = true;
}

bool IsThere(int state) { return state == PORT_USABLE || state == PORT_IN_USE || state == PORT_FORBIDDEN; }

/// Lists the ports of the machine, busy and forbidden ones too. The current one is checked when `markCurrent` says so.
PortsFound BuildCommPortMenu(bool markCurrent)
{
    constexpr int lastPort = 64;
    PortsFound found;
    for (int port = 1; port <= lastPort; ++port) {
        const int state = computer->TestCommPort(port);
        if (!IsThere(state)) continue;
        const bool isCurrent = port == Session.link.iCommPort;
        if (isCurrent) found.currentState = state;
        ShowItem(found.nextItem, port, state, isCurrent && markCurrent);
        ++found.nextItem;
    }
    for (int index = found.nextItem; index < frmWizard.mnuCommPort_Item.size(); ++index) {
        frmWizard.mnuCommPort_Item[index].Visible = false;
        frmWizard.mnuCommPort_Item[index].Value = 0;
    }
    frmWizard.mnuCommPort_Item[0].Visible = found.nextItem == 1;
    return found;
}

void CheckItem(int index)
{
    for (Control& item : frmWizard.mnuCommPort_Item) item.Value = 0;
    frmWizard.mnuCommPort_Item[index].Value = 1;
}

/// The settings name no port: the first one of the machine is taken. Only the last digit of its number is read, so
/// that COM12 is taken as COM2; that is on purpose.
void TakeFirstPort()
{
    const std::string caption = frmWizard.mnuCommPort_Item[1].Caption;
    Session.link.iCommPort = static_cast<std::int16_t>(text::Val(text::Right(caption, 1)));
    CheckItem(1);
    InitAndOpenComm();
    SetSetting(SETTING_COMM_PORT, text::Num(Session.link.iCommPort));
}

/// Makes a menu item's port the current one, keeps it in the settings and opens it.
void SelectCommPort(int index)
{
    const int port = PortOfItem(index);
    Session.link.iCommPort = static_cast<std::int16_t>(port == 0 ? 1 : port);
    CheckItem(index);
    SetSetting(SETTING_COMM_PORT, text::Num(Session.link.iCommPort));
    SetSetting(SETTING_BAUD_RATE, text::Num(Session.link.lBaudRate));
    frmWizard.lblCommPortStatus.ToolTipText = "";
    InitAndOpenComm();
}

}  // namespace

void ChooseCommPortAtLoad()
{
    const PortsFound found = BuildCommPortMenu(true);
    frmWizard.Self.Visible = true;
    const int port = Session.link.iCommPort;

    if (port != 0 && found.currentState == PORT_IN_USE) {
        TellPortProblem(4, "FormLoad");
    } else if (port != 0 && found.currentState == PORT_FORBIDDEN) {
        TellPortProblem(27, "FormLoad");
    } else if (found.nextItem == 1) {
        TellPortProblem(21, "FormLoad");
    } else if (port == 0) {
        TakeFirstPort();
    } else if (found.currentState == PORT_MISSING && !IsPortChosen() && found.nextItem == 2) {
        SelectCommPort(1);  // nobody has chosen a port yet, and there is only one
    } else if (found.currentState == PORT_MISSING) {
        ShowPortStatus("COM port: COM Port not found (COM" + text::Num(port) + ").", true);
        SetNavCmds(NAV_BLOCKED);
    } else {
        InitAndOpenComm();
    }
    if (Session.link.bPortOpened) WriteLogLine("++>Comm port is: " + text::Num(Session.link.iCommPort));
}

void mnuCommPort_Open() { BuildCommPortMenu(Session.link.iCommID > 0); }

void mnuCommPort_Item_Click(int index)
{
    constexpr int lastPortByHand = 16;
    Guarded("mnuCommPort_Item_Click", [index] {
        if (PortOfItem(index) > lastPortByHand) {
            ShowMsgBox(512, "mnuCommPort_Item_Click");
        } else {
            SelectCommPort(index);
        }
    });
}
