#include "text/LineReader.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t chunkSize = 65536;

}  // namespace

LineReader::LineReader(std::istream& in) : in_(in)
{
    in_.seekg(0, std::ios::end);
    const std::streamoff end = in_.tellg();
    in_.clear();
    in_.seekg(0);
    if (end > 0) size_ = static_cast<std::size_t>(end);
}

bool LineReader::Fill()
{
    at_ = 0;
    chunk_.resize(std::min(chunkSize, size_ - read_));
    in_.read(chunk_.data(), static_cast<std::streamsize>(chunk_.size()));
    chunk_.resize(static_cast<std::size_t>(in_.gcount()));
    read_ += chunk_.size();
    return !chunk_.empty();
}

void LineReader::SkipByteOrderMark()
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (!AtEnd() && chunk_.compare(at_, mark.size(), mark) == 0) at_ += mark.size();
}

std::string LineReader::Next()
{
    std::string line;
    while (!AtEnd()) {
        std::size_t stop = at_;
        while (stop < chunk_.size() && chunk_[stop] != '\r' && chunk_[stop] != '\n') ++stop;
        line.append(chunk_, at_, stop - at_);
        at_ = stop;
        if (stop == chunk_.size()) continue;  // the line goes on in the next piece
        const bool carriageReturn = chunk_[at_++] == '\r';
        if (carriageReturn && !AtEnd() && chunk_[at_] == '\n') ++at_;
        break;
    }
    return line;
}
