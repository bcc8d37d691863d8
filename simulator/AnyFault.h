#pragma once
// Faults by chance: the same seed always makes the same ones.

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "simulator/Units.h"

namespace sim {

class Dice {
public:
    explicit Dice(std::size_t seed) : random_(static_cast<unsigned>(seed)) {}

    /// From 0 on, `end` not included; 0 when there is no choice.
    std::size_t Below(std::size_t end) { return random_() % (end > 0 ? end : 1); }

    /// From 1 on, each order of size as likely as the next.
    std::size_t Spread(std::size_t last);

    /// One of them.
    template <class List>
    const auto& Of(const List& list)
    {
        return list[Below(std::size(list))];
    }

private:
    std::mt19937 random_;
};

/// What there is to strike, from the moment on at which the fault is set.
struct Reach {
    std::size_t units = 40;                // lines, records or blocks
    std::size_t heard = 2000, said = 500;  // bytes
    std::size_t answers = 40;              // to commands or units
    std::vector<std::string> commands{"HALT"};
    bool altersNothing = false;  // no more than time and number of answers may change
};

/// Words for Faults::Set that suit the unit's boot loader. No answer comes so late that a flash takes longer than ten
/// minutes more.
std::string AnyFault(const Unit& unit, const Reach& reach, Dice& dice);

/// The names of the faults that AnyFault makes.
std::vector<std::string> AnyFaultNames();

}  // namespace sim
