// STATE_GET_VERSIONS, STATE_FPGA_REV, STATE_BAPI_REV: what stands on the antenna now. What the replies mean is
// knowledge; here is what is asked, and when it is asked again.

#include "display/Display.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "session/Session.h"
#include "session/Wizard.h"

namespace {

constexpr int maxRevisionQueries = 4;

void AskRevision(const std::string& command)
{
    DisableCmdEntry();
    SendCommand(command, "\r\n");
    Session.link.iWaitTicks = 10;
}

void VersionsAreKnown()
{
    Session.link.iCommMode = STATE_IDLE;
    UpdateVersionsDisplay(6);
    EnableCmdEntry();
}

}  // namespace

void OnVersionReply(const std::string&)
{
    if (ParseVersionReply()) VersionsAreKnown();
}

void SendNextVersionQuery()
{
    DisableCmdEntry();
    std::int16_t& index = Session.reading.iCommonPreflashIdx;
    const std::string query = ListEntry(GroupOf(*Session.config, BoardInHand()).sCommonPreflash, index);
    if (query.empty()) {
        UpdateVersionsDisplay(9);
        return;
    }
    SendCommandLine(query);
    ++index;
    Session.link.iWaitTicks = 10;
}

void OnFPGARevReply(const std::string&) { ParseFPGARev(); }

void AskFPGARevAgain()
{
    if (++Session.reading.iFPGARevTries > maxRevisionQueries) {
        // Nothing is armed: the next step comes when some text arrives. A silent antenna rests here, on purpose.
        Session.reading.sFPGARev = "0";
        Session.link.iCommMode = STATE_BAPI_REV;
        frmWizard.lblBoardVersion.Caption =
            "The antenna does not tell the revision of its FPGA.\nSwitch it off and on to go on without.";
        return;
    }
    AskRevision("FPGARev");
}

void OnBAPIRevReply(const std::string&)
{
    if (ParseBAPIRev()) VersionsAreKnown();
}

void AskBAPIRevAgain()
{
    if (++Session.reading.iBAPIRevTries > maxRevisionQueries) {
        Session.reading.sBAPIRev = "0";
        Session.link.iCommMode = STATE_IDLE;
        UpdateVersionsDisplay(6);
        return;
    }
    AskRevision("BAPIRev");
}
