#include "simulator/Disturbances.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace sim {

namespace {

/// A whole number from 1 on, taken off the front; 0 when there is none.
long TakeNumber(std::vector<std::string>& words)
{
    long value = 0;
    if (words.empty()) return 0;
    const std::string word = words.front();
    words.erase(words.begin());
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    return error == std::errc() && end == word.data() + word.size() && value > 0 ? value : 0;
}

}  // namespace

struct Disturbances::Kind {
    const char* name;
    Side side;
    Effect effect;
    bool timed;  // takes milliseconds
};

const Disturbances::Kind* Disturbances::Find(const std::string& name)
{
    static constexpr std::array<Kind, 11> kinds{{
        {"heard-changed", Side::Heard, Effect::Change, false},
        {"heard-lost", Side::Heard, Effect::Lose, false},
        {"heard-inserted", Side::Heard, Effect::Insert, false},
        {"said-changed", Side::Said, Effect::Change, false},
        {"said-lost", Side::Said, Effect::Lose, false},
        {"said-inserted", Side::Said, Effect::Insert, false},
        {"held", Side::Said, Effect::Hold, true},
        {"late", Side::Answer, Effect::Delay, true},
        {"doubled", Side::Answer, Effect::Double, false},
        {"parted", Side::Answer, Effect::Part, true},
        {"busy", Side::Stored, Effect::Busy, true},
    }};
    const auto* kind = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& one) { return name == one.name; });
    return kind == kinds.end() ? nullptr : kind;
}

bool Disturbances::Knows(const std::string& name) { return Find(name) != nullptr; }

bool Disturbances::Set(const std::vector<std::string>& words, std::string& why)
{
    std::vector<std::string> rest(words.begin() + 1, words.end());
    Disturbance one{Find(words.front()), "", 0, 0, 0, 1};
    for (const std::string& word : words) one.words += (one.words.empty() ? "" : " ") + word;
    const bool again = !rest.empty() && rest.front() == "about";
    if (again) rest.erase(rest.begin());
    one.left = TakeNumber(rest);
    const long milliseconds = one.kind->timed ? TakeNumber(rest) : 1;
    const long seed = rest.empty() ? one.left : TakeNumber(rest);
    if (one.left == 0 || milliseconds == 0 || seed == 0 || !rest.empty()) {
        why = words.front() + " wants a number" + (one.kind->timed ? ", milliseconds" : "") +
              " and perhaps a seed, from 1 on";
        return false;
    }
    one.seconds = static_cast<double>(milliseconds) / 1000;
    one.state = static_cast<std::uint32_t>(seed);
    if (again) {
        one.mean = one.left;
        one.left = 1 + Random(one) % (2 * one.mean - 1);
    }
    all_.push_back(one);
    return true;
}

std::uint32_t Disturbances::Random(Disturbance& disturbance)
{
    disturbance.state = disturbance.state * 1664525u + 1013904223u;
    return disturbance.state >> 8;
}

bool Disturbances::Strikes(Disturbance& disturbance)
{
    if (--disturbance.left != 0) return false;
    if (disturbance.mean > 0) disturbance.left = 1 + Random(disturbance) % (2 * disturbance.mean - 1);
    ++struck_[disturbance.kind->name];
    return true;
}

/// The time that was asked for; of those that come by chance any that is no longer.
double Disturbances::Time(Disturbance& disturbance)
{
    constexpr std::uint32_t steps = 256;
    if (disturbance.mean <= 1) return disturbance.seconds;
    return disturbance.seconds * (1 + Random(disturbance) % steps) / steps;
}

std::string Disturbances::Pass(Side side, char byte)
{
    std::string passed(1, byte);
    for (Disturbance& one : all_) {
        if (one.kind->side != side || one.kind->effect == Effect::Hold || !Strikes(one)) continue;
        const std::uint32_t random = Random(one);
        // A single bit, or any other byte.
        const auto mask = static_cast<char>((random & 1) != 0 ? 1 << (random >> 1) % 8 : 1 + (random >> 1) % 255);
        if (one.kind->effect == Effect::Lose) passed.clear();
        if (one.kind->effect == Effect::Insert) passed.insert(passed.begin(), static_cast<char>(random >> 4));
        if (one.kind->effect == Effect::Change && !passed.empty())
            passed.back() = static_cast<char>(passed.back() ^ mask);
    }
    return passed;
}

Disturbances::Fate Disturbances::NextAnswer()
{
    Fate fate;
    for (Disturbance& one : all_) {
        if (one.kind->side != Side::Answer || !Strikes(one)) continue;
        if (one.kind->effect == Effect::Delay) fate.late += Time(one);
        if (one.kind->effect == Effect::Part) fate.apart = Time(one);
        if (one.kind->effect == Effect::Double) fate.twice = true;
    }
    return fate;
}

double Disturbances::LongestOf(Effect effect)
{
    double seconds = 0;
    for (Disturbance& one : all_) {
        if (one.kind->effect == effect && Strikes(one)) seconds = std::max(seconds, Time(one));
    }
    return seconds;
}

std::vector<std::string> Disturbances::InForce() const
{
    std::vector<std::string> lines;
    for (const Disturbance& one : all_) {
        if (one.left > 0) lines.push_back(one.words);
    }
    return lines;
}

}  // namespace sim
