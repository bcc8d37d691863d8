#pragma once
// What one reply to a pre-flash command tells: the text that is kept until the antenna's parameters are uploaded again.
// Nothing here knows the session.

#include <optional>
#include <string>

#include "knowledge/BoardTable.h"

/// A reply under judgement, and what is known when it comes.
struct CaptureRequest {
    std::string text;      // all that came since the command went out
    std::string command;   // as it was sent
    std::string expected;  // marks its reply; empty: any reply will do
    int boardType = 0;
    bool satInstallFound = false;  // a three-satellite installation was captured before
    bool translateNames = false;   // the new software has other names for the two satellites
};

struct CaptureResult {
    bool answered = false;             // false: more text is needed, and nothing else here counts
    std::optional<std::string> entry;  // goes into the next slot; none: the slot stays empty
    std::string satInstallCmd;         // the command that restores three satellites; empty: none was found
    bool satInstallFound = false;
    bool namesTranslated = false;
    std::string notTakenOver;        // an installation that the new software has no name for
    std::string fecHits1, fecHits2;  // four characters each, empty when not told
};

/// Never raises for any text.
CaptureResult CaptureReply(const CaptureRequest& request);
