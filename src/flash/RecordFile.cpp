#include "flash/RecordFile.h"

#include <stdexcept>

#include "flash/HexRecord.h"
#include "flash/RecordBytes.h"
#include "flash/SRecord.h"
#include "text/Text.h"

std::optional<DataRecord> RecordFile::TakeHex(std::string_view line)
{
    HexRecord record = ParseHexRecord(line);
    switch (record.type) {
    case HexData: return DataRecord{base_ + record.address, std::move(record.data)};
    case HexEndOfFile: ended_ = true; break;
    case HexExtendedSegment: base_ = RecordNumber(record.data, 0, 2) << 4; break;
    case HexExtendedLinear: base_ = RecordNumber(record.data, 0, 2) << 16; break;
    default: break;  // a start address; the board begins where it always does
    }
    return std::nullopt;
}

std::optional<DataRecord> RecordFile::TakeS(std::string_view line)
{
    SRecord record = ParseSRecord(line);
    switch (record.type) {
    case 1:
    case 2:
    case 3:
        if (count_) throw std::invalid_argument("there is data behind the count of the records");
        ++records_;
        return DataRecord{record.address, std::move(record.data)};
    case 5:
    case 6:
        if (record.address != records_)
            throw std::invalid_argument("the file counts " + text::Num(record.address) + " data records and holds " +
                                        text::Num(records_));
        count_ = record.address;
        break;
    case 7:
    case 8:
    case 9: ended_ = true; break;
    default:  // a title
        if (records_ > 0) lateTitle_ = true;
    }
    return std::nullopt;
}

std::optional<DataRecord> RecordFile::Take(std::string_view line)
{
    if (ended_) throw std::invalid_argument("there is something behind the end record");
    std::optional<DataRecord> data = kind_ == RecordKind::Hex ? TakeHex(line) : TakeS(line);
    if (data && data->data.empty()) data.reset();
    if (data) holdsData_ = true;
    return data;
}

std::vector<std::string> RecordFile::Oddities() const
{
    std::vector<std::string> odd;
    if (kind_ == RecordKind::S && !ended_ && !count_)
        odd.push_back("it has neither an end record nor a count of its records, so its end may be missing");
    if (lateTitle_) odd.push_back("there is a title (S0) behind data; one wrong bit makes one of a data record");
    return odd;
}

std::string RecordFile::Fault() const
{
    if (!holdsData_) return "the file holds no data";
    if (kind_ == RecordKind::Hex && !ended_) return "the file ends before its end record";
    return {};
}
