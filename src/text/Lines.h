#pragma once
// The lines of a text in memory that aren't blank. CR LF or LF ends them; a CR elsewhere is a part of its line.

#include <cstddef>
#include <string_view>

class Lines {
public:
    /// `text` has to outlive the walk.
    explicit Lines(std::string_view text);

    /// True when no line is left but blank ones; blanks, tabs and CRs alone make a line blank.
    bool AtEnd() const { return next_ >= text_.size(); }

    /// The next line without its line end; empty when none is left.
    std::string_view Next();

    /// The number of the line that was given last, blank ones counted; the first line of the text is 1.
    long Number() const { return given_; }

    /// Bytes up to the next line.
    std::size_t Position() const { return next_; }

private:
    std::string_view Take();
    void PassBlank();

    std::string_view text_;
    std::size_t next_ = 0;  // where the next line begins
    long number_ = 0;       // of the line ahead of it
    long given_ = 0;
};
