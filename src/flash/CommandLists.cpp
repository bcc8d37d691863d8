#include "flash/CommandLists.h"

#include <algorithm>

#include "text/Text.h"

bool IsWaitEntry(const std::string& entry, int& seconds)
{
    if (!text::StartsWith(entry, "WAIT")) return false;
    seconds = static_cast<int>(std::clamp(text::Val(text::Mid(entry, 5)), 0.0, 3000.0));
    return true;
}

short TicksOf(int seconds) { return static_cast<short>(std::clamp(seconds * 10, 1, 32767)); }

Previous JudgePrevious(std::int16_t& index, CommandInFlight& command)
{
    constexpr int maxRetries = 5;
    if (command.bReplySeen || command.sSent.empty()) {
        command = {};
        Session.link.iWaitTicks = 10;
        return Previous::Done;
    }
    if (command.iCmdRetries >= maxRetries) {
        command.iCmdRetries = 0;
        return Previous::GivenUp;
    }
    --index;
    Session.link.iWaitTicks = TicksOf(++command.iCmdRetries);
    return Previous::Again;
}
