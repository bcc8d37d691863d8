#include "update/UpdateList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>

#include "text/Text.h"

namespace {

constexpr std::size_t longestName = 200;  // bytes; with room for what a replacement adds behind it

/// The user's own, and what the program needs to work: no list may touch them.
constexpr std::array ownFiles{
    "Burnline.ini", "BNL.LOG", "BNLBAK.LOG", "BNLUPDATES.HTM", "Burnline.ports", "Burnline.lock", "BNLUpdate",
};

constexpr std::array devices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"};

bool IsControl(char letter)
{
    const auto code = static_cast<unsigned char>(letter);
    return code < ' ' || code == 0x7F;
}

/// Windows takes "NUL.TXT" and "COM1" for devices, whatever stands behind the point.
bool IsDevice(std::string_view name)
{
    const std::string stem = text::Trim(name.substr(0, name.find('.')));
    if (std::any_of(devices.begin(), devices.end(), [&](const char* device) { return text::Equal(stem, device); }))
        return true;
    const bool numbered = text::StartsWith(stem, "COM") || text::StartsWith(stem, "LPT");
    const std::string number = numbered ? stem.substr(3) : "";
    constexpr std::array superscripts{"\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') ||
           std::find(superscripts.begin(), superscripts.end(), number) != superscripts.end();
}

/// The files of a replacement stand beside those they replace, under names that begin like theirs; the key and the
/// record of a replacement begin with "BNLUpdate.".
bool IsOwnFile(std::string_view name)
{
    if (text::Holds(name, ".bnl-")) return true;
    return std::any_of(ownFiles.begin(), ownFiles.end(), [&](std::string_view own) {
        return text::Equal(name, own) || text::StartsWith(name, std::string(own) + ".");
    });
}

int HexDigit(char digit)
{
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return -1;
}

std::optional<std::string> PercentDecoded(std::string_view field)
{
    std::string decoded;
    for (std::size_t at = 0; at < field.size(); ++at) {
        if (field[at] != '%') {
            decoded += field[at];
            continue;
        }
        const int high = at + 2 < field.size() ? HexDigit(field[at + 1]) : -1;
        const int low = high >= 0 ? HexDigit(field[at + 2]) : -1;
        if (low < 0) return std::nullopt;
        decoded += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return decoded;
}

/// A whole number of plain digits.
std::optional<std::int64_t> Number(std::string_view field)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    const bool whole = error == std::errc() && end == field.data() + field.size() && field.front() != '-';
    return whole ? std::optional(value) : std::nullopt;
}

bool IsDate(std::string_view field)
{
    if (field.size() != 10 || field[4] != '-' || field[7] != '-') return false;
    const auto year = Number(field.substr(0, 4)), month = Number(field.substr(5, 2)), day = Number(field.substr(8));
    if (!year || !month || !day) return false;
    return std::chrono::year_month_day(std::chrono::year(static_cast<int>(*year)),
                                       std::chrono::month(static_cast<unsigned>(*month)),
                                       std::chrono::day(static_cast<unsigned>(*day)))
        .ok();
}

/// One line after the other, with its number for whoever has to mend it.
class Lines {
public:
    explicit Lines(std::string_view bytes) : rest_(bytes) {}

    bool AtEnd() const { return rest_.empty(); }

    std::string_view Next()
    {
        ++number_;
        if (AtEnd()) Refuse("the list ends too early");
        const std::size_t end = rest_.find('\n');
        if (end == std::string_view::npos) Refuse("the line has no end");
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (std::any_of(line.begin(), line.end(), IsControl)) Refuse("a control character");
        return line;
    }

    [[noreturn]] void Refuse(const std::string& why) const { throw UpdateListError(number_, why); }

private:
    std::string_view rest_;
    int number_ = 0;
};

/// The first word of a line; the line keeps what stands behind the blank.
std::string_view TakeField(std::string_view& line, const Lines& lines)
{
    const std::size_t blank = line.find(' ');
    const std::string_view field = line.substr(0, blank);
    if (field.empty()) lines.Refuse("a field is missing");
    line.remove_prefix(blank == std::string_view::npos ? line.size() : blank + 1);
    return field;
}

/// The value of one of the four lines at the beginning.
std::string_view Heading(Lines& lines, std::string_view keyword)
{
    std::string_view line = lines.Next();
    if (!line.starts_with(keyword) || line.size() <= keyword.size() || line[keyword.size()] != ' ')
        lines.Refuse("\"" + std::string(keyword) + "\" is expected here");
    return line.substr(keyword.size() + 1);
}

std::string Sha256(std::string_view field, const Lines& lines)
{
    constexpr std::size_t digits = 64;
    if (field.size() != digits || std::any_of(field.begin(), field.end(), [](char d) { return HexDigit(d) < 0; }))
        lines.Refuse("no SHA-256 in hexadecimal: " + std::string(field));
    std::string digest(field);
    std::transform(digest.begin(), digest.end(), digest.begin(), [](char d) {
        constexpr std::string_view lower = "0123456789abcdef";
        return lower[static_cast<std::size_t>(HexDigit(d))];
    });
    return digest;
}

UpdateFile ReadFileLine(std::string_view line, const Lines& lines)
{
    UpdateFile file;
    file.Sha256 = Sha256(TakeField(line, lines), lines);
    const std::string_view size = TakeField(line, lines);
    const auto bytes = Number(size);
    if (!bytes) lines.Refuse("no size in bytes: " + std::string(size));
    if (*bytes > MaxUpdateFileSize) lines.Refuse("a file of more than 64 MiB");
    file.Size = *bytes;
    const auto name = PercentDecoded(TakeField(line, lines)), address = PercentDecoded(TakeField(line, lines));
    if (!name || !address) lines.Refuse("a percent sign without two hexadecimal digits");
    if (!line.empty()) lines.Refuse("more than four fields");
    const std::string problem = NameProblem(*name);
    if (!problem.empty()) lines.Refuse(problem);
    file.Name = *name;
    file.Address = *address;
    return file;
}

UpdateMessage ReadMessageLine(std::string_view line, const Lines& lines)
{
    const std::string_view field = TakeField(line, lines);
    const auto number = Number(field);
    if (!number || *number > INT32_MAX) lines.Refuse("no message number: " + std::string(field));
    return {static_cast<std::int32_t>(*number), std::string(line)};
}

void AddFile(UpdateList& list, UpdateFile file, const Lines& lines)
{
    const bool twice = std::any_of(list.Files.begin(), list.Files.end(),
                                   [&](const UpdateFile& other) { return text::Equal(other.Name, file.Name); });
    if (twice) lines.Refuse("the same name twice: " + file.Name);
    list.Files.push_back(std::move(file));
}

}  // namespace

std::string NameProblem(std::string_view name)
{
    constexpr std::string_view separators = "/\\:";
    constexpr std::string_view forbidden = "<>\"|?*";
    if (name.empty()) return "an empty file name";
    if (std::any_of(name.begin(), name.end(), IsControl)) return "a control character in a file name";
    const std::string quoted = ": \"" + std::string(name) + "\"";
    if (name.size() > longestName) return "a file name of more than " + std::to_string(longestName) + " bytes";
    if (name.find_first_of(separators) != std::string_view::npos) return "not a bare file name" + quoted;
    if (name.find_first_of(forbidden) != std::string_view::npos) return "not a file name on every system" + quoted;
    if (name.front() == '.' || name.back() == '.' || name.front() == ' ' || name.back() == ' ')
        return "a file name with a point or a blank at its end or beginning" + quoted;
    if (IsDevice(name)) return "the name of a device" + quoted;
    if (IsOwnFile(name)) return "a file that holds the user's own data" + quoted;
    return {};
}

UpdateList ReadUpdateList(std::string_view bytes)
{
    Lines lines(bytes);
    UpdateList list;
    if (bytes.size() > MaxUpdateListLength) lines.Refuse("the list is longer than 64 KiB");
    if (Heading(lines, "burnline-updates") != "1") lines.Refuse("a kind of list that this program doesn't know");
    if (Heading(lines, "product") != "burnline") lines.Refuse("a list of another product");
    const auto revision = Number(Heading(lines, "revision"));
    if (!revision || *revision > INT32_MAX) lines.Refuse("no revision number");
    list.Revision = static_cast<std::int32_t>(*revision);
    list.Expires = Heading(lines, "expires");
    if (!IsDate(list.Expires)) lines.Refuse("no date: " + list.Expires);

    while (!lines.AtEnd()) {
        std::string_view line = lines.Next();
        const std::string_view keyword = TakeField(line, lines);
        if (keyword == "file")
            AddFile(list, ReadFileLine(line, lines), lines);
        else if (keyword == "message")
            list.Messages.push_back(ReadMessageLine(line, lines));
        else
            lines.Refuse("neither a file nor a message");
    }
    return list;
}
