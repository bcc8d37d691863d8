// The tests of the files that are sent from an image: each sound record is laid over the image as it is tested. A
// record that lies wholly below what the board takes belongs to somebody else, and that is told; one that reaches out
// of it is refused, for it would be written in part.

#include <algorithm>
#include <stdexcept>

#include "display/Display.h"
#include "flash/FileTest.h"
#include "flash/FlashRFBoard.h"
#include "knowledge/BoardTable.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

/// Indices into the image, the end not included.
struct Span {
    std::int64_t first, end;
    bool Holds(const Span& other) const { return other.first >= first && other.end <= end; }
    std::int64_t Shared(const Span& other) const
    {
        return std::max<std::int64_t>(0, std::min(end, other.end) - std::max(first, other.first));
    }
};

Span SpanOf(std::int64_t index, const DataRecord& record)
{
    return {index, index + static_cast<std::int64_t>(record.data.size())};
}

std::string Shown(std::int64_t address) { return text::Hex(static_cast<std::uint32_t>(address), 4); }

/// "data from 1838 to 1857".
std::string Shown(const DataRecord& record)
{
    return "data from " + Shown(record.address) + " to " +
           Shown(std::int64_t{record.address} + static_cast<std::int64_t>(record.data.size()) - 1);
}

[[noreturn]] void RefuseRecord(const DataRecord& record, const Span& taken)
{
    throw std::out_of_range(Shown(record) + " reach out of what the board takes, " + Shown(taken.first) + " to " +
                            Shown(taken.end - 1));
}

template <class Image>
void Store(Image& image, const Span& span, const DataRecord& record)
{
    if (span.first < 0 || span.end > static_cast<std::int64_t>(image.size())) RefuseRecord(record, {0, 0x20000});
    std::copy(record.data.begin(), record.data.end(), image.begin() + span.first);
}

/// What a file brings to the board, and what it doesn't.
struct Account {
    std::int64_t sent = 0;
    std::int64_t below = 0;
};

std::string FaultOf(const Account& account)
{
    return account.sent > 0 ? std::string() : "the file holds no data for this board";
}

void TellBelow(const std::string& fileName, const Account& account, std::int64_t first)
{
    if (account.below == 0 || Session.flash.bFlashFileBad) return;
    const std::string words = fileName + ": " + text::Num(account.below) + " bytes below " + Shown(first) +
                              " are not for this board and will not be sent.";
    WriteLogLine("++>" + words);
    StatusTextUpdate(words);
}

/// Bytes of the main leg that a file fills; where the image repeats itself each copy counts.
std::int64_t FilledOf(const BlockLayout& layout, std::int64_t bias, const FileMap& map)
{
    const std::int64_t copies = layout.fold > 0 ? layout.highest / layout.fold : 1;
    std::int64_t filled = 0;
    for (std::int64_t copy = 0; copy < copies; ++copy)
        filled += map.BytesIn(layout.mainStart + copy * layout.fold - bias, layout.mainEnd + copy * layout.fold - bias);
    return filled;
}

}  // namespace

void CheckS19File(const std::string& fileName, std::int32_t addressBias, int boardType, S19File kind)
{
    const Board& board = BoardOf(boardType);
    const BlockLayout& layout = *board.layout;
    const bool isBoot = kind == S19File::BootLoader;
    FileTest test;
    test.fileName = fileName;
    test.comparesShare = !isBoot;
    if (board.group != BoardGroup::Block) {  // sent as it stands
        test.take = [&](const DataRecord& record) {
            const Span memory{0, layout.highest};
            if (!memory.Holds(SpanOf(record.address, record))) RefuseRecord(record, memory);
        };
        return RunFileTest(test);
    }

    const std::int64_t copy = layout.fold > 0 ? layout.fold : layout.bootHighest;
    const Span leg = isBoot ? Span{layout.bootStart, layout.bootEnd} : Span{layout.mainStart, layout.mainEnd};
    const Span taken = isBoot ? Span{layout.bootLowest, std::min<std::int64_t>(layout.bootHighest, copy)} : leg;
    const Span window = isBoot ? Span{layout.bootLowest, layout.bootHighest} : Span{layout.lowest, layout.highest};
    BoardImage& image = Session.flash.FlashImage;
    if (!isBoot) image.fill(255);  // the erased state
    Account account;
    test.take = [&](const DataRecord& record) {
        const std::int64_t index = std::int64_t{record.address} + addressBias;
        const Span target = SpanOf(layout.fold > 0 && index >= 0 ? index % layout.fold : index, record);
        const bool isBelow = target.end <= taken.first;
        if (isBelow && index < window.first) {
            account.below += target.end - target.first;
            return;
        }
        // Ahead of the main leg the window of some boards holds the boot area, too.
        if (!window.Holds(SpanOf(index, record)) || (!isBelow && !taken.Holds(target))) RefuseRecord(record, taken);
        Store(image, target, record);
        account.sent += target.Shared(leg);
    };
    test.wholeFault = [&] { return FaultOf(account); };
    test.window = leg.end - leg.first;
    test.filled = [&](const FileMap& map) { return FilledOf(layout, addressBias, map); };
    RunFileTest(test);
    TellBelow(fileName, account, taken.first);
}

void CheckS19Records(const std::string& fileName)
{
    FileTest test;
    test.fileName = fileName;
    test.comparesShare = true;
    RunFileTest(test);
}

void CheckHexImageFile(const std::string& fileName, const FileArguments& arguments, int boardType)
{
    const Board& board = BoardOf(boardType);
    const std::int64_t size = board.foldsSecondFile ? arguments.ImageSize : 0;
    const Span boot{board.layout->bootStart, board.layout->bootEnd};
    const Span main{board.layout->mainStart, board.layout->mainEnd};
    Account account;
    FileTest test;
    test.fileName = fileName;
    test.kind = RecordKind::Hex;
    test.take = [&](const DataRecord& record) {
        const std::int64_t index = std::int64_t{record.address} + arguments.AddressOffset;
        const Span whole = SpanOf(index, record);
        if (whole.end <= arguments.CheckValue) {
            account.below += whole.end - whole.first;
            return;
        }
        if (index < arguments.CheckValue) RefuseRecord(record, {arguments.CheckValue, main.end});
        const Span target = SpanOf(size > 0 ? index % size : index, record);
        // Ahead of the main leg lies the boot area; what is folded down onto it was meant for elsewhere.
        const bool isBoot = index >= 0 && target.end <= main.first && target.first == index;
        const bool isSplit = size > 0 && target.end > size;
        if (isSplit || (!isBoot && !main.Holds(target))) RefuseRecord(record, main);
        Store(Session.flash.FlashImage, target, record);
        account.sent += target.Shared(main) + target.Shared(boot);
    };
    test.wholeFault = [&] { return FaultOf(account); };
    RunFileTest(test);
    TellBelow(fileName, account, arguments.CheckValue);
}

void CheckUpgradeFile(const std::string& fileName)
{
    // What lies ahead of it stays as it is.
    constexpr Span taken{UpgradeFirst, UpgradeEnd};
    constexpr std::int64_t highCopy = 32768;
    Session.flash.BootUpgradeImage.fill(255);
    Account account;
    FileTest test;
    test.fileName = fileName;
    test.take = [&](const DataRecord& record) {
        // The high copy of the boot block is folded down to the low one.
        const std::int64_t address = record.address;
        const Span target = SpanOf(address >= highCopy + taken.first ? address - highCopy : address, record);
        if (target.end <= taken.first) {
            account.below += target.end - target.first;
            return;
        }
        if (!taken.Holds(target)) RefuseRecord(record, taken);
        Store(Session.flash.BootUpgradeImage, target, record);
        account.sent += target.end - target.first;
    };
    test.wholeFault = [&] { return FaultOf(account); };
    RunFileTest(test);
    TellBelow(fileName, account, taken.first);
}
