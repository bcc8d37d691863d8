#pragma once
// What goes wrong with any byte or answer, whatever it is about: with one of them, or by chance again and again.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace sim {

class Disturbances {
public:
    /// A byte that the antenna hears, a byte that it says, an answer of its, a line, record or block that it stores.
    enum class Side { Heard, Said, Answer, Stored };

    static bool Knows(const std::string& name);

    /// Takes "said-lost 12", "late about 50 3000 7" and the like, word by word; Faults::Help lists them. False when
    /// they aren't understood, with the reason in `why`.
    bool Set(const std::vector<std::string>& words, std::string& why);
    void Clear() { all_.clear(); }

    /// What becomes of a byte on its way: nothing, one byte or two.
    std::string Pass(Side side, char byte);

    /// An answer passes: what is in store for it. Seconds.
    struct Fate {
        double late = 0;   // so much later
        double apart = 0;  // in pieces, with so much between them; 0: in one
        bool twice = false;
    };
    Fate NextAnswer();

    /// From the byte that the antenna says now on, all is held back for so many seconds; 0: no.
    double Holds() { return LongestOf(Effect::Hold); }
    /// How long the antenna is busy with the line, record or block that has come in, seconds.
    double Busy() { return LongestOf(Effect::Busy); }

    const std::map<std::string, int>& Struck() const { return struck_; }
    std::vector<std::string> InForce() const;

private:
    enum class Effect { Change, Lose, Insert, Hold, Delay, Double, Part, Busy };
    struct Kind;
    static const Kind* Find(const std::string& name);

    struct Disturbance {
        const Kind* kind;
        std::string words;
        long left;            // until it strikes; below 1: it has
        long mean;            // about every so many; 0: once
        double seconds;       // at most, where it takes a time
        std::uint32_t state;  // of its own row of numbers
    };

    static std::uint32_t Random(Disturbance& disturbance);
    bool Strikes(Disturbance& disturbance);
    double LongestOf(Effect effect);
    static double Time(Disturbance& disturbance);

    std::vector<Disturbance> all_;
    std::map<std::string, int> struck_;
};

}  // namespace sim
