#include "session/Session.h"

#include "session/Wizard.h"

void ClearCommBuffers()
{
    Session.link.sCommLine.clear();
    Session.link.sCommBuffer.clear();
}

const std::string& ListEntry(const std::vector<std::string>& list, int index)
{
    static const std::string none;
    return index >= 0 && index < static_cast<int>(list.size()) ? list[static_cast<std::size_t>(index)] : none;
}

void InitSessionVars() { Session = {}; }

void SetExitRequested(bool value) { Session.program.bExitRequested = value; }

bool IsExitRequested() { return Session.program.bExitRequested; }
