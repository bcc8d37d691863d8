// Whatever was chosen, read, flashed, failed or left before in one run of the program: the next antenna hears the same
// bytes, ends with the same memory and parameters, and its user sees the same as in a fresh program.
//
// Every pair has one of the histories, and there are 5,000 random walks. The long form, every history of every pair and
// as many walks as one likes: BURNLINE_WALKS=20000 core-tests --gtest_filter='*SecondIsAsTheFirst*'
// One walk alone, with all that it pressed: BURNLINE_WALK=<its number>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>

#include "platform/Failure.h"
#include "session/Wizard.h"
#include "tests/flash/Walker.h"

namespace {

constexpr std::size_t shares = 4;  // so many tests, each with its part of the roads, can run at once
constexpr std::size_t usualWalks = 5000;
constexpr std::size_t longestWalk = 60;

/// What was done with another antenna before; the letters are Walker::Do's.
struct History {
    const char* name;
    const char* moves;
};

constexpr History histories[] = {
    {"only plugged in, a moment later", "j"},
    {"chosen", "c"},
    {"read", "cnb"},
    {"read, left by the chord", "cnk"},
    {"looked at up to STEP_4", "cnnbb"},
    {"looked at, left by the chord", "cnnk"},
    {"left in the middle of reading", "cBnw"},
    {"left in the middle of reading by the chord", "cKnw"},
    {"read twice", "cnbcnb"},
    {"silent, then read by Retry", "scnprnbb"},
    {"silent, the next one read by Retry", "scnxrb"},
    {"silent, picked, the dialog left open", "scndib"},
    {"silent, picked, cancelled", "scndiqb"},
    {"silent, picked", "scndiob"},
    {"silent, picked, looked at", "scndionbb"},
    {"another file chosen", "cnnfbb"},
    {"another file flashed", "cnnfel"},
    {"a damaged file refused", "cnnFnb"},
    {"flashed", "cel"},
    {"flashed, left by the chord", "cek"},
    {"flashed twice", "celgcel"},
    {"failed five times and retried", "cnntel"},
    {"parameters not read", "cnnmnwk"},
    {"parameters not restored", "cnnnwmnwwk"},
};

const Account& Fresh(const Road& road, bool falters)
{
    static std::map<std::string, Account> accounts;
    Account& account = accounts[road.Name() + (falters ? " falters" : "")];
    if (account.pages.empty()) {
        Walker walker(road);
        if (walker.ToBoards()) account = walker.Flash(road, falters);
        EXPECT_TRUE(account.finished) << road.Name();
    }
    return account;
}

/// What is different of `next` behind a history; empty when nothing is. Its own transfer may fail once, which shows
/// what is left of the retries.
std::string Verdict(const Road& first, const Road& next, bool falters, const std::function<void(Walker&)>& history)
{
    const Account& fresh = Fresh(next, falters);
    try {
        Walker walker(first);
        history(walker);
        if (!walker.ToBoards())
            return IsExitRequested() ? "the program has ended" : "no way back from " + Page("").substr(0, 11);
        walker.Plug(next);
        return Difference(fresh, walker.Flash(next, falters));
    } catch (const Failure& failure) {
        return "failure " + std::to_string(failure.number) + ": " + failure.what;
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

/// A number of the environment; 0 when it isn't there.
std::size_t Wanted(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? 0 : static_cast<std::size_t>(std::atoi(value));
}

class SecondIsAsTheFirst : public testing::TestWithParam<std::size_t> {
protected:
    void TearDown() override { EXPECT_EQ(0, different_) << "of " << all_ << " are different"; }

    bool IsMine(std::size_t road) const { return road % shares == GetParam(); }

    /// Tells the first ones alone, and all of them in the long form.
    void Expect(const std::string& what, const std::string& difference)
    {
        ++all_;
        if (difference.empty()) return;
        if (++different_ <= 5 || Wanted("BURNLINE_WALKS") > 0) std::cout << what << ": " << difference << std::endl;
    }

private:
    int all_ = 0, different_ = 0;
};

TEST_P(SecondIsAsTheFirst, ForEveryPair)
{
    const bool all = Wanted("BURNLINE_WALKS") > 0;
    const std::vector<Road>& roads = Roads();
    for (std::size_t pair = 0; pair < roads.size() * roads.size(); ++pair) {
        const std::size_t a = pair / roads.size(), b = pair % roads.size();
        for (std::size_t h = 0; h < std::size(histories) && IsMine(b); ++h) {
            // Each pair has one; each antenna comes before and behind every one of them.
            if (!all && h != (a + 7 * b) % std::size(histories)) continue;
            const auto history = [&](Walker& walker) {
                if (walker.ToBoards()) walker.Do(histories[h].moves, roads[b]);
            };
            Expect(roads[a].Name() + " -> " + roads[b].Name() + ", " + histories[h].name,
                   Verdict(roads[a], roads[b], a % 4 == 0, history));
        }
    }
}

TEST_P(SecondIsAsTheFirst, BehindEveryWalk)
{
    const std::size_t walks = Wanted("BURNLINE_WALKS"), only = Wanted("BURNLINE_WALK");
    const std::vector<Road>& roads = Roads();
    for (std::size_t walk = 1; walk <= (walks > 0 ? walks : std::max(usualWalks, only)); ++walk) {
        const Road &first = roads[walk / roads.size() % roads.size()], &next = roads[walk % roads.size()];
        if (!IsMine(walk % roads.size()) || (only > 0 && walk != only)) continue;
        std::string trail;
        const auto roam = [&](Walker& walker) {
            walker.Roam(static_cast<unsigned>(walk), static_cast<int>(1 + walk * 7 % longestWalk), trail);
        };
        const std::string difference = Verdict(first, next, walk % 10 == 0, roam);
        Expect("BURNLINE_WALK=" + std::to_string(walk) + (only > 0 ? trail : "") + " -> " + next.Name(), difference);
    }
}

#if defined(_WIN32) || defined(__SANITIZE_ADDRESS__)
constexpr std::size_t sharesHere = 1;  // the same core at a fraction of its speed
#else
constexpr std::size_t sharesHere = shares;
#endif
INSTANTIATE_TEST_SUITE_P(Share, SecondIsAsTheFirst, testing::Range(std::size_t{0}, sharesHere));

}  // namespace
