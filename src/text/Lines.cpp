#include "text/Lines.h"

#include <algorithm>

Lines::Lines(std::string_view text) : text_(text) { PassBlank(); }

std::string_view Lines::Take()
{
    const std::size_t stop = std::min(text_.find('\n', next_), text_.size());
    std::string_view line = text_.substr(next_, stop - next_);
    next_ = stop + 1;
    ++number_;
    if (stop < text_.size() && line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

void Lines::PassBlank()
{
    while (!AtEnd()) {
        const std::size_t at = next_;
        if (Take().find_first_not_of(" \t\r") == std::string_view::npos) continue;
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
