#include "tests/VirtualComputer.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <stdexcept>

#include "forms/frmCheckAntennas.h"
#include "forms/frmCheckJarlForGLTV.h"
#include "forms/frmPickAntennaDialog.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "forms/frmShowRelNotes.h"
#include "forms/frmWizard.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/Failure.h"
#include "session/Round.h"
#include "session/Session.h"
#include "text/Text.h"
#include "wizard/frmWizard_Events.h"

namespace fs = std::filesystem;

namespace {

constexpr double never = std::numeric_limits<double>::infinity();

template <class T, class... From>
void MakeNew(T& thing, const From&... from)
{
    std::destroy_at(&thing);
    std::construct_at(&thing, from...);
}

}  // namespace

TempDirectory::TempDirectory(const fs::path& under)
{
    static std::atomic<int> counter{0};
    path = under / ("burnline-test-" + std::to_string(std::random_device{}()) + "-" + std::to_string(++counter));
    fs::create_directories(path);
}

TempDirectory::~TempDirectory()
{
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

std::string ReadFile(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

void WriteFile(const fs::path& path, const std::string& content) { std::ofstream(path, std::ios::binary) << content; }

VirtualComputer::VirtualComputer(const fs::path& home)
{
    if (home.empty()) directory_ = std::make_unique<TempDirectory>();
    directory = home.empty() ? directory_->path : home;
    WriteFile(directory / "Burnline.ini", "[BurnlineParameters]\r\nCOMMPort=7\r\n");
    MakeNew(Session);
    MakeNew(frmWizard);
    MakeNew(frmShowRelNotes);
    MakeNew(frmSelectFlashFileDialog);
    MakeNew(frmPickAntennaDialog);
    MakeNew(frmCheckAntennasForRF, ListsForRF);
    MakeNew(frmCheckAntennasForRF6, ListsForRF6);
    MakeNew(frmCheckAntennasForRF6A, ListsForRF6A);
    MakeNew(frmCheckJarlForGLTV);
    MakeNew(frmShowPostFlashCmds);
    computer = this;
    MSComm1 = this;
    GetDefaultValues();  // no test finds the settings of another
}

VirtualComputer::~VirtualComputer()
{
    CloseLog();
    computer = nullptr;
    MSComm1 = nullptr;
}

sim::Antenna& VirtualComputer::Connect(int boardType, const std::string& unit)
{
    wire_.reset();
    const sim::Unit* kind = sim::FindUnit(boardType, unit);
    if (kind == nullptr) throw std::invalid_argument("there is no such unit");
    antenna_ = std::make_unique<sim::Antenna>(*kind);
    wire_ = std::make_unique<sim::Wire>(*antenna_, false);
    wire_->SetBaud(static_cast<int>(text::Val(settings_)));
    SetPower(true);
    return *antenna_;
}

void VirtualComputer::SetPower(bool on)
{
    wire_->Advance(now);
    antenna_->SetPower(on, now);
}

void VirtualComputer::Say(const std::string& bytes)
{
    waiting_ += bytes;
    event_ = comEvReceive;
}

void VirtualComputer::At(double seconds, std::function<void()> action)
{
    actions_.emplace(now + seconds, std::move(action));
}

void VirtualComputer::StartProgram()
{
    GetDefaultValues();
    ConnectForms();
    FormLoad();
}

bool VirtualComputer::RunUntil(const std::function<bool()>& holds, double seconds)
{
    const double end = now + seconds;
    while (!holds()) {
        if (now > end || Session.program.bExitRequested) return holds();
        RunRound();
    }
    return true;
}

void VirtualComputer::RunFor(double seconds)
{
    RunUntil([] { return false; }, seconds);
}

bool VirtualComputer::BoxWasShown(const std::string& words) const
{
    return std::any_of(boxes.begin(), boxes.end(), [&](const Box& box) { return text::Holds(box.words, words); });
}

std::string VirtualComputer::Log() const { return ReadFile(directory / "BNL.LOG"); }

double VirtualComputer::NextEvent() const
{
    double next = frmWizard.Timer1.Enabled ? nextTimer1_ : never;
    if (frmWizard.Timer2.Enabled && Session.link.iDelayTicks > 0) next = std::min(next, nextTimer2_);
    if (!actions_.empty()) next = std::min(next, actions_.begin()->first);
    return next;
}

void VirtualComputer::Collect()
{
    if (!wire_) return;
    wire_->Advance(now);
    std::string heard = wire_->Read(now);
    if (onHeard && !heard.empty()) onHeard(heard);
    if (heard.empty() || !open_ || deviceGone) return;
    waiting_ += heard;
    received += heard;
    event_ = comEvReceive;
}

void VirtualComputer::AdvanceTo(double time)
{
    now = std::max(now, time);
    if (now > timeLimit) throw std::runtime_error("the virtual time is over: something waits for ever");
    Collect();
    while (nextTimer1_ <= now) {
        nextTimer1_ = std::max(nextTimer1_ + 0.1, now);
        if (frmWizard.Timer1.Enabled) Timer1_Timer();
    }
    while (nextTimer2_ <= now) {
        nextTimer2_ = std::max(nextTimer2_ + 0.01, now + 1e-9);
        if (frmWizard.Timer2.Enabled) Timer2_Timer();
    }
}

void VirtualComputer::DoEvents()
{
    Collect();
    while (!actions_.empty() && actions_.begin()->first <= now) {
        const auto action = actions_.begin()->second;
        actions_.erase(actions_.begin());
        action();
    }
}

void VirtualComputer::WaitForEvent()
{
    double next = NextEvent();
    const std::size_t waiting = waiting_.size();
    // What the antenna alone hears or does is no event for the program.
    while (wire_ && waiting_.size() == waiting && wire_->NextEvent() < next) {
        now = std::max(wire_->NextEvent(), now + 1e-6);
        Collect();
    }
    if (waiting_.size() != waiting) next = now;
    if (next == never) throw std::runtime_error("nothing will ever happen again");
    AdvanceTo(std::max(next, now + 1e-6));
    DoEvents();
}

void VirtualComputer::Sleep(int ms) { AdvanceTo(now + ms / 1000.0); }

Answer VirtualComputer::MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title,
                               Answer standard)
{
    boxes.push_back({words, title, buttons, icon, standard});
    if (onBox) onBox(boxes.back());
    if (!answers.empty()) {
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    if (buttons == Buttons::RetryCancel) return Answer::Retry;
    if (buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel) return Answer::Yes;
    return Answer::OK;
}

void VirtualComputer::ShowModal(Form& form)
{
    form.Visible = true;
    if (onModal) onModal(form);
    const double patience = now + 1000;
    while (form.Visible && !Session.program.bExitRequested) {
        if (now > patience) throw std::runtime_error("nobody answers " + form.Name);
        WaitForEvent();
    }
    form.Visible = false;
}

int VirtualComputer::TestCommPort(int port)
{
    const auto found = ports.find(port);
    if (found == ports.end() || deviceGone) return PORT_MISSING;
    return found->second;
}

PortInfo VirtualComputer::DescribeCommPort(int port)
{
    return {"Adapter " + std::to_string(port), "join the group dialout, then log in again"};
}

void VirtualComputer::SetSettings(const std::string& settings)
{
    settings_ = settings;
    settingsSeen.push_back(settings);
    if (wire_) wire_->SetBaud(static_cast<int>(text::Val(settings)));
}

void VirtualComputer::SetPortOpen(bool open)
{
    if (open && deviceGone) throw Failure{FAIL_PORT_LOST, "the device is gone"};
    if (open && !open_) {
        waiting_.clear();
        event_ = 0;
    }
    open_ = open;
}

int VirtualComputer::InBufferCount()
{
    if (!open_) throw Failure{FAIL_PORT_CLOSED, "the port is closed"};
    if (deviceGone) throw Failure{FAIL_PORT_LOST, "the device is gone"};
    Collect();
    return static_cast<int>(waiting_.size());
}

void VirtualComputer::ClearInput() { waiting_.clear(); }

std::string VirtualComputer::Input()
{
    InBufferCount();
    return std::exchange(waiting_, {});
}

void VirtualComputer::Output(const std::string& bytes)
{
    if (!open_) throw Failure{FAIL_PORT_CLOSED, "the port is closed"};
    if (deviceGone) return;
    sent += bytes;
    std::string carried = bytes;
    if (onSent) onSent(carried);
    if (wire_) wire_->Write(carried, now);
}

int VirtualComputer::CommEvent()
{
    if (open_ && deviceGone) event_ = comEvReceive;
    return event_;
}

bool Press(Control& control)
{
    if (!control.Enabled || !control.Visible) return false;
    if (control.Click) control.Click();
    return true;
}

bool PressOption(Form& form, Control& option)
{
    if (!option.Enabled || !option.Visible) return false;
    SelectOption(form, option);
    return true;
}

Control& ControlOf(Form& form, const std::string& name)
{
    for (Control* control : form.Controls)
        if (control->Name == name) return *control;
    throw std::out_of_range(form.Name + " has no " + name);
}

void ChooseNoModel(Form& form)
{
    Control& none = ControlOf(form, "chkNoneOfThese");
    none.Value = 1;
    Press(none);
    Press(ControlOf(form, "cmdOK"));
}

void Choose(Control& list, int index) { list.Select(index); }
