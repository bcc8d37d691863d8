// STATE_GET_VERSIONS, STATE_FPGA_REV, STATE_BAPI_REV: what stands on the antenna now. What the replies mean is
// knowledge; here is what is asked, and when it is asked again.

#include "display/Display.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "platform/SerialControl.h"

namespace {

constexpr int maxRevisionQueries = 4;

void AskRevision(const std::string& command)
{
    DisableCmdEntry();
    MSComm1->Output(command + "\r\n");
    ShowAllCommsTextUpdate("==>" + command + "\r\n");
    Session.iWaitTicks = 10;
}

}  // namespace

void OnVersionReply(const std::string&) { ParseVersionReply(); }

void SendNextVersionQuery()
{
    DisableCmdEntry();
    const BoardGroup group = BoardOf(Session.iBoardType).group;
    if (group == BoardGroup::None) return;
    const bool main = group == BoardGroup::Line;
    std::int16_t& index = main ? Session.iCommonPreflashMainIdx : Session.iCommonPreflashRFIdx;
    const std::string query = ListEntry(main ? Session.sCommonPreflashMain : Session.sCommonPreflashRF, index);
    if (query.empty()) {
        UpdateVersionsDisplay(9);
        return;
    }
    SendCommandLine(query);
    ++index;
    Session.iWaitTicks = 10;
}

void OnFPGARevReply(const std::string&) { ParseFPGARev(); }

void AskFPGARevAgain()
{
    if (++Session.iFPGARevTries > maxRevisionQueries) {
        // Nothing is armed: the next step comes when some text arrives. A silent antenna rests here, on purpose.
        Session.sFPGARev = "0";
        Session.iCommMode = STATE_BAPI_REV;
        frmWizard.lblBoardVersion.Caption =
            "The antenna does not tell the revision of its FPGA.\nSwitch it off and on to go on without.";
        return;
    }
    AskRevision("FPGARev");
}

void OnBAPIRevReply(const std::string&) { ParseBAPIRev(); }

void AskBAPIRevAgain()
{
    if (++Session.iBAPIRevTries > maxRevisionQueries) {
        Session.sBAPIRev = "0";
        Session.iCommMode = STATE_IDLE;
        UpdateVersionsDisplay(6);
        return;
    }
    AskRevision("BAPIRev");
}
