#include "tests/flash/Walker.h"

#include <algorithm>
#include <array>

#include "forms/frmCheckJarlForGLTV.h"
#include "forms/frmPickAntennaDialog.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "forms/frmWizard.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "tests/flash/FlashFiles.h"
#include "tests/flash/FlashFixture.h"
#include "text/Text.h"
#include "wizard/frmWizard_Events.h"

namespace {

// --- what is seen ----------------------------------------------------------------------------------------------------

/// The controls of each step, from the first to the last, in the order of the form.
constexpr std::array<std::pair<const char*, const char*>, 9> frames{{
    {"lblDiagsFrame", "cmdConfigUSERSat"},
    {"lblInstructionsSTEP_INTRO_A", "cmdViewRelNotes"},
    {"lblInstructionsSTEP_1_A", "lblInstructionsSTEP_1_C"},
    {"frmSubSTEP_2", "lblWarning"},
    {"lblBoardVersion", "cmdPickAntenna"},
    {"lblFlashFile", "lblOverrideFileWarning"},
    {"lblStatus", "lblFlashStatus_0"},
    {"lblFlashStatus_1", "lblWaiting2"},
    {"lblPickAntennaInfo", "chkShowFinishCmd"},
}};

std::vector<Control*> ControlsOf(int step)
{
    constexpr std::array everywhere{"mnuFile",    "mnuCommPort", "mnuUpdate",      "mnuHelp",    "cmdNav_0",
                                    "cmdNav_1",   "cmdNav_2",    "cmdNav_3",       "lblSendCmd", "txtSendCmd",
                                    "imgEnabled", "imgDisabled", "lblRedoCOMMPort"};
    std::vector<Control*> controls{&frmWizard.lblStep[(step + 8) % 9]};
    bool inside = false;
    for (Control* control : frmWizard.Self.Controls) {
        inside = inside || control->Name == frames[step].first;
        if (inside || std::find(everywhere.begin(), everywhere.end(), control->Name) != everywhere.end())
            controls.push_back(control);
        inside = inside && control->Name != frames[step].second;
    }
    return controls;
}

std::string Shown(const std::vector<Control*>& controls)
{
    std::string page;
    for (const Control* control : controls) {
        const std::string& name = control->Name;
        if (!control->Visible || name == "lblTimeLeft_1" || name == "lblWaiting_SecondsLeft") continue;
        page += name + " \"" + control->Caption() + control->Text() + "\"" + (control->Enabled ? " on" : " off");
        for (const int value : {int{control->Locked}, control->Value(), int{control->Bold}, control->BackColor(),
                                control->ForeColor(), control->ListIndex()})
            page += " " + std::to_string(value);
        page += "\n";
    }
    return page;
}

std::string Differing(const std::string& what, const std::string& fresh, const std::string& second)
{
    if (fresh == second) return {};
    const auto at = std::mismatch(fresh.begin(), fresh.end(), second.begin(), second.end()).first - fresh.begin();
    const std::size_t from = at > 30 ? static_cast<std::size_t>(at) - 30 : 0;
    const auto part = [&](const std::string& in) { return "[" + (in.size() > from ? in.substr(from, 80) : "") + "]"; };
    return what + " from " + std::to_string(at) + " on: " + part(second) + " in place of " + part(fresh) + "; ";
}

std::string Held(sim::Antenna& antenna)
{
    std::string kept;
    for (const sim::Memory* memory : {&antenna.Flash(), &antenna.Stage(2), &antenna.Stage(3), &antenna.BootImage()}) {
        const auto image = memory->Image();
        kept.append(image.begin(), image.end()).append("\n");
    }
    for (const auto& [name, value] : antenna.Held().All()) kept += name + "=" + value + "\n";
    return kept;
}

/// The chord that leads to the diagnostics.
void Chord() { Form_KeyDown('A', false, true, true); }

std::vector<Form*> Dialogs()
{
    return {&frmPickAntennaDialog.Self, &frmSelectFlashFileDialog.Self, &frmShowPostFlashCmds.Self};
}

}  // namespace

int ShownStep()
{
    for (int step = 0; step < frmWizard.fraStep.size(); ++step)
        if (frmWizard.fraStep[step].Visible) return step;
    return -1;
}

std::string Road::Name() const
{
    constexpr const char* ways[] = {"RS232", "USB", "Library"};
    return std::to_string(unit->board) + " " + text::Replace(unit->name, " ", "_") + " " + ways[way];
}

const std::vector<Road>& Roads()
{
    static const std::vector<Road> roads = [] {
        std::vector<Road> all;
        for (const sim::Unit& unit : sim::Units()) {
            all.push_back({&unit, Road::RS232});
            if (unit.board == 15 || unit.board == 16) all.push_back({&unit, Road::USB});
            if (text::Equal(unit.name, "JARL 6A")) all.push_back({&unit, Road::Library});
        }
        return all;
    }();
    return roads;
}

std::string Difference(const Account& fresh, const Account& second)
{
    std::string told;
    for (std::size_t page = 0; page < std::max(fresh.pages.size(), second.pages.size()) && told.empty(); ++page) {
        if (page >= fresh.pages.size()) return "a further page: " + second.pages[page].substr(0, 200);
        if (page >= second.pages.size()) return "no page: " + fresh.pages[page].substr(0, 200);
        const std::vector<std::string> a = text::Split(fresh.pages[page], "\n");
        const std::vector<std::string> b = text::Split(second.pages[page], "\n");
        const auto [at, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
        if (at == a.end() && other == b.end()) continue;
        told = Differing(a.front() + ", " + (at == a.end() ? *other : *at).substr(0, 30), at == a.end() ? "" : *at,
                         other == b.end() ? "" : *other);
    }
    return told + Differing("bytes", fresh.heard, second.heard) + Differing("kept", fresh.kept, second.kept);
}

Walker::Walker(const Road& road) : road_(road)
{
    static const TempDirectory program(std::filesystem::exists("/dev/shm") ? "/dev/shm" : "");
    static const bool filled = [] { return WriteProgramFiles(program.path), true; }();
    pc.directory = filled ? program.path : pc.directory;
    WriteFile(pc.directory / "Burnline.ini", "[BurnlineParameters]\r\nCOMMPort=7\r\n");
    pc.onModal = [this](Form& form) {
        account_.pages.push_back(form.Name + "\n" + Shown(form.Controls));
        answer_(form);
    };
    pc.onBox = [this](const Box& box) { account_.pages.push_back("box\n" + box.title + "\n" + box.words); };
    answer_ = [this](Form& form) {
        if (&form != &frmCheckJarlForGLTV.Self) return ChooseNoModel(form);
        PressOption(form, frmCheckJarlForGLTV.optGLTV[road_.way == Road::Library ? 0 : 1]);
        Press(frmCheckJarlForGLTV.cmdOK);
    };
    pc.Connect(road.unit->board, road.unit->name);
    pc.StartProgram();
    pc.RunFor(15);
    Watch(turn_);
}

void Walker::Plug(const Road& road)
{
    road_ = road;
    pc.deviceGone = false;
    pc.Connect(road.unit->board, road.unit->name);
    pc.RunFor(15);
}

void Walker::Look(const std::string& when)
{
    const int step = ShownStep();
    account_.pages.push_back("step " + std::to_string(step) + " " + when + "\n" + Shown(ControlsOf(step)));
    for (Form* dialog : Dialogs())
        if (dialog->Visible) account_.pages.back() += Shown(dialog->Controls);
}

/// Switches the antenna off and on where the program asks for it, in any wait.
void Walker::Watch(int turn)
{
    if (turn != turn_) return;
    const auto asks = [](Control& control, const char* words) {
        return control.Visible && text::Holds(control.Caption(), words);
    };
    const int step = ShownStep();
    Control& banner = frmWizard.lblFlashStatus[0];
    const bool asked = (step == STEP_3 && asks(frmWizard.lblBoardVersion, "off and on")) ||
                       (step == STEP_5 &&
                        (asks(banner, "cycle power") || asks(banner, "cycle its power") || asks(banner, "upgraded"))) ||
                       (step == STEP_6 && asks(frmWizard.lblFlashStatus[1], "power off"));
    asked_ = asked && asked_ < 60 ? asked_ + 1 : 0;
    if (asked_ == 3) {
        Switch(false);
        pc.At(step == STEP_6 ? 10 : 2, [this] { Switch(true); });
    }
    pc.At(0.5, [this, turn] { Watch(turn); });
}

/// The port of an antenna that is connected by USB lives on its power.
void Walker::Switch(bool on)
{
    pc.SetPower(on);
    pc.deviceGone = usb_ && !on;
}

/// Presses Next as soon as it may be pressed; the port is chosen first where one has to be.
bool Walker::Next(double seconds)
{
    Control& port = road_.way == Road::USB ? frmWizard.optUSB : frmWizard.optSerial;
    if (ShownStep() == STEP_3 && Press(port)) usb_ = road_.way == Road::USB;
    if (!pc.RunUntil([] { return frmWizard.cmdNav[2].Enabled(); }, seconds)) return false;
    Look("left");
    pc.At(0.01, [this] { Look("entered"); });
    return Press(frmWizard.cmdNav[2]);
}

/// On to the last step.
void Walker::Finish(double seconds)
{
    for (int presses = 0; presses < 10 && ShownStep() != STEP_FINISHED; ++presses) {
        if (ShownStep() == STEP_4 && account_.planned == 0) account_.planned = pc.sent.size();
        if (!Next(seconds)) break;
    }
    Look("left");
    account_.finished = ShownStep() == STEP_FINISHED;
}

bool Walker::ToBoards()
{
    for (int presses = 0; presses < 12 && ShownStep() != STEP_2 && !IsExitRequested(); ++presses) {
        if (ShownStep() == STEP_FINISHED)
            Chord();
        else if (ShownStep() < STEP_2)
            Next(60);
        else if (!Press(frmWizard.cmdNav[1]))
            Chord();
    }
    return ShownStep() == STEP_2;
}

Account Walker::Flash(const Road& road)
{
    road_ = road;
    usb_ = false;
    asked_ = 0;
    Watch(++turn_);
    account_ = {};
    pc.sent.clear();
    PressBoard(road.unit->board);
    Finish(1500);
    account_.heard = pc.sent;
    account_.kept = Held(pc.antenna());
    return account_;
}
