// The antenna's parameters: read out before the flash, uploaded after it.

#include <array>

#include "display/Display.h"
#include "frame/SessionState.h"
#include "knowledge/BoardTable.h"
#include "knowledge/ParameterCapture.h"
#include "knowledge/UploadCommand.h"
#include "knowledge/Utilities.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
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

const AntennaRecord& Row() { return Session.AntennaTable.at(static_cast<std::size_t>(Session.iAntennaIdx)); }

bool HasNoUploads() { return text::Equal(text::Trim(Row().PostflashLine), "POSTFLASH$"); }

void Store(const CaptureResult& result)
{
    ++Session.iCapturedParamCount;
    if (!result.entry) return;  // the next entry grows over the gap
    const auto slot = static_cast<std::size_t>(Session.iCapturedParamCount);
    Session.sCapturedParams.resize(slot + 1);
    Session.sCapturedParams[slot] = *result.entry;
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
    return {Session.iBoardType, text::Holds(Session.sMainVersion, "QEL JARL"), Session.bSatInstallFound,
            Session.sSatInstallCmd};
}

/// The command that restores its parameter. One that the antenna never answered stays as it is and only reads again.
std::string Restoring(const std::string& listed, const UploadFacts& facts)
{
    const std::string command = text::Upper(listed);
    if (command == "FECHITS1" && !Session.sFECHits1.empty()) return command + "," + Session.sFECHits1;
    if (command == "FECHITS2" && !Session.sFECHits2.empty()) return command + "," + Session.sFECHits2;
    std::string element = command;
    bool answered = false;
    for (const std::string& reply : Session.sCapturedParams) {
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
    const int type = Session.iBoardType;
    const Capture capture = BoardOf(type).capture;
    for (const ExpectedReply& row : expectedReplies) {
        if (!text::Equal(row.command, command)) continue;
        // Two more boards hold an installation, though they tell it like the small ones.
        const bool tellsInstallation = text::Equal(command, "SATINSTALL") && (type == 4 || type == 11);
        if (capture == Capture::RF || tellsInstallation) return row.rf;
        return capture == Capture::Main ? row.main : row.other;
    }
    return {};
}

bool CapturePreflashReply()
{
    if (Session.iPreflashCmdIdx < 1) return false;
    const CaptureResult result = CaptureReply({
        Session.sCommBuffer,
        ListEntry(Session.sPreflashCmds, Session.iPreflashCmdIdx - 1),
        Session.sExpectedReply,
        Session.iBoardType,
        Session.bSatInstallFound,
        Session.bUpgradeToGLTV && !Session.bTrisatDone,
    });
    if (!result.answered) return false;
    Store(result);
    if (!result.notTakenOver.empty()) TellNotTakenOver(result.notTakenOver);
    if (result.satInstallFound) Session.bSatInstallFound = true;
    if (result.namesTranslated) Session.bTrisatDone = true;
    if (!result.satInstallCmd.empty()) Session.sSatInstallCmd = result.satInstallCmd;
    if (!result.fecHits1.empty()) Session.sFECHits1 = result.fecHits1;
    if (!result.fecHits2.empty()) Session.sFECHits2 = result.fecHits2;
    ClearCommBuffers();
    Session.bReplySeen = true;
    return true;
}

void BuildUploadList()
{
    if (HasNoUploads() || text::Equal(text::Trim(Row().PreflashLine), "PREFLASH$ ZAP")) return;
    Session.iCapturedParamCount = 0;
    if (IsSettingTrue(SETTING_DRY_RUN)) {
        Session.sCapturedParams = dryRunReplies;
        return;
    }
    const UploadFacts facts = Facts();
    for (std::string& command : Session.sPostflashCmds) command = Restoring(command, facts);
}

std::string PostFlashCmdsForUser()
{
    std::string lines;
    if (HasNoUploads()) return lines;
    for (const std::string& command : Session.sPostflashCmds) {
        if (command.empty()) break;
        lines += ForUser(command);
        lines += text::CrLf;
    }
    return lines;
}
