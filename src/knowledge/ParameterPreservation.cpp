// The antenna's parameters: read out before the flash, uploaded after it.

#include <array>

#include "display/Display.h"
#include "knowledge/BoardTable.h"
#include "knowledge/ParameterCapture.h"
#include "knowledge/UploadCommand.h"
#include "knowledge/Utilities.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

/// What the reply to a command holds, by the kind of board.
struct ExpectedReply {
    const char* command;
    const char* main;
    const char* rf;
    const char* other;
};

constexpr std::array<ExpectedReply, 17> expectedReplies{{
    {"HALT", ">HALT", ">HALT", ">HALT"},
    {"DEBUGON", ">DEBUGON", "DEBUGON", ""},
    {"CLEAREE", ">CLEAREE", "CLEAREE", ""},
    {"BIASAZ", ">Azimuth Bias = ", ">Azimuth Bias = ", ">Azimuth Bias = "},
    {"BIASEL", ">Elevation Bias = ", ">Elevation Bias = ", ">Elevation Bias = "},
    {"GYROSFAZ", ">Azimuth Gyro Scale Factor", ">Azimuth Gyro Scale Factor", ">Azimuth Gyro Scale Factor"},
    {"GYROSFEL", ">Elevation Gyro Scale Factor", ">Elevation Gyro Scale Factor", ">Elevation Gyro Scale Factor"},
    {"=CALUP", ">CALUP", ">CALUP", ">CALUP"},
    {"SATINSTALL", ">SATINSTALL,", "SATINSTALL,", ""},
    {"GPS", ">GPS", ">GPS", ">GPS"},
    {"=SERNUM", ">SN = ", ">SN = ", ">SN = "},
    {"INSTANT", ">INSTANT=", ">INSTANT=", ">INSTANT="},
    {"SLEEP", ">SLEEP=", ">SLEEP=", ">SLEEP="},
    {"SKEWMTR", ">SKEWMTR", ">SKEWMTR", ">SKEWMTR"},
    {"DEW", ">DEW", ">DEW", ">DEW"},
    {"FECHITS1,0000", "", "FEC Hits 1:", ""},
    {"FECHITS2,0000", "", "FEC Hits 2:", ""},
}};

const std::vector<std::string> dryRunReplies{
    "",
    ">HALT ",
    ">DEBUGON ",
    ">SATINSTALL,101W,119W,110W,72W",
    ">SN = 999999999",
    "SLEEP=on ",
    ">Azimuth Gyro Scale Factor: CW = -0.001000  CCW = -0.001000",
    ">Elevation Gyro Scale Factor: CW = 0.001000  CCW = 0.001000",
    ">CLEAREE ",
};

/// What a person has to put behind a command.
struct Placeholder {
    const char* command;
    const char* behind;
};

constexpr std::array<Placeholder, 18> placeholders{{
    {"SATINSTALL", ",<SATA>,<SATB>"},
    {"GPS", ",<XXX>,<N or S>,<YYY>,<E or W>"},
    {"=SERNUM", ",<XXXXXXXX>"},
    {"INSTANT", "<ON or OFF>"},
    {"SLEEP", "<ON or OFF>"},
    {"SKEWMTR", "<ON or OFF>"},
    {"RFGAIN", ",<value>"},
    {"RFOFFSET", ",<value>"},
    {"BIASAZ", ",<value>"},
    {"BIASEL", ",<value>"},
    {"GYROSFAZ", ",<value>"},
    {"GYROSFAZ,CW", ",<value>"},
    {"GYROSFAZ,CCW", ",<value>"},
    {"GYROSFEL", ",<value>"},
    {"GYROSFEL,CW", ",<value>"},
    {"GYROSFEL,CCW", ",<value>"},
    {"=CALUP", ",<value>"},
    {"GYROANGLE", ",<value>"},
}};

bool HasNoUploads() { return text::Equal(text::Trim(Session.plan->row.PostflashLine), "POSTFLASH$"); }

void Store(const CaptureResult& result)
{
    Captured& captured = Session.captured;
    ++captured.iCapturedParamCount;
    if (!result.entry) return;  // the next entry grows over the gap
    const auto slot = static_cast<std::size_t>(captured.iCapturedParamCount);
    captured.sCapturedParams.resize(slot + 1);
    captured.sCapturedParams[slot] = *result.entry;
}

/// The one parameter that can't be restored: the user has to know it before it is gone.
void TellNotTakenOver(const std::string& installation)
{
    const std::string words = "The installed satellites cannot be restored: " + text::TrimLines(installation) +
                              ". Note them and install them again after the update.";
    StatusTextUpdate(words);
    WriteLogLine("++>" + words);
}

UploadFacts Facts()
{
    return {Session.plan->iBoardType, Session.plan->tellsWholeDegrees, Session.captured.bSatInstallFound,
            Session.captured.sSatInstallCmd};
}

/// The command that restores its parameter. One that the antenna never answered stays as it is and only reads again.
std::string Restoring(const std::string& listed, const UploadFacts& facts)
{
    const std::string command = text::Upper(listed);
    if (command == "FECHITS1" && !Session.captured.sFECHits1.empty()) return command + "," + Session.captured.sFECHits1;
    if (command == "FECHITS2" && !Session.captured.sFECHits2.empty()) return command + "," + Session.captured.sFECHits2;
    std::string element = command;
    bool answered = false;
    for (const std::string& reply : Session.captured.sCapturedParams) {
        const auto rewritten = UploadCommandFrom(command, element, reply, facts);
        if (!rewritten) continue;
        element = *rewritten;
        answered = true;
    }
    return answered ? element : listed;
}

std::string ForUser(const std::string& listed)
{
    const std::string command = text::Upper(listed);
    if (text::StartsWith(command, "WAIT"))
        return "Wait upto " + text::Trim(text::Mid(command, 5)) + " seconds for command to finish";
    for (const Placeholder& placeholder : placeholders)
        if (command == placeholder.command) return command + placeholder.behind;
    return command;
}

}  // namespace

std::string ExpectedReplyFor(const std::string& command)
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    for (const ExpectedReply& row : expectedReplies) {
        if (!text::Equal(row.command, command)) continue;
        // Two more boards hold an installation, though they tell it like the small ones.
        const bool tellsInstallation = text::Equal(command, "SATINSTALL") && board.numbersSatellites;
        if (board.capture == Capture::RF || tellsInstallation) return row.rf;
        return board.capture == Capture::Main ? row.main : row.other;
    }
    return {};
}

bool CapturePreflashReply()
{
    Captured& captured = Session.captured;
    if (captured.iPreflashCmdIdx < 1) return false;
    const CaptureResult result = CaptureReply({
        Session.link.sCommBuffer,
        ListEntry(Session.plan->sPreflashCmds, captured.iPreflashCmdIdx - 1),
        captured.command.sExpectedReply,
        Session.plan->iBoardType,
        captured.bSatInstallFound,
        Session.plan->answers.upgradeToGLTV.value_or(false) && !captured.bTrisatDone,
    });
    if (!result.answered) return false;
    Store(result);
    if (!result.notTakenOver.empty()) TellNotTakenOver(result.notTakenOver);
    if (result.satInstallFound) captured.bSatInstallFound = true;
    if (result.namesTranslated) captured.bTrisatDone = true;
    if (!result.satInstallCmd.empty()) captured.sSatInstallCmd = result.satInstallCmd;
    if (!result.fecHits1.empty()) captured.sFECHits1 = result.fecHits1;
    if (!result.fecHits2.empty()) captured.sFECHits2 = result.fecHits2;
    ClearCommBuffers();
    captured.command.bReplySeen = true;
    return true;
}

std::vector<std::string> BuildUploadList()
{
    std::vector<std::string> commands = Session.plan->sPostflashCmds;
    if (HasNoUploads() || text::Equal(text::Trim(Session.plan->row.PreflashLine), "PREFLASH$ ZAP")) return commands;
    if (IsSettingTrue(SETTING_DRY_RUN)) {
        Session.captured.sCapturedParams = dryRunReplies;
        return commands;
    }
    const UploadFacts facts = Facts();
    for (std::string& command : commands) command = Restoring(command, facts);
    return commands;
}

std::string PostFlashCmdsForUser()
{
    std::string lines;
    if (HasNoUploads()) return lines;
    for (const std::string& command : Session.plan->sPostflashCmds) {
        if (command.empty()) break;
        lines += ForUser(command);
        lines += text::CrLf;
    }
    return lines;
}
