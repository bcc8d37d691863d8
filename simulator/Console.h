#pragma once
// The commands by which a person or a test handles the simulated antenna.

#include <functional>
#include <string>

#include "simulator/Antenna.h"

namespace sim {

class Console {
public:
    explicit Console(Antenna& antenna) : antenna_(antenna) {}

    /// What to do when the port is to vanish, and to come back after so many seconds (0: at once, infinity: not by
    /// itself).
    std::function<void(double)> portGone = [](double) {};

    /// Carries out one line. What there is to say about it goes to `answer`, failures too; false on "quit".
    bool Run(const std::string& line, double now, std::string& answer);

    static std::string Help();

private:
    std::string Dump(const std::string& directory) const;
    std::string SetFault(const std::string& words);

    Antenna& antenna_;
};

}  // namespace sim
