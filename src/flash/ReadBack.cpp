// STATE_READ_BACK: behind the last restore command the antenna is asked what it holds now. Only what it says then makes
// the flash a success.

#include <algorithm>

#include "display/Display.h"
#include "flash/CommandLists.h"
#include "flash/FlashMainboard.h"
#include "flash/Phases.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

// An answer to a restore command that comes later than others isn't to be taken for one of these.
constexpr short settleTicks = 30;

ReadBack& Back() { return Session.restore.readBack; }

int ParametersAsked() { return static_cast<int>(Session.captured.parameters.size()); }

bool IsVersionQuery(int query) { return query == ParametersAsked(); }

/// The parameters, then the version; empty behind them.
std::string QueryAt(int query)
{
    if (query < ParametersAsked()) return Session.captured.parameters[static_cast<std::size_t>(query)].sCommand;
    return IsVersionQuery(query) ? VersionQuery() : "";
}

bool AnythingIsToBeRestored()
{
    const std::vector<ComparedParameter> compared = CompareParameters();
    return std::any_of(compared.begin(), compared.end(), IsToBeRestored);
}

/// Asked and not told.
bool IsVersionMissing() { return Back().iRound > 0 && !VersionQuery().empty() && Back().sVersion.empty(); }

// --- what is shown -------------------------------------------------------------------------------------------------

void ShowTable()
{
    std::vector<std::string> rows{"Parameter\tBefore\tAfter\tEqual"};
    for (const ComparedParameter& row : CompareParameters())
        rows.push_back(row.sName + "\t" + row.sBefore + "\t" + row.sAfter + "\t" + (row.bEqual ? "yes" : "no"));
    if (!VersionQuery().empty())
        rows.push_back("Version\t" + VersionBefore() + "\t" + (Back().sVersion.empty() ? notTold : Back().sVersion) +
                       "\t");
    if (rows.size() == 1) return;
    frmWizard.tblParameters.List = rows;
    frmWizard.tblParameters.Visible = true;
}

void ShowAsked()
{
    const std::string what = IsVersionQuery(Back().iQuery)
                                 ? "its version"
                                 : "parameter " + text::Num(Back().iQuery + 1) + " of " + text::Num(ParametersAsked());
    frmWizard.lblWaiting1.Caption = "Asking the antenna what it holds now: " + what + ".";
    frmWizard.lblWaiting1.Visible = true;
}

/// The table once more as words, for those who don't see it: each row with its cells below each other.
void TellTable()
{
    std::vector<std::vector<std::string>> rows;
    std::vector<std::size_t> widths(4);
    for (const std::string& row : frmWizard.tblParameters.List()) {
        rows.push_back(text::Split(row, "\t"));
        for (std::size_t cell = 0; cell < widths.size(); ++cell)
            widths[cell] = std::max(widths[cell], rows.back()[cell].size());
    }
    for (const std::vector<std::string>& row : rows) {
        std::string words;
        for (std::size_t cell = 0; cell < widths.size(); ++cell)
            words += row[cell] + std::string(widths[cell] - row[cell].size() + 2, ' ');
        AddParamsSent(text::Trim(words) + "\r\n");
        WriteLogLine("++>" + text::Trim(words));
    }
}

// --- what is done --------------------------------------------------------------------------------------------------

void BeginReadBack()
{
    Back().iQuery = 0;
    Back().command = {};
    Back().iSilences = 0;
    ++Back().iRound;
    Back().sLines.assign(static_cast<std::size_t>(ParametersAsked()), "");
    AddParamsSent("Asking the antenna what it holds now.\r\n");
    frmWizard.lblStep[6].Caption = "Comparing Parameters";
    ShowTable();
    Session.link.iCommMode = STATE_READ_BACK;
    Session.link.iWaitTicks = settleTicks;
}

void RestoreOnceMore()
{
    AddParamsSent("Not everything is as it was before. What differs is restored once more.\r\n");
    Session.restore.sPostflashCmds = UploadsOfWhatDiffers();
    Session.restore.iPostflashCmdIdx = 0;
    Session.restore.command = {};
    Session.restore.iSilences = 0;
    Session.link.iCommMode = STATE_POSTFLASH;
    Session.link.iWaitTicks = 10;
}

void TellSuccess()
{
    AddParamsSent("Parameter Upload Successful and antenna restarted.  Click Next to continue.\r\n");
    frmWizard.lblStep[6].Caption = "Update Complete";
    ShowMsgBox(14, "TimerHandler");
}

void TellWhatIsNotBack()
{
    const std::string words = WhatIsNotBack();
    AddParamsSent(text::Replace(words, "\n", text::CrLf));
    WriteLogLine(text::Replace(words, "\n", text::CrLf));
    frmWizard.lblStep[6].Caption = "Please Check the Parameters";
    frmWizard.lblStep[7].Caption = "Please Check the Parameters";
    ShowMsgBox(43, "TimerHandler", words);
}

void FinishRestore()
{
    Session.restore.bWaitInitFlag = false;
    Session.flash.bAtRisk = false;
    Session.restore.bEnded = true;
    Session.restore.bAllBack = WhatIsNotBack().empty();
    frmWizard.lblWaiting1.Visible = false;
    Session.link.iCommMode = STATE_IDLE;
    Session.link.iWaitTicks = 10;
    SetNavCmds(NAV_RESTORED);
    EnableCmdEntry();
    if (Session.restore.bAllBack)
        TellSuccess();
    else
        TellWhatIsNotBack();
}

void EndReadBack()
{
    ShowTable();
    TellTable();
    for (const std::string& name : Session.captured.notRestored)
        AddParamsSent(name + " was read, but FLASHCFG.TXT doesn't restore it: it isn't compared.\r\n");
    FinishRestore();
}

void Ask(const std::string& query)
{
    if (Back().command.iCmdRetries == 0) Back().bHeard = false;
    ShowAsked();
    SendCommandLine(query);
    ClearCommBuffers();
    Back().command.sSent = query;
    ++Back().iQuery;
}

bool TakeReply()
{
    const int query = Back().iQuery - 1;
    if (!IsVersionQuery(query)) return TakeReadBackReply(static_cast<std::size_t>(query));
    Back().sVersion = VersionIn(Session.link.sCommBuffer);
    return !Back().sVersion.empty();
}

std::string WordsOf(const ComparedParameter& row)
{
    const std::string enter = row.sCommand.empty() ? "install the satellites by hand" : "enter " + row.sCommand;
    if (row.sBefore == notRead) return row.sName + " was not read before the flash: " + enter;
    if (row.sAfter == notTold)
        return row.sName + " could not be verified, it was " + row.sBefore + ": if it is lost, " + enter;
    return row.sName + " is " + row.sAfter + ", it was " + row.sBefore + ": " + enter;
}

}  // namespace

std::string WhatIsNotBack()
{
    std::string words;
    const bool compared = Session.restore.readBack.iRound > 0;
    for (const ComparedParameter& row : CompareParameters())
        if (!row.bEqual && (compared || row.sBefore == notRead)) words += WordsOf(row) + "\n";
    for (const std::string& command : Session.restore.unconfirmed)
        if (const bool parameter = AreOfOneParameter(command, command); !parameter || !compared)
            words += "The antenna has not confirmed " + command + (parameter ? ": enter it once more\n" : "\n");
    if (IsVersionMissing()) words += "The antenna does not tell its version any more.\n";
    return words;
}

void EndOfRestore()
{
    const ReadBack& back = Session.restore.readBack;
    const bool asks = ParametersAsked() > 0 || !VersionQuery().empty();
    if (!IsSettingTrue(SETTING_COMPARE_PARAMETERS) || !asks) return FinishRestore();
    if (back.iRound < 2) return BeginReadBack();
    EndReadBack();
}

void OnReadBackReply(const std::string&)
{
    if (!Session.link.sCommBuffer.empty()) Back().bHeard = true;
    if (Back().command.sSent.empty() || Back().command.bReplySeen || !TakeReply()) return;
    Back().command.bReplySeen = true;
    Back().iSilences = 0;
    ShowTable();
    Session.link.iWaitTicks = 1;
}

void NextReadBackStep()
{
    DisableCmdEntry();
    const Previous previous = JudgePrevious(Back().iQuery, Back().command);
    if (previous == Previous::GivenUp) {
        Back().iSilences = Back().bHeard ? 0 : Back().iSilences + 1;
        if (Back().iSilences > 1) return EndReadBack();
        Back().command = {};
        Session.link.iWaitTicks = 10;
    }
    if (IsVersionQuery(Back().iQuery) && Back().iRound == 1 && AnythingIsToBeRestored()) return RestoreOnceMore();
    const std::string query = QueryAt(Back().iQuery);
    if (query.empty()) return EndReadBack();
    Ask(query);
}
