#include "knowledge/VersionReply.h"

#include <algorithm>
#include <array>

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

/// The line end that completes a reply: the last one, if it stands behind the last software family's word. 0: not
/// there.
std::size_t EndBehindFamily(const std::string& reply)
{
    const std::size_t end = text::FindLast(reply, text::CrLf);
    return end > text::FindLast(reply, "DVB/DSS") ? end : 0;
}

}  // namespace

bool HoldsVersionWord(const std::string& version) { return HoldsAny(version, versionWords); }

bool IsRF6Family(const std::string& version) { return HoldsAny(version, rf6Words); }

bool IsRF7Family(const std::string& version) { return text::Holds(version, "DVB/DSS 7"); }

bool IsRF5Family(const std::string& version) { return text::Holds(version, "DVB/DSS") && !IsRF6Family(version); }

std::optional<std::string> MainVersionIn(const std::string& reply)
{
    const std::size_t begin = text::FindLast(reply, "QEL");
    const std::size_t end = text::FindLast(reply, text::CrLf);
    if (begin == 0 || end <= begin) return std::nullopt;
    return text::Mid(reply, begin, end + 1 - begin);
}

std::optional<std::string> RFVersionBehindMain(const std::string& reply)
{
    if (!HoldsVersionWord(reply)) return std::nullopt;
    const std::size_t prompt = text::FindLast(reply, ">RF:");
    if (prompt == 0) return std::nullopt;
    const std::string line = text::Mid(reply, prompt + 1);
    const std::size_t end = EndBehindFamily(line);
    if (end == 0) return std::nullopt;
    return text::Replace(text::Replace(text::Left(line, end), "RF: ", ""), text::CrLf, " ");
}

std::optional<std::string> RFVersionIn(const std::string& reply)
{
    const std::size_t begin = text::Find(reply, "RF ");
    // One family is known by its word alone.
    if (!text::Holds(reply, "DVB/DSS 7 GL") && (begin == 0 || !HoldsVersionWord(reply))) return std::nullopt;
    const std::string line = text::Mid(reply, begin == 0 ? 1 : begin);
    if (EndBehindFamily(line) == 0) return std::nullopt;
    return text::Trim(text::Replace(line, text::CrLf, " "));
}

std::optional<std::string> RevisionIn(const std::string& reply, const std::string& mark)
{
    const std::size_t begin = text::Find(reply, mark);
    const std::size_t end = text::FindLast(reply, text::CrLf);
    if (begin == 0 || end <= begin) return std::nullopt;
    const std::size_t value = begin + mark.size();
    return text::TrimLines(text::Mid(reply, value, end - value));
}

std::string RevisionOfFile(const std::string& name)
{
    constexpr std::size_t bareLength = std::string_view("F61340.S19").size();
    return name.size() > bareLength ? text::Mid(name, 7, name.size() - bareLength) : std::string();
}
