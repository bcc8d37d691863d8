#pragma once
// What goes wrong on request. Each fault strikes a number of times, or for good.

#include <map>
#include <string>
#include <vector>

#include "simulator/Disturbances.h"

namespace sim {

class Faults {
public:
    /// Takes "silent 12", "refuse 5 always", "mute BIASAZ 3", "clear" and the like; Help lists them. False when the
    /// words aren't understood, with the reason in `why`.
    bool Set(const std::string& words, std::string& why);

    /// True when the fault is set for this unit (lines, and blocks of each leg, are counted from 1; 0 for a fault
    /// without a unit). One of its times is used up.
    bool Strikes(const std::string& name, int unit = 0);

    /// True when the answer to this command is to be kept back; uses up one of the times.
    bool Mutes(const std::string& command);
    /// The same for an answer that is to come in pieces.
    bool Splits(const std::string& command);

    /// True while units lag as real ones do: answers come late, texts in pieces, and lines ahead of the sign-on.
    bool Lags() const;

    /// How late the next answer is, in seconds: what was asked for, or up to a quarter of a second where units lag, in
    /// a row that is always the same.
    double Delay();

    /// What strikes any byte or answer.
    Disturbances& Any() { return any_; }

    /// How often each fault has struck, by its name.
    std::map<std::string, int> Struck() const;

    /// Sets in force, one line each.
    std::vector<std::string> InForce() const;

    static const char* Help();

private:
    struct Fault {
        std::string name;
        std::string command;  // of "mute" and "split"
        int unit = 0;
        int times = 1;  // below 0: for good
    };

    bool StrikesCommand(const std::string& name, const std::string& command);
    bool UseUp(Fault& fault);

    std::vector<Fault> faults_;
    Disturbances any_;
    std::map<std::string, int> struck_;
    double delay_ = 0;
    unsigned lag_ = 1;  // the state of the row of lags
};

}  // namespace sim
