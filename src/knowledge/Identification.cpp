// What the antenna says about itself becomes the session's versions, and the user reads them.

#include <algorithm>
#include <array>

#include "display/Display.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "knowledge/VersionReply.h"
#include "platform/ProgramFiles.h"
#include "platform/SerialControl.h"
#include "text/Text.h"

namespace {

// A word is searched anywhere in the reply, so that "DVB/DSS 6" stands for all words that begin with it.
constexpr std::array versionWords{
    "DVB/DSS 3",     "DVB/DSS 2",     "DVB/DSS 4 STACKED", "DVB/DSS 4",    "DVB/DSS 5",
    "DVB/DSS 6",     "DVB/DSS LM",    "DVB/DSS MA",        "DVB/DSS 6A",   "DVB/DSS 6A LM",
    "DVB/DSS 6A MA", "DVB/DSS 6A GL", "DVB/DSS 7",         "DVB/DSS 7 MA", "DVB/DSS 7 GL",
};
constexpr std::array rf6Words{"DVB/DSS 6", "DVB/DSS LM", "DVB/DSS MA"};

template <class Words>
bool HoldsAny(const std::string& version, const Words& words)
{
    return std::any_of(words.begin(), words.end(), [&](const char* word) { return text::Holds(version, word); });
}

std::string ChosenEntry(const Control& list)
{
    const std::vector<std::string>& entries = list.List;
    const int index = list.ListIndex;
    return index >= 0 && index < static_cast<int>(entries.size()) ? entries[static_cast<std::size_t>(index)] : "";
}

void VersionsAreKnown()
{
    Session.iCommMode = STATE_IDLE;
    UpdateVersionsDisplay(6);
    EnableCmdEntry();
}

std::string VersionsInWords()
{
    const std::string main = text::TrimLines(Session.sMainVersion);
    if (Session.iBoardType != 0) return text::TrimLines(Session.sRFVersion);
    if (!Session.bPCBVersionA2) return "Main board: " + main + "\nRF board: " + text::TrimLines(Session.sRFVersion);
    return main + "\nRF1 Board detected in antenna\nAn RF1 board compatible Main board flash file will be used.";
}

void ShowAskingForVersions()
{
    const int type = Session.iBoardType;
    if (HasVersions(type)) {
        frmWizard.lblBoardVersion.Caption = type == 0 ? "Getting Main board Version" : "Getting RF board Version";
        return;
    }
    std::string board;
    if (type >= 2 && type <= 13) board = ChosenEntry(frmWizard.cboBoardToFlash);
    if (type >= 14 && type <= 19) board = ChosenEntry(frmWizard.cboOtherBoard);
    frmWizard.lblStep[3].Visible = false;
    frmWizard.lblBoardVersion.Caption = board + "\n selected. Click Next to continue";
}

void ShowPickedAntenna()
{
    const std::string& name = Session.AntennaTable.at(static_cast<std::size_t>(Session.iAntennaIdx)).AntennaName;
    frmWizard.lblBoardVersion.Caption =
        "Could not automatically determine antenna software versions\nYou selected: " + name +
        "\nIf this correct, click Next button to continue, else select another antenna";
}

void ShowNoVersions()
{
    const int type = Session.iBoardType;
    if (type == 0)
        frmWizard.lblBoardVersion.Caption = "Could not retrieve Main Board version!\nIs the antenna on?";
    else if (HasVersions(type))
        frmWizard.lblBoardVersion.Caption =
            "Could not retrieve RF Board version!\nIs the antenna on?\n\nNote: RF1 board is not supported by the "
            "Burnline";
    const bool identified = type == 0 || type == 1;
    if (identified) {
        for (Control* way : {&frmWizard.cmdPickAntenna, &frmWizard.cmdRetryGetVersions}) {
            way->Visible = true;
            way->Enabled = true;
        }
    }
    Session.iCommMode = STATE_IDLE;
    if (Session.bPortOpened) EnableCmdEntry();
    if (identified && frmWizard.iCurrentStep == STEP_3) SetNavCmds(STEP_3);
}

/// A main board is asked, and answers for the RF board behind it too: the RF line comes first, then its own.
void ParseMainBoardReply()
{
    if (Session.iCommonPreflashMainIdx < 2) return;
    const std::string& command = ListEntry(Session.sCommonPreflashMain, Session.iCommonPreflashMainIdx - 1);
    // An RF1 board has no version line of its own: that it is there is all that can be known of it.
    const bool rfKnown = Session.bRFVersionSeen || Session.bPCBVersionA2;
    if (rfKnown && text::Equal(command, "VERSION")) {
        const auto version = MainVersionIn(Session.sCommLine);
        if (!version) return;
        Session.sMainVersion = *version;
        ClearCommBuffers();
        VersionsAreKnown();
        return;
    }
    if (Session.bRFVersionSeen && !text::Equal(command, "@VER")) return ClearCommBuffers();
    if (!text::Holds(Session.sCommLine, "DVB/DSS")) {
        if (!text::Holds(Session.sCommLine, "PCB Version A.2")) return;
        Session.bPCBVersionA2 = true;
        ClearCommBuffers();
        return;
    }
    const auto version = RFVersionBehindMain(Session.sCommLine);
    if (!version) return;
    Session.sRFVersion = *version;
    Session.bRFVersionSeen = true;
    ClearCommBuffers();
}

void ParseRFBoardReply()
{
    const auto version = RFVersionIn(Session.sCommLine);
    if (!version || !Session.sRFVersion.empty()) return;  // the first answer counts
    Session.sRFVersion = *version;
    ClearCommBuffers();
    if (IsRF6Family(*version)) {
        Session.iBoardType = 20;
    } else if (IsRF7Family(*version)) {
        Session.iBoardType = 21;
        MSComm1->Output("FPGARev\r\n");
        Session.iCommMode = STATE_FPGA_REV;
        return;
    }
    VersionsAreKnown();
}

}  // namespace

bool HoldsVersionWord(const std::string& version) { return HoldsAny(version, versionWords); }

bool IsRF6Family(const std::string& version) { return HoldsAny(version, rf6Words); }

bool IsRF7Family(const std::string& version) { return text::Holds(version, "DVB/DSS 7"); }

bool IsRF5Family(const std::string& version) { return text::Holds(version, "DVB/DSS") && !IsRF6Family(version); }

void UpdateVersionsDisplay(int what)
{
    switch (what) {
    case 6:
        if (HasVersions(Session.iBoardType)) frmWizard.lblBoardVersion.Caption = VersionsInWords();
        SetNavCmds(11);
        break;
    case 7: ShowAskingForVersions(); break;
    case 8: ShowPickedAntenna(); break;
    case 9: ShowNoVersions(); break;
    default: break;
    }
}

void ParseVersionReply()
{
    if (Session.sCommBuffer.empty()) return;
    Session.sCommLine = Session.sCommBuffer;
    if (Session.iBoardType == 0) return ParseMainBoardReply();
    if (HasVersions(Session.iBoardType)) ParseRFBoardReply();
}

void ParseFPGARev()
{
    Session.iWaitTicks = 10;
    const auto revision = RevisionIn(Session.sCommBuffer, "FPGA Rev: ");
    if (!revision) return;
    Session.sFPGAFileName = FindLatestFile("F61340A.S19");
    Session.sLatestFPGARev = RevisionOfFile(Session.sFPGAFileName);
    Session.sFPGARev = *revision;
    MSComm1->Output("BAPIRev\r\n");
    Session.iCommMode = STATE_BAPI_REV;
    Session.sCommBuffer.clear();
}

void ParseBAPIRev()
{
    Session.iWaitTicks = 10;
    const auto revision = RevisionIn(Session.sCommBuffer, "BAPI Rev: ");
    if (!revision) return;
    Session.sBAPIFileName = FindLatestFile("F61357A.S19");
    Session.sLatestBAPIRev = RevisionOfFile(Session.sBAPIFileName);
    Session.sBAPIRev = *revision;
    VersionsAreKnown();
}
