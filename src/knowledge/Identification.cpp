// What the antenna says about itself becomes the session's versions.

#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "knowledge/VersionReply.h"
#include "link/SerialPortIO.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

/// What an RF board's reply tells of its kind.
constexpr int rf6Board = 20, rf7Board = 21;

/// A main board is asked, and answers for the RF board behind it too: the RF line comes first, then its own.
bool ParseMainBoardReply()
{
    Reading& reading = Session.reading;
    if (reading.iCommonPreflashIdx < 2) return false;
    const std::string& command = ListEntry(Session.config->Main.sCommonPreflash, reading.iCommonPreflashIdx - 1);
    const std::string& heard = Session.link.sCommLine;
    // An RF1 board has no version line of its own: that it is there is all that can be known of it.
    const bool rfKnown = reading.bRFVersionSeen || reading.bPCBVersionA2;
    if (rfKnown && text::Equal(command, "VERSION")) {
        const auto version = MainVersionIn(heard);
        if (!version) return false;
        reading.sMainVersion = *version;
        ClearCommBuffers();
        return true;
    }
    if (reading.bRFVersionSeen && !text::Equal(command, "@VER")) {
        ClearCommBuffers();
        return false;
    }
    if (!text::Holds(heard, "DVB/DSS")) {
        if (!text::Holds(heard, "PCB Version A.2")) return false;
        reading.bPCBVersionA2 = true;
        ClearCommBuffers();
        return false;
    }
    const auto version = RFVersionBehindMain(heard);
    if (!version) return false;
    reading.sRFVersion = *version;
    reading.bRFVersionSeen = true;
    ClearCommBuffers();
    return false;
}

bool ParseRFBoardReply()
{
    Reading& reading = Session.reading;
    const auto version = RFVersionIn(Session.link.sCommLine);
    if (!version || !reading.sRFVersion.empty()) return false;  // the first answer counts
    reading.sRFVersion = *version;
    ClearCommBuffers();
    if (IsRF6Family(*version)) {
        reading.told = rf6Board;
    } else if (IsRF7Family(*version)) {
        reading.told = rf7Board;
        SendCommand("FPGARev", "\r\n");
        Session.link.iCommMode = STATE_FPGA_REV;
        return false;
    }
    return true;
}

}  // namespace

bool ParseVersionReply()
{
    if (Session.link.sCommBuffer.empty()) return false;
    Session.link.sCommLine = Session.link.sCommBuffer;
    if (TellsMainVersion(BoardInHand())) return ParseMainBoardReply();
    return TellsRFVersion(BoardInHand()) && ParseRFBoardReply();
}

void ParseFPGARev()
{
    Session.link.iWaitTicks = 10;
    const auto revision = RevisionIn(Session.link.sCommBuffer, "FPGA Rev: ");
    if (!revision) return;
    Session.reading.sFPGARev = *revision;
    SendCommand("BAPIRev", "\r\n");
    Session.link.iCommMode = STATE_BAPI_REV;
    Session.link.sCommBuffer.clear();
}

bool ParseBAPIRev()
{
    Session.link.iWaitTicks = 10;
    const auto revision = RevisionIn(Session.link.sCommBuffer, "BAPI Rev: ");
    if (!revision) return false;
    Session.reading.sBAPIRev = *revision;
    return true;
}
