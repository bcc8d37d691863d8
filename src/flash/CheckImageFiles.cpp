// The tests of the files that are sent from an image: each sound record is laid over the image as it is tested.

#include <stdexcept>

#include "flash/FileTest.h"
#include "flash/FlashRFBoard.h"
#include "flash/HexRecord.h"
#include "flash/SRecord.h"
#include "frame/SessionState.h"
#include "knowledge/BoardTable.h"
#include "text/Text.h"

namespace {

BoardImage& ImageOf(bool first) { return first ? Session.FlashImage : Session.FlashImageVerify; }

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

void CheckS19File(const std::string& fileName, std::int32_t addressBias, bool fillFirstImage, bool showProgress)
{
    const Board& board = BoardOf(Session.iBoardType);
    const BlockLayout& layout = *board.layout;
    const bool keepsImage = board.group == BoardGroup::Block;
    const bool isBoot = text::Equal(fileName, Session.sNewRFBootloaderFile);
    const Window window =
        isBoot ? Window{layout.bootLowest, layout.bootHighest} : Window{layout.lowest, layout.highest};
    BoardImage& image = ImageOf(fillFirstImage);
    if (keepsImage && !isBoot) {
        image.fill(255);  // the erased state
        Session.lFlashBlockPos = layout.mainStart;
    }

    bool holdsData = false;
    FileTest test;
    test.fileName = fileName;
    test.showProgress = showProgress;
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

void CheckHexImageFile(const std::string& fileName, std::int32_t imageLength, std::int32_t addressBias,
                       std::int32_t lowestAddress, bool fillFirstImage, bool showProgress)
{
    const int type = Session.iBoardType;
    const bool folded = type != 4 && type != 11 && type != 20 && type != 21 && imageLength > 0;
    BoardImage& image = ImageOf(fillFirstImage);
    bool holdsData = false;
    FileTest test;
    test.fileName = fileName;
    test.showProgress = showProgress;
    test.test = [&](const std::string& line) {
        const std::uint32_t count = text::HexField(line, 2, 2);
        std::int64_t index = static_cast<std::int64_t>(text::HexField(line, 4, 4)) + addressBias;
        if (text::HexField(line, 8, 2) != HexData) return;
        ParseHexRecord(line);  // its checksum, too
        holdsData = true;
        for (std::size_t at = 10; at < 10 + std::size_t{count} * 2; at += 2) {
            if (index < lowestAddress) return;  // a record that begins under the lowest address stays out as a whole
            Store(image, folded ? index % imageLength : index, static_cast<std::uint8_t>(text::HexField(line, at, 2)));
            ++index;
        }
    };
    test.wholeFault = [&] { return holdsData ? "" : "the file holds no data"; };
    RunFileTest(test);
}
