#include "link/Mode.h"

#include "session/Session.h"

Phase PhaseNow()
{
    const int mode = Session.link.iCommMode;
    return mode >= 0 && mode < ModeCount ? ModeTable[mode].phase : Phase::Free;
}

bool IsFlashing() { return PhaseNow() >= Phase::Saving; }
