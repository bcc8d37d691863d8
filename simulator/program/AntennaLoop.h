#pragma once
// The antenna behind its port, in real time: one loop that sleeps until a byte is due or somebody wants something.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "simulator/Console.h"
#include "simulator/Wire.h"
#include "simulator/program/PseudoTerminal.h"

/// What there is to see of an antenna.
struct AntennaView {
    bool powered = false;
    bool port = true;  // the port is there
    bool software = true;
    std::string state;
    std::uint32_t bytesFlashed = 0;
    std::vector<std::pair<std::string, std::string>> parameters;
    std::vector<std::string> faults;

    bool operator==(const AntennaView&) const = default;
};

/// How an antenna differs from an ordinary one.
struct AntennaWays {
    bool fast = false;   // bytes take no time
    bool quick = false;  // start-up, erase and the boot loader's wait take a fifth of their time
    bool usb = false;    // the port is the antenna's own and is there only while it has power
};

class AntennaLoop {
public:
    /// Makes port and link; raises std::runtime_error when that fails.
    AntennaLoop(const sim::Unit& unit, const std::string& link, const AntennaWays& ways);
    ~AntennaLoop();
    AntennaLoop(const AntennaLoop&) = delete;
    AntennaLoop& operator=(const AntennaLoop&) = delete;

    /// Called from the loop, with seconds since its start and what happened.
    std::function<void(double, const std::string&)> happened = [](double, const std::string&) {};
    /// Called from the loop when what there is to see has changed, ten times a second at most; may be empty.
    std::function<void(const AntennaView&)> shown;

    /// Switches the antenna on and runs until somebody says "quit". Commands are read from standard input too; its end
    /// is a "quit" where standard input is a pipe and `endsWithInput` is set.
    void Run(bool endsWithInput);

    /// Hands a command to the loop, see Console; from any thread or signal handler.
    void Command(const char* line) const;

    const std::string& Path() const { return port_.Path(); }

private:
    enum class Input { More, Ended, Quit };

    double Now() const;
    Input ReadCommands(int descriptor, std::string& partial);
    bool Obey(const std::string& line);
    void Exchange(bool input);
    void Say(const std::string& words) const;
    void RemovePort(double seconds);
    void ReturnPort();
    void FollowPower();
    void Show();
    AntennaView View() const;
    double NextTime() const;

    sim::Antenna antenna_;
    sim::Wire wire_;
    sim::Console console_;
    PseudoTerminal port_;
    int commands_[2] = {-1, -1};  // a pipe: others write lines, the loop reads them
    std::string fromInput_, fromPipe_;
    double start_;
    std::string said_;  // and not taken by the port so far
    const AntennaWays ways_;
    double portBack_;          // when the port comes back; infinity: not by itself
    bool portLost_ = false;    // and not with the power either
    bool awaitsUser_ = false;  // the port has come back, and no program has opened it yet
    double nextShow_ = 0;
    bool changed_ = true;
    AntennaView last_;
};
