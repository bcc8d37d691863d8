#pragma once
// burnline-antenna behind its link.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tests/desktop/ChildProcess.h"

class AntennaProcess {
public:
    /// Switched on; returns when its software runs. Without a unit it is the first one of the board type; on USB its
    /// port goes and comes with its power; a quick one starts and erases in a fifth of the time.
    AntennaProcess(int board, const std::filesystem::path& link, bool fast, const std::string& unit = {},
                   bool usb = false, bool quick = false);

    void Do(const std::string& command) { child_.Write(command); }

    /// A shell's command that switches its power off and on, for whoever has no other hand on it.
    std::string PowerCommand();

    /// Reads on until a line of its output holds the words; raises std::runtime_error when none does in that time.
    void WaitFor(const std::string& words, double seconds = 20);

    /// Every byte that it has heard since the last call, in legible form: see the command "heard".
    std::string Heard();

    struct Holdings {
        std::string memory;
        std::map<std::string, std::string> parameters;
    };
    /// What it holds now.
    Holdings Dump(const std::filesystem::path& directory);

    /// All that it has said so far and that was waited for.
    const std::vector<std::string>& Said() const { return said_; }

private:
    ChildProcess child_;
    std::vector<std::string> said_;
};
