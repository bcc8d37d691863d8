#include "frame/SessionState.h"

void ClearCommBuffers()
{
    Session.sCommLine.clear();
    Session.sCommBuffer.clear();
}

const std::string& ListEntry(const std::vector<std::string>& list, int index)
{
    static const std::string none;
    return index >= 0 && index < static_cast<int>(list.size()) ? list[static_cast<std::size_t>(index)] : none;
}
