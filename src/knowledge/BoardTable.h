#pragma once
// What is different from board to board, one row for each kind: iBoardType is the row's number.

#include <cstdint>
#include <string>

enum class BoardGroup {
    Line,        // a .HEX file, sent line by line
    Block,       // an .S19 file, loaded into an image and sent in blocks of 64 bytes
    MultiStage,  // an .S19 file, sent record by record, up to three of them
    None,        // nothing chosen
};

/// How the replies to pre-flash commands are cut to the parameter that they tell.
enum class Capture { Main, RF, FirstLine, None };

/// Where a board's image is sent from, and which records of a file belong to it: indices into the image, the end never
/// included.
struct BlockLayout {
    std::int32_t bootStart, bootEnd;       // the boot area leg
    std::int32_t mainStart, mainEnd;       // the main leg
    std::int32_t lowest, highest;          // the window for records of the flash file
    std::int32_t bootLowest, bootHighest;  // the window for records of the boot loader file
    std::int32_t fold;                     // the image repeats itself after so many bytes; 0: it doesn't
};

/// What a wrong echo in the boot area leg means: the board has no such area and signs on afresh.
enum class FallBack { Never, Once, Always };

struct Board {
    int type;
    BoardGroup group;
    const char* name;        // as the log calls it
    const char* banner;      // behind "*** FLASHING "
    const char* searchText;  // its words pick the row of AntennaTable; null: those of the version reply do
    Capture capture;
    bool takesFlasha;    // "flasha" resets it into its boot loader at any time
    bool slowReset;      // a reset command may take 20 s instead of 3 s, and old text is dropped before it
    bool retriesFlash;   // a failed flash can be started again in the same run
    bool holdsNoParams;  // nothing to save before the flash
    bool plainLines;     // takes lines with a single CR and nothing of the file's line ends
    const BlockLayout* layout = nullptr;  // of boards that take an .S19 file
    FallBack fallBack = FallBack::Never;
};

/// The row of a board; the last one for a type that isn't there.
const Board& BoardOf(int type);

/// True for the boards that hold parameters, print a limit switch test when they start, and can be flashed without
/// saved parameters: 0, 2, 5, 7, 8, 10, 12.
bool IsMainBoard(int type);

/// True when the versions of this board are asked from the antenna: 0, 1, 20, 21.
bool HasVersions(int type);

/// The entries of the two board lists: table 0 numbers 1 to 27, table 1 numbers 1 to 7; empty for any other.
std::string BoardName(int index, unsigned table);

/// iBoardType of such an entry; 22 for any other.
int BoardTypeOf(int index, unsigned table);

/// The board's name as log and messages give it. The lists aren't numbered like the boards, so that type 2 is called
/// "CORA Motor Controller board" here; that is on purpose.
std::string BoardNameForLog();
