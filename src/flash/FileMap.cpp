#include "flash/FileMap.h"

#include <algorithm>

void FileMap::Add(const DataRecord& record)
{
    if (last_ && record.address < *last_ && !stepBack_) stepBack_ = record.address;
    last_ = record.address;
    std::uint64_t address = record.address;
    for (const std::uint8_t byte : record.data) {
        Page& page = pages_[address / pageSize];
        const std::size_t at = address % pageSize;
        if (page.given[at] && page.bytes[at] != byte && !contradiction_) contradiction_ = address;
        page.bytes[at] = byte;
        page.given[at] = true;
        ++address;
    }
}

std::vector<DataRange> FileMap::Ranges() const
{
    std::vector<DataRange> ranges;
    for (const auto& [number, page] : pages_) {
        for (std::size_t at = 0; at < pageSize; ++at) {
            if (!page.given[at]) continue;
            const std::uint64_t address = number * pageSize + at;
            if (ranges.empty() || ranges.back().end != address) ranges.push_back({address, address});
            ++ranges.back().end;
        }
    }
    return ranges;
}

std::int64_t FileMap::BytesIn(std::int64_t first, std::int64_t end) const
{
    std::int64_t bytes = 0;
    for (const DataRange& range : Ranges())
        bytes += std::max<std::int64_t>(0, std::min(end, static_cast<std::int64_t>(range.end)) -
                                               std::max(first, static_cast<std::int64_t>(range.first)));
    return bytes;
}

std::uint8_t FileMap::At(std::uint64_t address) const
{
    const auto page = pages_.find(address / pageSize);
    if (page == pages_.end() || !page->second.given[address % pageSize]) return 0xFF;
    return page->second.bytes[address % pageSize];
}
