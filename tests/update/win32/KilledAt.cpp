#include "tests/update/ReplacementFixture.h"

/// By an exception of a kind that nobody on its way knows: what was done until then is done, and nothing after it.
bool KilledAt(int step, const std::function<void(const StepHook&)>& act)
{
    struct Kill {};
    int steps = 0;
    try {
        act([&] {
            if (++steps == step) throw Kill{};
        });
    } catch (const Kill&) {
        return true;
    }
    return false;
}
