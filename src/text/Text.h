#pragma once
// Words and numbers as the system reads them: case is ignored, positions count from 1, and 0 means "not there".

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace text {

/// CR LF, the line end of the antenna's text, the log and the multi-line boxes.
inline constexpr std::string_view CrLf = "\r\n";

/// Case-blind equality. Only A to Z fold; bytes above 127 are compared as they are.
bool Equal(std::string_view a, std::string_view b);

/// Case-blind order: below 0, 0 or above 0, like strcmp.
int Compare(std::string_view a, std::string_view b);

/// Position of the first `what` at or behind `start`, ignoring case; 0 when it isn't there or `what` is empty.
std::size_t Find(std::string_view in, std::string_view what, std::size_t start = 1);

/// Position of the last `what`, ignoring case; 0 when it isn't there or `what` is empty.
std::size_t FindLast(std::string_view in, std::string_view what);

/// True when `what` occurs anywhere in `in`, ignoring case.
bool Holds(std::string_view in, std::string_view what);

/// True when `in` begins with `what`, ignoring case.
bool StartsWith(std::string_view in, std::string_view what);

/// Every `what` in `in`, ignoring case, replaced by `with`.
std::string Replace(std::string_view in, std::string_view what, std::string_view with);

/// `in` without the blanks (code 32 only) at its beginning and end; the L form cuts the beginning alone.
std::string Trim(std::string_view in);
std::string LTrim(std::string_view in);

/// `in` without blanks, tabs, CR and LF at its beginning and end.
std::string TrimLines(std::string_view in);

/// `count` characters from position `start` (1-based) on; what lies beyond the text is simply missing.
std::string Mid(std::string_view in, std::size_t start, std::size_t count = std::string_view::npos);
std::string Left(std::string_view in, std::size_t count);
std::string Right(std::string_view in, std::size_t count);

std::string Upper(std::string_view in);

/// The parts between the separators; an empty text gives one empty part.
std::vector<std::string> Split(std::string_view in, std::string_view separator);

/// The lines that a CR or LF has ended, without it; blank ones are left out, and so is what has no end yet.
std::vector<std::string> EndedLines(std::string_view in);

/// How often `what` occurs in `in`.
int Count(std::string_view in, char what);

/// The number at the beginning of a text, what follows it ignored; 0 when there is none ("42.5N" reads as 42.5).
double Val(std::string_view in);

/// True when the whole text, blanks around it aside, is one decimal number.
bool IsNumeric(std::string_view in);

/// A whole decimal number, blanks around it aside; raises std::invalid_argument when the text is no number,
/// std::out_of_range when it doesn't fit into 32 bits. A fraction is rounded, halves to the even neighbour.
std::int32_t ToLong(std::string_view in);

/// `count` hexadecimal digits at position `start` (1-based). Raises std::invalid_argument when one of them is
/// missing or no hexadecimal digit.
std::uint32_t HexField(std::string_view in, std::size_t start, std::size_t count);

/// Upper-case hexadecimal digits, at least `digits` of them.
std::string Hex(std::uint32_t value, int digits = 1);

/// A number as text: Str puts a blank ahead of a number that isn't negative, Num doesn't.
std::string Str(long long value);
std::string Num(long long value);

/// A value rounded to the nearest whole number, halves to the even neighbour.
long RoundHalfEven(double value);

}  // namespace text
