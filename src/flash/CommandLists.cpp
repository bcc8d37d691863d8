#include "flash/CommandLists.h"

#include <algorithm>

#include "frame/SessionState.h"
#include "text/Text.h"

bool IsWaitEntry(const std::string& entry, int& seconds)
{
    if (!text::StartsWith(entry, "WAIT")) return false;
    seconds = static_cast<int>(std::clamp(text::Val(text::Mid(entry, 5)), 0.0, 3000.0));
    return true;
}

short TicksOf(int seconds) { return static_cast<short>(std::clamp(seconds * 10, 1, 32767)); }

Previous JudgePrevious(std::int16_t& index)
{
    constexpr int maxRetries = 5;
    if (Session.bReplySeen || index == 0) {
        Session.sExpectedReply.clear();
        Session.bReplySeen = false;
        Session.iWaitTicks = 10;
        Session.iCmdRetries = 0;
        return Previous::Done;
    }
    if (Session.iCmdRetries >= maxRetries) {
        Session.iCmdRetries = 0;
        return Previous::GivenUp;
    }
    --index;
    Session.iWaitTicks = TicksOf(++Session.iCmdRetries);
    return Previous::Again;
}
