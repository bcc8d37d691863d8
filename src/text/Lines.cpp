#include "text/Lines.h"

#include <algorithm>

Lines::Lines(std::string_view text) : text_(text) { PassBlank(); }

std::string_view Lines::Take()
{
    const std::size_t stop = std::min(text_.find_first_of("\r\n", next_), text_.size());
    const std::string_view line = text_.substr(next_, stop - next_);
    next_ = stop + (text_.substr(stop, 2) == "\r\n" ? 2 : 1);
    ++number_;
    return line;
}

void Lines::PassBlank()
{
    while (!AtEnd()) {
        const std::size_t at = next_;
        if (Take().find_first_not_of(" \t") == std::string_view::npos) continue;
        next_ = at;
        --number_;
        return;
    }
}

std::string_view Lines::Next()
{
    if (AtEnd()) return {};
    const std::string_view line = Take();
    given_ = number_;
    PassBlank();
    return line;
}
