// From the command line's port to an antenna that speaks on it.

#include "console/Operator.h"
#include "forms/frmWizard.h"
#include "persistence/INIUtilities.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "wizard/frmWizard_Events.h"

namespace {

/// "COM7", "com7", "7".
int PortNumber(const std::string& words)
{
    const std::string digits = text::StartsWith(words, "COM") ? words.substr(3) : words;
    const bool isNumber = !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
    return isNumber && digits.size() <= 3 ? static_cast<int>(text::Val(digits)) : 0;
}

bool PortIsOpen() { return Session.link.iCommID > 0; }

}  // namespace

void Operator::Prepare()
{
    std::string why;
    if (!options_.board.empty() && FindBoard(AllBoards(), options_.board, why) == nullptr) {
        voice_.Complain("refused", why);
        return console_.Leave(END_USAGE);
    }
    int port = 0;
    if (!options_.port.empty()) {
        port = PortNumber(options_.port);
        if (port == 0) port = ports_.PortOf(options_.port);
        if (port == 0) {
            voice_.Complain("refused",
                            "There is no serial port " + options_.port + "; --list-ports shows what there is.");
            return console_.Leave(END_NO_PORT);
        }
    } else if (!console_.IsUnattended()) {
        std::vector<std::string> entries;
        std::vector<int> numbers;
        int standard = -1;
        for (int number = 1; number <= LastCommPort; ++number) {
            if (console_.TestCommPort(number) == PORT_MISSING) continue;
            if (text::Num(number) == GetSetting(SETTING_COMM_PORT)) standard = static_cast<int>(numbers.size());
            entries.push_back("COM" + text::Num(number) + "  " + console_.DescribeCommPort(number).toolTip);
            numbers.push_back(number);
        }
        if (entries.empty()) return;  // that there is none is told when the forms are loaded
        if (standard < 0 && entries.size() == 1) standard = 0;
        const int picked = console_.Ask().PickFromList("Serial port", entries, standard);
        if (picked < 0) return IsExitRequested() ? void() : console_.Leave(END_CANCELLED);
        port = numbers[static_cast<std::size_t>(picked)];
    }
    if (port != 0) SetSetting(SETTING_COMM_PORT, text::Num(port));
}

/// Another port than the one that can't be opened, from the menu.
void Operator::ChoosePort()
{
    mnuCommPort_Open();
    std::vector<std::string> entries;
    for (int index = 1; index < frmWizard.mnuCommPort_Item.size(); ++index)
        if (frmWizard.mnuCommPort_Item[index].Visible)
            entries.push_back(frmWizard.mnuCommPort_Item[index].Caption() + "  " +
                              frmWizard.mnuCommPort_Item[index].ToolTipText());
    if (console_.IsUnattended() || !options_.port.empty() || entries.empty()) {
        const std::string remedy = console_.DescribeCommPort(Session.link.iCommPort).remedy;
        Leave(END_NO_PORT, remedy);
    }
    const int picked = console_.Ask().PickFromList("Serial port", entries, -1);
    if (IsExitRequested()) throw Over{};
    if (picked < 0) Leave(END_CANCELLED, "");
    mnuCommPort_Item_Click(picked + 1);
}

/// A quiet antenna answers to Enter. One that is off, or sits in its boot loader, speaks when its power comes.
void Operator::AwaitFirstWord()
{
    constexpr double enterEvery = 3, hintAfter = 5, switchAfter = 10, patience = 30;
    constexpr int enter = 13;
    double start = console_.Seconds(), lastEnter = start;
    bool hinted = false, switched = false;
    Await([&] {
        if (IsOn(frmWizard.cmdNav[2])) return true;
        if (!PortIsOpen()) return true;
        const double now = console_.Seconds();
        if (now - lastEnter >= enterEvery && !supply_.IsSwitching()) {
            lastEnter = now;
            frmWizard.txtSendCmd.KeyPress(enter);
        }
        if (now - start >= hintAfter && !hinted) {
            hinted = true;
            voice_.Tell("status", "Nothing has come from the antenna yet. Switch it on, and check the cable.");
        }
        if (now - start >= switchAfter && !switched && supply_.IsThere()) {
            switched = true;
            SwitchPower();
        }
        if (supply_.IsSwitching()) start = now;
        if (now - start >= patience && console_.IsUnattended())
            Leave(END_NOT_KNOWN, "Nothing has come from the antenna on COM" + text::Num(Session.link.iCommPort) + ".");
        return false;
    });
}

void Operator::AwaitPort()
{
    stage_ = Stage::Port;
    // Next may be on although no port could be opened at start.
    while (!PortIsOpen() || !IsOn(frmWizard.cmdNav[2])) {
        while (!PortIsOpen()) ChoosePort();
        stage_ = Stage::Versions;
        AwaitFirstWord();
    }
    stage_ = Stage::Versions;
}
