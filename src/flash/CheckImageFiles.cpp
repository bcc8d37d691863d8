// The tests of the files that are sent from an image: each sound record is laid over the image as it is tested.

#include <stdexcept>

#include "flash/FileTest.h"
#include "flash/FlashRFBoard.h"
#include "flash/HexRecord.h"
#include "flash/SRecord.h"
#include "knowledge/BoardTable.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

void Store(BoardImage& image, std::int64_t index, std::uint8_t byte)
{
    if (index < 0 || index >= static_cast<std::int64_t>(image.size()))
        throw std::out_of_range("an address lies beyond the board's memory");
    image[static_cast<std::size_t>(index)] = byte;
}

/// Which records of a file belong to the board; the boot loader file has a window of its own.
struct Window {
    std::int32_t lowest, highest;
    bool Holds(std::int64_t index) const { return index >= lowest && index < highest; }
};

}  // namespace

void CheckS19File(const std::string& fileName, std::int32_t addressBias, int boardType, S19File kind)
{
    const Board& board = BoardOf(boardType);
    const BlockLayout& layout = *board.layout;
    const bool keepsImage = board.group == BoardGroup::Block;
    const bool isBoot = kind == S19File::BootLoader;
    const Window window =
        isBoot ? Window{layout.bootLowest, layout.bootHighest} : Window{layout.lowest, layout.highest};
    BoardImage& image = Session.flash.FlashImage;
    if (keepsImage && !isBoot) image.fill(255);  // the erased state

    bool holdsData = false;
    FileTest test;
    test.fileName = fileName;
    test.isRecord = [](const std::string& line) { return IsSRecord(line); };
    test.test = [&](const std::string& line) {
        const SRecord record = ParseSRecord(line);
        std::int64_t index = static_cast<std::int64_t>(record.address) + addressBias;
        if (record.type != 1 && record.type != 2) return;
        if (!keepsImage) holdsData = true;  // sent as it stands, whatever its addresses
        if (!window.Holds(index)) return;
        if (!record.checksumFits) throw std::invalid_argument("the checksum doesn't fit the data");
        if (!keepsImage) return;
        holdsData = true;
        for (const std::uint8_t byte : record.data) {
            Store(image, layout.fold > 0 ? index % layout.fold : index, byte);
            ++index;
        }
    };
    test.wholeFault = [&] { return holdsData ? "" : "the file holds no data for this board"; };
    RunFileTest(test);
}

void CheckS19Records(const std::string& fileName)
{
    bool holdsData = false;
    FileTest test;
    test.fileName = fileName;
    test.isRecord = [](const std::string& line) { return IsSRecord(line); };
    test.test = [&](const std::string& line) {
        const SRecord record = ParseSRecord(line);
        if (!record.checksumFits) throw std::invalid_argument("the checksum doesn't fit the data");
        if (record.type >= 1 && record.type <= 3) holdsData = true;
    };
    test.wholeFault = [&] { return holdsData ? "" : "the file holds no data"; };
    RunFileTest(test);
}

void CheckHexImageFile(const std::string& fileName, const FileArguments& arguments, int boardType)
{
    const bool folded = BoardOf(boardType).foldsSecondFile && arguments.ImageSize > 0;
    BoardImage& image = Session.flash.FlashImage;
    bool holdsData = false;
    FileTest test;
    test.fileName = fileName;
    test.test = [&](const std::string& line) {
        const std::uint32_t count = text::HexField(line, 2, 2);
        std::int64_t index = static_cast<std::int64_t>(text::HexField(line, 4, 4)) + arguments.AddressOffset;
        if (text::HexField(line, 8, 2) != HexData) return;
        ParseHexRecord(line);  // its checksum, too
        holdsData = true;
        for (std::size_t at = 10; at < 10 + std::size_t{count} * 2; at += 2) {
            if (index < arguments.CheckValue)
                return;  // a record that begins under the lowest address stays out as a whole
            Store(image, folded ? index % arguments.ImageSize : index,
                  static_cast<std::uint8_t>(text::HexField(line, at, 2)));
            ++index;
        }
    };
    test.wholeFault = [&] { return holdsData ? "" : "the file holds no data"; };
    RunFileTest(test);
}
