#include "tests/flash/Pages.h"

#include <algorithm>
#include <array>
#include <set>

#include "forms/frmPickAntennaDialog.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "forms/frmWizard.h"
#include "persistence/INIUtilities.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

/// Each step with its controls, from the first to the last, in the order of the form.
struct Frame {
    const char *name, *first, *last;
};
constexpr std::array<Frame, 9> frames{{
    {"DIAGNOSTICS", "lblDiagsFrame", "cmdConfigUSERSat"},
    {"INTRO", "lblInstructionsSTEP_INTRO_A", "lblInstructionsSTEP_INTRO_E"},
    {"STEP_1", "lblInstructionsSTEP_1_A", "lblInstructionsSTEP_1_C"},
    {"STEP_2", "frmSubSTEP_2", "lblWarning"},
    {"STEP_3", "lblBoardVersion", "cmdPickAntenna"},
    {"STEP_4", "lblFlashFile", "lblOverrideFileWarning"},
    {"STEP_5", "lblStatus", "lblFlashStatus_0"},
    {"STEP_6", "lblFlashStatus_1", "lblWaiting2"},
    {"FINISHED", "lblPickAntennaInfo", "chkShowFinishCmd"},
}};

const std::set<std::string> onEveryStep{"mnuFile",    "mnuCommPort", "mnuUpdate",       "mnuHelp",        "cmdNav_0",
                                        "cmdNav_1",   "cmdNav_2",    "cmdNav_3",        "lblSendCmd",     "txtSendCmd",
                                        "imgEnabled", "imgDisabled", "lblRedoCOMMPort", "cmdAnotherBoard"};
const std::set<std::string> figuresOfTime{"lblTimeLeft_1", "lblWaiting_SecondsLeft"};

std::string Shown(const std::vector<Control*>& controls)
{
    std::string page;
    for (const Control* control : controls) {
        if (figuresOfTime.count(control->Name) > 0) continue;
        page += "\n" + control->Name + " ";
        if (!control->Visible) continue;
        page += "\"" + OnOneLine(control->Caption() + control->Text()) + "\"" + (control->Enabled ? "" : " off");
        for (const int value : {int{control->Locked}, control->Value(), int{control->Bold}, control->BackColor(),
                                control->ForeColor(), control->ListIndex()})
            page += " " + std::to_string(value);
    }
    return page;
}

/// Printable, on one line.
std::string Excerpt(const std::string& text, std::size_t from)
{
    std::string excerpt;
    for (const char c : text.substr(std::min(from, text.size()), 60))
        excerpt += c >= ' ' && c <= '~' ? std::string(1, c) : "<" + text::Hex(static_cast<unsigned char>(c), 2) + ">";
    return "[" + excerpt + "]";
}

std::string Differing(const std::string& what, const std::string& fresh, const std::string& second)
{
    if (fresh == second) return {};
    const auto [at, other] = std::mismatch(fresh.begin(), fresh.end(), second.begin(), second.end());
    const std::size_t from = std::max<std::ptrdiff_t>(at - fresh.begin() - 20, 0);
    return what + " from " + std::to_string(from) + " on: " + Excerpt(second, from) + " in place of " +
           Excerpt(fresh, from) + "; ";
}

}  // namespace

std::string OnOneLine(const std::string& words) { return text::Replace(text::Replace(words, "\r", ""), "\n", "|"); }

int ShownStep()
{
    for (int step = 0; step < frmWizard.fraStep.size(); ++step)
        if (frmWizard.fraStep[step].Visible) return step;
    return -1;
}

std::vector<Control*> ControlsOf(int step)
{
    static std::array<std::vector<std::size_t>, frames.size()> places;  // in the form: always the same
    const std::vector<Control*>& all = frmWizard.Self.Controls;
    const Frame& frame = frames.at(static_cast<std::size_t>(step));
    std::vector<std::size_t>& known = places[static_cast<std::size_t>(step)];
    bool inside = false;
    for (std::size_t at = known.empty() ? 0 : all.size(); at < all.size(); ++at) {
        inside = inside || all[at]->Name == frame.first;
        if (inside || onEveryStep.count(all[at]->Name) > 0) known.push_back(at);
        inside = inside && all[at]->Name != frame.last;
    }
    std::vector<Control*> controls{&frmWizard.lblStep[(step + 8) % 9]};
    for (const std::size_t place : known) controls.push_back(all[place]);
    return controls;
}

/// The dialogs that stand beside the wizard now.
std::vector<Form*> Dialogs()
{
    std::vector<Form*> open{&frmPickAntennaDialog.Self, &frmSelectFlashFileDialog.Self, &frmShowPostFlashCmds.Self};
    std::erase_if(open, [](Form* form) { return !form->Visible; });
    return open;
}

std::string Page(const Form& form) { return form.Name + Shown(form.Controls); }

std::string Page(const std::string& when)
{
    const int step = ShownStep();
    std::string page = frames.at(static_cast<std::size_t>(step)).name + (" " + when) + Shown(ControlsOf(step));
    for (Form* dialog : Dialogs()) page += Shown(dialog->Controls);
    return page + "\nlink " + MSComm1->Settings() + " " + GetSetting(SETTING_TRANSMIT_DELAY);
}

std::string Difference(const Account& fresh, const Account& second)
{
    std::string told;
    std::set<std::string> known;  // a control is told once
    for (std::size_t page = 0; page < std::max(fresh.pages.size(), second.pages.size()); ++page) {
        const auto lines = [page](const Account& account) {
            return text::Split(page < account.pages.size() ? account.pages[page] : "no page", "\n");
        };
        const std::vector<std::string> a = lines(fresh), b = lines(second);
        told += Differing("page", a.front(), b.front());
        if (a.front() != b.front()) break;
        for (std::size_t line = 1; line < std::min(a.size(), b.size()); ++line) {
            const std::string name = a[line].substr(0, a[line].find(' '));
            if (a[line] != b[line] && known.insert(name).second)
                told += Differing(a.front() + " " + name, a[line], b[line]);
        }
    }
    return told + Differing("bytes", fresh.heard, second.heard) + Differing("kept", fresh.kept, second.kept);
}
