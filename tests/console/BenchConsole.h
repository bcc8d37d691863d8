#pragma once
// burnline-flash as a program of its own, at work on an antenna.

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/desktop/AntennaProcess.h"
#include "tests/desktop/ChildProcess.h"
#include "tests/desktop/ProgramHome.h"

using Words = std::vector<std::string>;

/// Where it is started: as a script does it, or by a person on a terminal of its own.
enum class On { Pipes, Terminal };

/// What can't be waited for in time is raised as std::runtime_error with all that was told until then.
class ConsoleProcess {
public:
    ConsoleProcess(const Words& arguments, On on);
    ~ConsoleProcess();
    ConsoleProcess(const ConsoleProcess&) = delete;
    ConsoleProcess& operator=(const ConsoleProcess&) = delete;

    /// Reads on until these words have come, behind those that were waited for before.
    void WaitFor(const std::string& words, double seconds = 40);
    /// Bytes as they are; "\x03" is Ctrl+C on a terminal.
    void Type(const std::string& bytes) const;
    void Signal(int number);
    /// The end of its input; a terminal is closed.
    void HangUp();

    /// Waits for its end. A signal that ended it is a negative number.
    int ExitCode(double seconds = 100);
    /// All that it has told, both streams.
    const std::string& Output() const { return output_; }

private:
    bool ReadSome(int ms);

    const On on_;
    ChildProcess child_;
    int line_ = -1;  // what is typed and what is told
    std::string output_;
    std::size_t seen_ = 0;
};

/// A directory with flash files, an antenna, and a console.
class Bench {
public:
    /// The configuration is that of the demonstration with short lists and waits: a NEVA keeps three parameters.
    Bench();

    void Edit(const std::string& file, const std::string& from, const std::string& to) const;
    /// A quick one without a line that takes time.
    void StartAntenna(int board, const std::string& unit = {});
    /// COM7 is the port of its settings.
    void Start(Words arguments, On on = On::Pipes);
    /// With nobody there, and a power supply that listens.
    void StartUnattended(Words arguments, On on = On::Pipes);
    /// The antenna says a word as soon as it can be heard; else the console would wait for one.
    void Greet();

    std::string Log() const { return home.Bytes("BNL.LOG"); }
    /// It ends with this code, its log is complete, and its port is free.
    void ExpectEnd(int exitCode);
    /// The antenna's state has these lines, in this order.
    void ExpectState(const Words& lines);

    ProgramHome home;
    std::unique_ptr<AntennaProcess> antenna;
    std::unique_ptr<ConsoleProcess> console;
};

/// Runs cases at the same time: most of a flash is waiting.
void Together(const std::vector<std::pair<std::string, std::function<void()>>>& cases);
