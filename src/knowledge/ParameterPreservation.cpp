// The antenna's parameters: read out before the flash, uploaded after it.

#include <algorithm>
#include <array>

#include "display/Display.h"
#include "knowledge/BoardTable.h"
#include "knowledge/ParameterTable.h"
#include "knowledge/Utilities.h"
#include "knowledge/VersionReply.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

/// What the reply to a command that is about no parameter holds; empty: any reply will do.
struct ExpectedReply {
    const char* command;
    const char* main;
    const char* rf;
    const char* other;
};

constexpr std::array<ExpectedReply, 3> expectedReplies{{
    {"HALT", ">HALT", ">HALT", ">HALT"},
    {"DEBUGON", ">DEBUGON", "DEBUGON", ""},
    {"CLEAREE", ">CLEAREE", "CLEAREE", ""},
}};

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

/// The row wants a clean start.
bool StartsClean() { return text::Equal(text::Trim(Session.plan->row.PreflashLine), "PREFLASH$ ZAP"); }

/// The one parameter that can't be restored: the user has to know it before it is gone.
void TellNotTakenOver(const std::string& installation)
{
    const std::string words = "The installed satellites cannot be restored: " + text::TrimLines(installation) +
                              ". Note them and install them again after the update.";
    StatusTextUpdate(words);
    WriteLogLine("++>" + words);
}

ParameterFacts Facts()
{
    const FlashPlan& plan = *Session.plan;
    return {plan.iBoardType, plan.tellsWholeDegrees, plan.answers.upgradeToGLTV.value_or(false)};
}

/// A value that the new software has no name for is compared as it is written.
bool AreTheSame(const ToldParameter& before, const ToldParameter& after)
{
    return before.command.empty() ? text::Equal(before.words, after.words)
                                  : RestoreTheSame(before.command, after.command);
}

/// The command that restores its parameter. One that the antenna never answered stays as it is and only reads again.
std::string Restoring(const std::string& listed, const ParameterFacts& facts)
{
    for (const CapturedParameter& captured : Session.captured.parameters) {
        if (!AreOfOneParameter(captured.sCommand, listed)) continue;
        const auto told = ToldBy(captured.sLine, listed, facts);
        if (told && !told->command.empty()) return told->command;
    }
    return listed;
}

std::string ExpectedReplyFor(const std::string& command)
{
    const Capture capture = BoardOf(Session.plan->iBoardType).capture;
    for (const ExpectedReply& row : expectedReplies)
        if (text::Equal(row.command, command))
            return capture == Capture::RF ? row.rf : capture == Capture::Main ? row.main : row.other;
    return {};
}

/// True when one of the lines answers a command that is about no parameter.
bool IsAnswered(const std::string& command, const std::vector<std::string>& lines)
{
    const std::string expected = ExpectedReplyFor(command);
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return expected.empty() || text::Holds(line, expected); });
}

bool Refuses(const std::string& line)
{
    constexpr std::array words{"ERROR", "ILLEGAL", "?"};
    return std::any_of(words.begin(), words.end(), [&](const char* word) { return text::Holds(line, word); });
}

/// A command that stands in the list twice has one value: the one told last.
void Keep(CapturedParameter told)
{
    std::vector<CapturedParameter>& parameters = Session.captured.parameters;
    const auto known = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const auto& one) { return text::Equal(one.sCommand, told.sCommand); });
    if (known == parameters.end())
        parameters.push_back(std::move(told));
    else
        *known = std::move(told);
}

/// Stores what the lines tell; false when they don't tell it.
bool CaptureFrom(const std::vector<std::string>& lines, const std::string& command)
{
    for (const std::string& line : lines) {
        const auto told = ToldBy(line, command, Facts());
        if (!told) continue;
        if (!IsRestored(command)) {
            Session.captured.notRestored.push_back(NameOf(command));
            return true;
        }
        Keep({command, line});
        if (told->command.empty()) TellNotTakenOver(line);
        return true;
    }
    return false;
}

}  // namespace

bool CapturePreflashReply()
{
    CommandInFlight& command = Session.captured.command;
    const int type = Session.plan->iBoardType;
    if (command.sSent.empty() || command.bReplySeen || BoardOf(type).capture == Capture::None) return false;
    const std::vector<std::string> lines = text::EndedLines(Session.link.sCommBuffer);
    const bool answered =
        IsParameter(command.sSent, type) ? CaptureFrom(lines, command.sSent) : IsAnswered(command.sSent, lines);
    if (!answered) return false;
    ClearCommBuffers();
    command.bReplySeen = true;
    Session.captured.bAnswered = true;
    return true;
}

bool IsRestored(const std::string& command)
{
    const std::vector<std::string>& listed = Session.plan->sPostflashCmds;
    return IsParameter(command, Session.plan->iBoardType) && !HasNoUploads() &&
           std::any_of(listed.begin(), listed.end(),
                       [&](const std::string& entry) { return AreOfOneParameter(entry, command); });
}

std::optional<ToldParameter> ToldBefore(const CapturedParameter& parameter)
{
    return ToldBy(parameter.sLine, parameter.sCommand, Facts());
}

std::vector<ComparedParameter> CompareParameters()
{
    std::vector<ComparedParameter> compared;
    const std::vector<CapturedParameter>& parameters = Session.captured.parameters;
    const std::vector<std::string>& lines = Session.restore.readBack.sLines;
    for (std::size_t at = 0; at < parameters.size(); ++at) {
        const std::string& command = parameters[at].sCommand;
        const auto before = ToldBefore(parameters[at]);
        const auto after = at < lines.size() ? ToldBy(lines[at], command, Facts()) : std::nullopt;
        ComparedParameter& row = compared.emplace_back();
        row = {NameOf(command), before ? before->words : notRead, after ? after->words : notTold, false,
               before ? before->command : ""};
        if (before && after) row.bEqual = AreTheSame(*before, *after);
    }
    for (const std::string& command : Session.captured.notRead)
        compared.push_back({NameOf(command), notRead, notTold, false, CommandForUser(NameOf(command))});
    return compared;
}

bool IsToBeRestored(const ComparedParameter& row) { return !row.bEqual && row.sBefore != notRead; }

bool TakeReadBackReply(std::size_t parameter)
{
    for (const std::string& line : text::EndedLines(Session.link.sCommBuffer)) {
        if (!ToldBy(line, Session.captured.parameters.at(parameter).sCommand, Facts())) continue;
        Session.restore.readBack.sLines.at(parameter) = line;
        return true;
    }
    return false;
}

std::string VersionQuery()
{
    const int type = Session.plan->iBoardType;
    std::string query;
    if (!HasVersions(type)) return query;
    for (const std::string& entry : GroupOf(*Session.config, type).sCommonPreflash)
        if (!entry.empty()) query = entry;
    return query;
}

std::string VersionBefore()
{
    const Reading& reading = Session.reading;
    return text::TrimLines(TellsMainVersion(Session.plan->iBoardType) ? reading.sMainVersion : reading.sRFVersion);
}

std::string VersionIn(const std::string& reply)
{
    const bool main = TellsMainVersion(Session.plan->iBoardType);
    return text::TrimLines((main ? MainVersionIn(reply) : RFVersionIn(reply)).value_or(""));
}

std::vector<std::string> UploadsOfWhatDiffers()
{
    const std::vector<ComparedParameter> compared = CompareParameters();
    std::vector<std::string> uploads;
    bool taken = false;
    for (const std::string& upload : Session.restore.sPostflashCmds) {
        const auto isOf = [&](const auto& row) { return IsToBeRestored(row) && AreOfOneParameter(upload, row.sName); };
        if (!text::StartsWith(upload, "WAIT")) taken = std::any_of(compared.begin(), compared.end(), isOf);
        if (taken) uploads.push_back(upload);
    }
    return uploads;
}

Verdict JudgeReply(const std::string& sent, const std::string& reply)
{
    const std::vector<std::string> lines = text::EndedLines(reply);
    if (std::any_of(lines.begin(), lines.end(), Refuses)) return Verdict::Refused;
    const bool echoed =
        std::any_of(lines.begin(), lines.end(), [&](const std::string& line) { return IsEchoOf(line, sent); });
    if (AreOfOneParameter(sent, sent) ? echoed : IsAnswered(sent, lines)) return Verdict::Confirmed;
    return Verdict::Silent;
}

std::vector<std::string> BuildUploadList()
{
    std::vector<std::string> commands = Session.plan->sPostflashCmds;
    if (HasNoUploads() || StartsClean()) return commands;
    const ParameterFacts facts = Facts();
    for (std::string& command : commands) command = Restoring(command, facts);
    return commands;
}

std::string CommandForUser(const std::string& listed)
{
    const std::string command = text::Upper(listed);
    if (text::StartsWith(command, "WAIT"))
        return "Wait upto " + text::Trim(text::Mid(command, 5)) + " seconds for command to finish";
    for (const Placeholder& placeholder : placeholders)
        if (command == placeholder.command) return command + placeholder.behind;
    return command;
}

std::string PostFlashCmdsForUser()
{
    std::string lines;
    if (HasNoUploads()) return lines;
    for (const std::string& command : Session.plan->sPostflashCmds) {
        if (command.empty()) break;
        lines += CommandForUser(command);
        lines += text::CrLf;
    }
    return lines;
}
