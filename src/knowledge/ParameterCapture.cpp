#include "knowledge/ParameterCapture.h"

#include <algorithm>
#include <array>

#include "knowledge/Utilities.h"
#include "text/Text.h"

namespace {

/// Three satellites that the new software knows under one name.
struct Triple {
    const char* satellites;
    const char* command;
    bool always;  // applies even when an installation was captured before
};
constexpr std::array<Triple, 6> triples{{
    {"DSS_101,DSS_119,DSS_110", "SATINSTALL,TRISAT,DSS", true},
    {"HOTBIRDWB,ASTRA1,ASTRA2S", "SATINSTALL,TRISAT,EWB", false},
    {"HOTBIRD,ASTRA1,ASTRA2S", "SATINSTALL,TRISAT,EUR", false},
    {"HOTBIRDWB,SIRIUS,THOR", "SATINSTALL,TRISAT,SCN", false},
    {"ECHO_119,ECHO_110,ECHO_129", "SATINSTALL,TRISAT,DISH", false},
    {"ECHO_119,ECHO_110,ECHO_61", "SATINSTALL,TRISAT,DISH61", false},
}};

CaptureResult Entry(std::string entry)
{
    CaptureResult result;
    result.answered = true;
    result.entry = std::move(entry);
    return result;
}

/// The answer to a command that expects none. For most of them nobody needs the text and the slot stays empty; these
/// tell a parameter all the same, and it would be lost.
CaptureResult Unexpected(const CaptureRequest& request)
{
    constexpr std::array tellsParameter{"GYROANGLE", "GYROSFSKEW", "RFGAIN", "RFOFFSET"};
    CaptureResult result;
    result.answered = true;
    for (const char* command : tellsParameter)
        if (text::Equal(request.command, command)) result.entry = request.text;
    return result;
}

/// A text up to and with its first line end; one that begins with a line end is cut to just that, on purpose.
std::string FirstLine(const std::string& text)
{
    const std::size_t end = text::Find(text, text::CrLf);
    return end == 0 ? text : text::Left(text, end + 1);
}

CaptureResult CaptureTriple(const std::string& reply, bool foundBefore)
{
    CaptureResult result = Entry("");
    for (const Triple& triple : triples) {
        if (!text::Holds(reply, triple.satellites) || (foundBefore && !triple.always)) continue;
        result.entry = triple.command;
        result.satInstallCmd = triple.command;
        result.satInstallFound = true;
        return result;
    }
    result.notTakenOver = reply;
    return result;
}

CaptureResult CaptureSatInstall(const CaptureRequest& request, const std::string& line)
{
    const std::size_t begin = text::Find(line, "SATINSTALL");
    const std::string reply = begin == 0 ? line : text::Mid(line, begin);
    const int commas = text::Count(reply, ',');
    if (commas == 3) return CaptureTriple(reply, request.satInstallFound);
    if (commas != 2 || !request.translateNames) return Entry(reply);
    const std::vector<std::string> parts = text::Split(reply, ",");
    CaptureResult result =
        Entry(parts[0] + "," + SatNameNew(text::Trim(parts[1])) + "," + SatNameNew(text::TrimLines(parts[2])));
    result.namesTranslated = true;
    return result;
}

/// A short serial number is one that hasn't come in whole.
CaptureResult CaptureSerialNumber(const std::string& line)
{
    constexpr std::size_t shortest = 7;
    const std::string reply = text::TrimLines(text::Mid(line, text::Find(line, ">SN = ")));
    const std::size_t mark = text::Find(reply, "= ");
    if (mark == 0 || text::Mid(reply, mark + 2).size() < shortest) return {};
    return Entry(text::Replace(text::Replace(reply, "\r", ""), "\n", ""));
}

CaptureResult CaptureMain(const CaptureRequest& request)
{
    const std::size_t firstEnd = text::Find(request.text, text::CrLf);
    if (firstEnd == 0 || text::FindLast(request.text, text::CrLf) == firstEnd) return {};
    if (request.expected.empty()) return Unexpected(request);
    const std::size_t begin = text::Find(request.text, request.expected);
    if (begin == 0) return {};
    const std::size_t end = text::Find(request.text, text::CrLf, begin);
    if (end == 0) return {};
    const std::string line = text::TrimLines(text::Mid(request.text, begin, end + 2 - begin));
    if (text::Equal(request.command, "=SERNUM")) return CaptureSerialNumber(line);
    if (text::Equal(request.command, "SATINSTALL") && BoardOf(request.boardType).renamesSatellites)
        return CaptureSatInstall(request, line);
    return Entry(line);
}

/// "FEC Hits 1: 0A3F": the reply is done with once its four characters or its line end are in, and an empty entry takes
/// the slot.
CaptureResult CaptureFecHits(const std::string& text, const std::string& label, std::string CaptureResult::*value)
{
    constexpr std::size_t length = 4;
    const std::size_t begin = text::Find(text, label);
    if (begin == 0) return {};
    const std::string behind = text::Mid(text, begin + label.size());
    const std::size_t end = behind.find_first_of("\r\n");
    if (end == std::string::npos && behind.size() < length) return {};
    CaptureResult result = Entry("");
    result.*value = text::Trim(behind.substr(0, std::min(length, end)));
    return result;
}

CaptureResult CaptureRF(const CaptureRequest& request)
{
    if (request.expected.empty()) return Unexpected(request);
    const std::size_t begin = text::Find(request.text, request.expected);
    if (begin == 0) return {};
    const std::string text = text::Trim(text::Mid(request.text, begin));
    if (text::Equal(request.command, "FECHITS1,0000") && text::Holds(text, "FEC Hits 1:"))
        return CaptureFecHits(text, "FEC Hits 1: ", &CaptureResult::fecHits1);
    if (text::Equal(request.command, "FECHITS2,0000") && text::Holds(text, "FEC Hits 2:"))
        return CaptureFecHits(text, "FEC Hits 2: ", &CaptureResult::fecHits2);
    const std::size_t install = text::Find(text, "SATINSTALL");
    if (!text::Equal(request.command, "SATINSTALL") || install == 0) return Entry(FirstLine(text));
    if (text::Find(text, text::CrLf, install) == 0) return {};
    CaptureResult result = Entry(text::TrimLines(FirstLine(text::Mid(text, install))));
    result.satInstallFound = text::Count(*result.entry, ',') == 6;
    return result;
}

}  // namespace

CaptureResult CaptureReply(const CaptureRequest& request)
{
    constexpr std::size_t shortest = 6;
    if (request.text.size() < shortest) return {};
    switch (BoardOf(request.boardType).capture) {
    case Capture::Main: return CaptureMain(request);
    case Capture::RF: return CaptureRF(request);
    case Capture::FirstLine: return Entry(FirstLine(request.text));
    case Capture::None: break;
    }
    return {};
}
