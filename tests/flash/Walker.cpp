#include "tests/flash/Walker.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <stdexcept>

#include "forms/frmCheckJarlForGLTV.h"
#include "forms/frmPickAntennaDialog.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmWizard.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "tests/flash/FlashFiles.h"
#include "tests/flash/FlashFixture.h"
#include "text/Text.h"
#include "wizard/frmWizard_Events.h"

namespace fs = std::filesystem;

namespace {

// --- all that depends on how the program keeps what it knows ---------------------------------------------------------

/// True for a unit of the kind that the flash at hand is planned for, with the boot loader that it will wait for.
bool IsAwaited(const Road& road)
{
    return road.unit->board == Session.plan->iBoardType && road.unit->signOn == Session.plan->sBoardSignOn &&
           road.unit->command == Session.plan->stages.front().sFlashCmd;
}

/// The button of the last step that leads to the next board.
constexpr const char* anotherBoard = "cmdAnotherBoard";

// --- what is done ----------------------------------------------------------------------------------------------------

std::string Held(sim::Antenna& antenna)
{
    std::string held;
    for (const sim::Memory* memory : {&antenna.Flash(), &antenna.Stage(2), &antenna.Stage(3), &antenna.BootImage()}) {
        const auto image = memory->Image();
        held.append(image.begin(), image.end()).append("\n");
    }
    for (const auto& [name, value] : antenna.Held().All()) held += name + "=" + value + "\n";
    return held;
}

/// One for all, with all flash files; in memory where there is such a place, since each setting goes to the disk.
struct ProgramDirectory : TempDirectory {
    ProgramDirectory() : TempDirectory(fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path())
    {
        WriteProgramFiles(path, true);
    }
    static const fs::path& Path()
    {
        static const ProgramDirectory made;
        return made.path;
    }
};

/// The chord that leads to the diagnostics.
void Chord() { Form_KeyDown('A', false, true, true); }

void LeaveLastStep()
{
    if (anotherBoard == nullptr || !Press(ControlOf(frmWizard.Self, anotherBoard))) Chord();
}

/// In a modal dialog.
void AnswerModal(Form& form, bool wantsLibrary)
{
    if (&form != &frmCheckJarlForGLTV.Self) return ChooseNoModel(form);
    PressOption(form, frmCheckJarlForGLTV.optGLTV[wantsLibrary ? 0 : 1]);
    Press(frmCheckJarlForGLTV.cmdOK);
}

/// True when the program asks for the antenna's switch.
bool AsksForPower()
{
    const auto says = [](Control& control, const char* words) {
        return control.Visible && text::Holds(control.Caption(), words);
    };
    Control& banner = frmWizard.lblFlashStatus[0];
    switch (ShownStep()) {
    case STEP_3: return says(frmWizard.lblBoardVersion, "off and on");
    case STEP_5: return says(banner, "cycle power") || says(banner, "cycle its power") || says(banner, "upgraded");
    case STEP_6:
        return says(frmWizard.lblFlashStatus[1], "power off") || says(frmWizard.lblWaiting1, "off and on once more");
    default: return false;
    }
}

}  // namespace

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

Walker::Walker(const Road& road, const fs::path& home) : pc(home.empty() ? ProgramDirectory::Path() : home), road_(road)
{
    pc.timeLimit = pc.now + 30000;
    pc.onModal = [this](Form& form) {
        account_.pages.push_back(Page(form));
        modal_ = &form;
        if (presses_ <= 0) AnswerModal(form, road_.way == Road::Library);
    };
    pc.onBox = [this](const Box& box) { account_.pages.push_back("box " + OnOneLine(box.words + box.title)); };
    Connect(road);
    pc.StartProgram();
    pc.RunFor(15);
    Watch(turn_);
}

void Walker::Connect(const Road& road)
{
    road_ = road;
    pc.deviceGone = false;
    pc.Connect(road.unit->board, road.unit->name);
}

void Walker::Plug(const Road& road)
{
    Connect(road);
    pc.RunFor(15);
}

/// Switches the antenna off and on where the program asks for it or waits for something in vain.
void Walker::Watch(int turn)
{
    if (turn != turn_) return;
    const bool asked = AsksForPower() || pc.now > pressedAt_ + 100;
    asked_ = asked && asked_ < 60 ? asked_ + 1 : 0;
    if (asked_ == 3) {
        Switch(false);
        pc.At(ShownStep() == STEP_6 ? 10 : 2, [this] { Switch(true); });
    }
    pc.At(0.5, [this, turn] { Watch(turn); });
}

/// The port of an antenna that is connected by USB lives on its power.
void Walker::Switch(bool on)
{
    pc.SetPower(on);
    pc.deviceGone = usb_ && !on;
}

void Walker::ChoosePort()
{
    Control& port = road_.way == Road::USB ? frmWizard.optUSB : frmWizard.optSerial;
    if (ShownStep() == STEP_3 && Press(port)) usb_ = road_.way == Road::USB;
}

/// Presses Next as soon as it may be pressed; the port is chosen first where one has to be.
bool Walker::Next(double seconds)
{
    ChoosePort();
    if (!pc.RunUntil([] { return frmWizard.cmdNav[2].Enabled(); }, seconds)) return false;
    account_.pages.push_back(Page("left"));
    pc.At(0.01, [this] { account_.pages.push_back(Page("entered")); });
    pressedAt_ = pc.now;
    const bool pressed = Press(frmWizard.cmdNav[2]);
    pressedAt_ = never;
    pc.RunFor(0.1);
    return pressed;
}

/// On to the last step.
void Walker::Finish()
{
    for (int presses = 0; presses < 10 && ShownStep() != STEP_FINISHED; ++presses) {
        if (ShownStep() == STEP_4 && account_.planned == 0) account_.planned = pc.sent.size();
        if (!Next(1500)) break;
    }
    account_.pages.push_back(Page("left"));
    account_.finished = ShownStep() == STEP_FINISHED;
}

bool Walker::ToBoards()
{
    for (int tries = 0; tries < 100 && ShownStep() != STEP_2 && !IsExitRequested(); ++tries) {
        const int step = ShownStep();
        if (step == STEP_FINISHED)
            LeaveLastStep();
        else if (step < STEP_2)
            Next(60);
        else if (!Press(frmWizard.cmdNav[1]) && !(step >= STEP_5 && Press(frmWizard.cmdNav[2])))
            Chord();
        if (ShownStep() == step) pc.RunFor(20);
    }
    return ShownStep() == STEP_2;
}

Account Walker::Flash(const Road& road, bool falters)
{
    road_ = road;
    usb_ = false;
    asked_ = 0;
    pc.timeLimit = pc.now + 6000;
    Watch(++turn_);
    account_ = {};
    pc.sent.clear();
    if (falters) {
        SetFault("mute @VER 1");
        FailTransfer(1);
    }
    PressBoard(road.unit->board);
    Finish();
    account_.heard = pc.sent;
    account_.kept = Held(pc.antenna());
    return account_;
}

void Walker::SetFault(const std::string& words)
{
    constexpr std::array noSecondTry{3, 4, 6, 9, 11, 13};
    std::string ignored;
    if (std::find(noSecondTry.begin(), noSecondTry.end(), road_.unit->board) == noSecondTry.end())
        pc.antenna().SetFault(words, ignored);
}

/// A block that stays unanswered fails the transfer, a line or a record when it was sent again five times.
void Walker::FailTransfer(int times)
{
    const bool resends = road_.unit->loader == sim::Loader::HexLines || road_.unit->loader == sim::Loader::SRecords;
    SetFault("silent 4 " + std::to_string(resends ? 6 * times : times));
}

void Walker::Do(const std::string& moves, const Road& next)
{
    PickAntennaForm& picks = frmPickAntennaDialog;
    SelectFlashFileForm& files = frmSelectFlashFileDialog;
    const auto takeFile = [&](int entry) {
        if (Press(frmWizard.cmdOverrideFile)) Choose(files.cboChooseFile, entry);
        Press(files.cmdOK);
    };
    const std::map<char, std::function<void()>> table{
        {'c', [&] { PressBoard(road_.unit->board); }},
        {'n', [&] { Next(60); }},
        {'b', [&] { Press(frmWizard.cmdNav[1]); }},
        {'k', Chord},
        {'g', [&] { ToBoards(); }},
        {'B', [&] { pc.At(1.5, [] { Press(frmWizard.cmdNav[1]); }); }},  // in the middle of what follows
        {'K', [&] { pc.At(1.5, Chord); }},
        {'e',
         [&] {
             if (Finish(); !account_.finished)
                 throw std::runtime_error("the flash of " + road_.Name() + " ahead of it has not finished");
         }},
        {'l', LeaveLastStep},
        {'j', [&] { pc.RunFor(0.043); }},
        {'w', [&] { pc.RunFor(100); }},
        {'s', [&] { pc.SetPower(false); }},
        {'p', [&] { pc.SetPower(true), pc.RunFor(15); }},
        {'x', [&] { Plug(next); }},
        {'r', [&] { Press(frmWizard.cmdRetryGetVersions), pc.RunFor(20); }},
        {'d', [&] { Press(frmWizard.cmdPickAntenna); }},
        {'i',
         [&] {
             if (picks.Self.Visible)
                 Choose(picks.lstAntennas, static_cast<int>(Random(picks.lstAntennas.List().size())));
         }},
        {'o', [&] { Press(picks.cmdOK); }},
        {'q', [&] { Press(picks.cmdCancel); }},
        {'f', [&] { takeFile(0); }},
        {'F', [&] { takeFile(1); }},  // the damaged one
        {'t', [&] { FailTransfer(5); }},
        {'m', [&] { SetFault("mute SATINSTALL always"); }},
    };
    random_.seed(static_cast<unsigned>(road_.unit->board * 32 + next.unit->board));
    for (const char letter : moves)
        if (!IsExitRequested()) table.at(letter)();
}

void Walker::Roam(unsigned seed, int presses, std::string& trail)
{
    trail_ = &trail;
    random_.seed(seed);
    presses_ = presses;
    Stroll();
    pc.RunUntil([this] { return presses_ <= 0; }, 1e6);
    pc.RunFor(10);  // what was pressed last still reaches its antenna
}

/// One press, and at some time the next one; whether that waits for this one is up to the program.
void Walker::Stroll()
{
    constexpr double gaps[] = {0.05, 0.3, 1, 2, 7, 20};
    if (presses_ <= 0) return;
    pc.At(gaps[Random(6)], [this] { Stroll(); });
    const bool flashing = (ShownStep() == STEP_5 || ShownStep() == STEP_6) && !frmWizard.cmdNav[1].Enabled &&
                          !frmWizard.cmdNav[2].Enabled;
    held_ = flashing ? held_ + 1 : 0;
    if (held_ > 0 && held_ < 500) return Chord();
    if (--presses_ == 0) {
        if (modal_ && modal_->Visible) AnswerModal(*modal_, false);
    } else if (ShownStep() >= STEP_5 || Random(10) > 0) {
        PressAnything();
    } else if (Random(3) > 0) {
        Connect(Roads()[Random(Roads().size())]);
        *trail_ += " (" + road_.Name() + ")";
    } else {
        pc.SetPower(!pc.antenna().IsPowered());
        *trail_ += " (power)";
    }
}

void Walker::PressAnything()
{
    std::vector<std::pair<Form*, Control*>> choices;
    const auto add = [&](Form& form, const std::vector<Control*>& controls) {
        static const std::set<std::string> endsTheProgram{"cmdNav_0", "cmdNav_3"};
        for (Control* control : controls)
            if (control->Visible && control->Enabled && endsTheProgram.count(control->Name) == 0 &&
                (control->Click || !control->List().empty()))
                choices.emplace_back(&form, control);
    };
    Control& next = frmWizard.cmdNav[2];
    if (modal_ && modal_->Visible) {
        add(*modal_, modal_->Controls);
    } else if (Random(20) == 0) {
        *trail_ += " chord";
        return Chord();
    } else if (next.Enabled && Random(3) == 0) {
        add(frmWizard.Self, {&next});
    } else {
        add(frmWizard.Self, ControlsOf(ShownStep()));
        for (Form* dialog : Dialogs()) add(*dialog, dialog->Controls);
    }
    if (choices.empty()) return;
    const auto& [form, control] = choices[Random(choices.size())];
    if (control == &next && ShownStep() == STEP_4 && !BeginFlash()) return;
    *trail_ += " " + control->Name;
    if (ShownStep() == STEP_2) usb_ = false;
    if (control == &frmWizard.optUSB || control == &frmWizard.optSerial) usb_ = control == &frmWizard.optUSB;
    PressOrChoose(*form, *control);
}

void Walker::PressOrChoose(Form& form, Control& control)
{
    const std::size_t entries = control.List().size();
    const std::string kind = text::Left(control.Name, 3);
    if (entries > 0) {
        const std::size_t entry = Random(entries);
        *trail_ += ":" + std::to_string(entry);
        Choose(control, static_cast<int>(entry));
    } else if (kind == "opt" && !control.Group.empty()) {
        PressOption(form, control);
    } else {
        if (kind == "chk") control.Value = 1 - control.Value;
        Press(control);
    }
}

/// The antenna that the flash is for is at the port; it may falter. False when there is none: a row may be picked by
/// hand for a kind of board that can't take its file.
bool Walker::BeginFlash()
{
    constexpr const char* faults[] = {
        "silent 4", "mute BIASAZ always", "mute SATINSTALL always", "power-lost 6", "noise", "lag"};
    std::vector<Road> fit;
    std::copy_if(Roads().begin(), Roads().end(), std::back_inserter(fit), IsAwaited);
    if (fit.empty()) return false;
    if (!IsAwaited(road_)) Connect(fit[Random(fit.size())]);
    if (!pc.antenna().IsPowered()) pc.SetPower(true);
    if (Random(2) == 0) SetFault(faults[Random(std::size(faults))]);
    *trail_ += " (flash of " + road_.Name() + ")";
    return true;
}
