#include "text/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>

namespace text {
namespace {

char Fold(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameLetter(char a, char b) { return Fold(a) == Fold(b); }

int HexDigit(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    const char folded = Fold(c);
    if (folded >= 'a' && folded <= 'f') return folded - 'a' + 10;
    return -1;
}

/// Length of the decimal number that `in` begins with: sign, digits, point, digits; 0 when there is no digit.
std::size_t NumberLength(std::string_view in)
{
    std::size_t at = 0;
    std::size_t digits = 0;
    if (at < in.size() && (in[at] == '-' || in[at] == '+')) ++at;
    for (; at < in.size() && in[at] >= '0' && in[at] <= '9'; ++at) ++digits;
    if (at < in.size() && in[at] == '.') {
        ++at;
        for (; at < in.size() && in[at] >= '0' && in[at] <= '9'; ++at) ++digits;
    }
    return digits == 0 ? 0 : at;
}

std::string_view Between(std::string_view in, std::string_view cut)
{
    const std::size_t first = in.find_first_not_of(cut);
    if (first == std::string_view::npos) return {};
    return in.substr(first, in.find_last_not_of(cut) - first + 1);
}

}  // namespace

bool Equal(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), SameLetter);
}

int Compare(std::string_view a, std::string_view b)
{
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const auto left = static_cast<unsigned char>(Fold(a[i]));
        const auto right = static_cast<unsigned char>(Fold(b[i]));
        if (left != right) return left < right ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

std::size_t Find(std::string_view in, std::string_view what, std::size_t start)
{
    if (what.empty() || start < 1 || start > in.size()) return 0;
    const auto from = in.begin() + static_cast<std::ptrdiff_t>(start - 1);
    const auto hit = std::search(from, in.end(), what.begin(), what.end(), SameLetter);
    return hit == in.end() ? 0 : static_cast<std::size_t>(hit - in.begin()) + 1;
}

std::size_t FindLast(std::string_view in, std::string_view what)
{
    if (what.empty()) return 0;
    const auto hit = std::find_end(in.begin(), in.end(), what.begin(), what.end(), SameLetter);
    return hit == in.end() ? 0 : static_cast<std::size_t>(hit - in.begin()) + 1;
}

bool Holds(std::string_view in, std::string_view what) { return Find(in, what) != 0; }

bool StartsWith(std::string_view in, std::string_view what)
{
    return in.size() >= what.size() && Equal(in.substr(0, what.size()), what);
}

std::string Replace(std::string_view in, std::string_view what, std::string_view with)
{
    std::string out;
    std::size_t from = 1;
    for (std::size_t hit = Find(in, what); hit != 0; hit = Find(in, what, from)) {
        out.append(in.substr(from - 1, hit - from)).append(with);
        from = hit + what.size();
    }
    if (from <= in.size()) out.append(in.substr(from - 1));
    return out;
}

std::string Trim(std::string_view in) { return std::string(Between(in, " ")); }

std::string LTrim(std::string_view in)
{
    const std::size_t first = in.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string() : std::string(in.substr(first));
}

std::string TrimLines(std::string_view in) { return std::string(Between(in, " \t\r\n")); }

std::string Mid(std::string_view in, std::size_t start, std::size_t count)
{
    if (start < 1 || start > in.size()) return {};
    return std::string(in.substr(start - 1, count));
}

std::string Left(std::string_view in, std::size_t count) { return std::string(in.substr(0, count)); }

std::string Right(std::string_view in, std::size_t count)
{
    return std::string(in.substr(in.size() - std::min(count, in.size())));
}

std::string Upper(std::string_view in)
{
    std::string out(in);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return out;
}

std::vector<std::string> Split(std::string_view in, std::string_view separator)
{
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (std::size_t hit = in.find(separator); hit != std::string_view::npos; hit = in.find(separator, from)) {
        parts.emplace_back(in.substr(from, hit - from));
        from = hit + separator.size();
    }
    parts.emplace_back(in.substr(from));
    return parts;
}

std::vector<std::string> EndedLines(std::string_view in)
{
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t end = in.find_first_of(CrLf); end != std::string_view::npos; end = in.find_first_of(CrLf, from)) {
        const std::string_view line = in.substr(from, end - from);
        if (!Trim(line).empty()) lines.emplace_back(line);
        from = end + 1;
    }
    return lines;
}

int Count(std::string_view in, char what) { return static_cast<int>(std::count(in.begin(), in.end(), what)); }

double Val(std::string_view in)
{
    const std::string trimmed = TrimLines(in);
    std::string_view digits = std::string_view(trimmed).substr(0, NumberLength(trimmed));
    if (!digits.empty() && digits.front() == '+') digits.remove_prefix(1);
    double value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

bool IsNumeric(std::string_view in)
{
    const std::string trimmed = Trim(in);
    return !trimmed.empty() && NumberLength(trimmed) == trimmed.size();
}

std::int32_t ToLong(std::string_view in)
{
    if (!IsNumeric(in)) throw std::invalid_argument("\"" + Left(in, 40) + "\" is no number");
    const double value = Val(in);
    if (value < -2147483648.0 || value > 2147483647.0) throw std::out_of_range("number out of range");
    return static_cast<std::int32_t>(RoundHalfEven(value));
}

std::uint32_t HexField(std::string_view in, std::size_t start, std::size_t count)
{
    if (start < 1 || start - 1 + count > in.size()) throw std::invalid_argument("the record is too short");
    std::uint32_t value = 0;
    for (const char c : in.substr(start - 1, count)) {
        const int digit = HexDigit(c);
        if (digit < 0) throw std::invalid_argument("a field is no hexadecimal number");
        value = value * 16 + static_cast<std::uint32_t>(digit);
    }
    return value;
}

std::string Hex(std::uint32_t value, int digits)
{
    std::string out;
    for (; value != 0 || digits > static_cast<int>(out.size()); value /= 16)
        out.insert(out.begin(), "0123456789ABCDEF"[value % 16]);
    return out;
}

std::string Str(long long value) { return (value < 0 ? "" : " ") + std::to_string(value); }

std::string Num(long long value) { return std::to_string(value); }

long RoundHalfEven(double value) { return std::lrint(value); }

}  // namespace text
