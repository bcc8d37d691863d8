#pragma once
// A computer and its serial port on a clock that the test owns: twenty seconds of silence pass in microseconds, and
// every run is the same run. At the far end of the port is the simulated antenna, or nobody.

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "forms/Control.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "simulator/Antenna.h"
#include "simulator/Wire.h"

struct Box {
    std::string words;
    std::string title;
    Buttons buttons;
    Icon icon;
    Answer standard;  // what Enter would press
};

/// A fresh directory that goes with the object; where the system keeps such things unless told otherwise.
struct TempDirectory {
    explicit TempDirectory(const std::filesystem::path& under = std::filesystem::temp_directory_path());
    ~TempDirectory();
    std::filesystem::path path;
};

class VirtualComputer : public Computer, public SerialControl {
public:
    /// Starts from nothing: a fresh session, fresh forms, COM7 as the only port, and as the program's directory an
    /// empty one of its own or the one that is given.
    explicit VirtualComputer(const std::filesystem::path& home = {});
    ~VirtualComputer() override;

    // --- the world, as the test sets it up -------------------------------------------------------------------------
    double now = 1000;                // seconds
    double timeLimit = 1e9;           // beyond it the clock throws: something waits for ever
    std::filesystem::path directory;  // the program's directory
    std::map<int, int> ports{{7, PORT_USABLE}};
    bool otherInstance = false;
    bool internet = false;
    std::vector<int> helpTopics;  // that were opened
    bool deviceGone = false;      // the adapter was pulled out
    bool highPriority = false;
    std::deque<Answer> answers;  // to boxes, in order; after that OK, Retry or Yes
    std::vector<Box> boxes;      // those that were shown
    std::function<void(const Box&)> onBox;
    std::function<void(Form&)> onModal;  // the user in front of a modal form, ahead of the first round
    std::vector<std::string> openDialogAnswer;
    std::optional<std::string> saveDialogAnswer;
    std::string sent;                                   // every byte that the program has written
    std::string received;                               // and every one that has reached it
    std::function<void(std::string&)> onSent, onHeard;  // what the line makes of the bytes, each way
    std::vector<std::string> settingsSeen;              // of the port

    /// Puts a simulated antenna at the far end of the port.
    sim::Antenna& Connect(int boardType, const std::string& unit = {});
    sim::Antenna& antenna() { return *antenna_; }
    void SetPower(bool on);                                 // the antenna's switch
    void Say(const std::string& bytes);                     // the far end says this now, whoever it is
    void At(double seconds, std::function<void()> action);  // the user or the world acts, that long from now

    // --- what a test does -------------------------------------------------------------------------------------------
    void StartProgram();  // settings, forms, FormLoad: up to the first round
    /// Runs rounds until it holds, at most that many virtual seconds; true when it holds.
    bool RunUntil(const std::function<bool()>& holds, double seconds);
    void RunFor(double seconds);
    bool BoxWasShown(const std::string& words) const;
    std::string Log() const;  // BNL.LOG so far

    // --- Computer ---------------------------------------------------------------------------------------------------
    void DoEvents() override;
    void WaitForEvent() override;
    void Sleep(int ms) override;
    double Seconds() override { return now; }
    std::string DateAndTime() override { return "2026-11-21 10:15:02"; }
    std::string Date() override { return "2026-11-21"; }
    Answer MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title,
                  Answer standard) override;
    void ShowModal(Form& form) override;
    std::vector<std::string> OpenDialog(const FileDialog&) override { return openDialogAnswer; }
    std::optional<std::string> SaveDialog(const FileDialog&) override { return saveDialogAnswer; }
    void ShowHelp(int topic, const std::string&) override { helpTopics.push_back(topic); }
    void CloseHelp() override {}
    std::string ProgramDirectory() override { return directory.string(); }
    bool PrevInstance() override { return otherInstance; }
    void SetHighPriority(bool high) override { highPriority = high; }
    bool InternetConnected() override { return internet; }
    int TestCommPort(int port) override;
    PortInfo DescribeCommPort(int port) override;
    std::string Revision() override { return "1.2.3"; }

    // --- SerialControl ----------------------------------------------------------------------------------------------
    void SetCommPort(int) override {}
    void SetSettings(const std::string& settings) override;
    std::string Settings() const override { return settings_; }
    void SetPortOpen(bool open) override;
    int CommID() const override { return open_ ? 1 : 0; }
    int InBufferCount() override;
    void ClearInput() override;
    std::string Input() override;
    void Output(const std::string& bytes) override;
    int CommEvent() override;

private:
    void AdvanceTo(double time);
    double NextEvent() const;
    void Collect();

    std::unique_ptr<TempDirectory> directory_;
    std::unique_ptr<sim::Antenna> antenna_;
    std::unique_ptr<sim::Wire> wire_;
    std::multimap<double, std::function<void()>> actions_;
    double nextTimer1_ = 0, nextTimer2_ = 0;
    bool open_ = false;
    std::string settings_ = "9600,N,8,1";
    std::string waiting_;  // received, not yet read
    int event_ = 0;
};

/// Clicks as the user would: does nothing and returns false when the control is hidden or disabled.
bool Press(Control& control);
/// The user selects an option of a group.
bool PressOption(Form& form, Control& option);
/// The control of that name; a form without it raises std::out_of_range.
Control& ControlOf(Form& form, const std::string& name);
/// In a chooser of antenna models: the model isn't listed.
void ChooseNoModel(Form& form);
/// The user chooses an entry of a list.
void Choose(Control& list, int index);

std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& content);
