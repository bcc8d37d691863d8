#pragma once
// The lines of a text file, whatever ends them: CR LF, LF or a lone CR.

#include <cstddef>
#include <istream>
#include <string>

/// Hands out the lines of a stream from its beginning. It reads no further than the size that the stream had when the
/// reader was made, so that a file that grows, or a device, never keeps it busy. A read error looks like the end; the
/// stream's own bad() tells them apart. Raises nothing of its own.
class LineReader {
public:
    explicit LineReader(std::istream& in);

    /// Passes over the UTF-8 mark that some editors put ahead of the first line; called before the first line is taken.
    void SkipByteOrderMark();

    /// True when no line is left. A line end at the very end of the file begins no further line.
    bool AtEnd() { return at_ == chunk_.size() && !Fill(); }

    /// The next line without its line end; empty when none is left.
    std::string Next();

    /// Bytes consumed so far, line ends among them, and bytes of the whole file.
    std::size_t Position() const { return read_ - (chunk_.size() - at_); }
    std::size_t Size() const { return size_; }

private:
    bool Fill();

    std::istream& in_;
    std::size_t size_ = 0;
    std::size_t read_ = 0;  // bytes taken from the stream
    std::string chunk_;     // the piece in hand, used up to at_
    std::size_t at_ = 0;
};
