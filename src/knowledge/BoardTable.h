#pragma once
// What is different from board to board, one row for each kind.

#include <cstdint>
#include <string>

enum class BoardGroup {
    Line,        // a .HEX file, sent line by line
    Block,       // an .S19 file, loaded into an image and sent in blocks of 64 bytes
    MultiStage,  // an .S19 file, sent record by record, up to three of them
    None,        // nothing chosen
};

/// Where STEP_2 offers a board.
enum class BoardList { Option, SingleCable, Other };

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

/// Which file of the configuration goes into the boot area of a Block board.
enum class BootFile { None, NewRF, RFOrMotor, RF6 };

/// What a wrong echo in the boot area leg means: the board has no such area and signs on afresh.
enum class FallBack { Never, Once, Always };

struct Board {
    int type;
    BoardGroup group;
    const char* name;                  // as the log calls it
    const char* banner;                // behind "*** FLASHING "
    const char* searchText = nullptr;  // its words pick the row of AntennaTable; null: those of the version reply do
    BoardList list = BoardList::Option;

    // --- the link
    const char* link = "9600,N,8,1";  // its speed
    bool paced = true;                // lines go out in paced pieces
    bool bareLines = false;     // takes lines with a single CR and nothing of the file's line ends, and a CR behind its
                                // program command
    bool takesFlasha = false;   // "flasha" resets it into its boot loader at any time
    bool slowReset = false;     // a reset command may take 20 s instead of 3 s, and old text is dropped before it
    bool retriesFlash = true;   // a failed flash can be started again in the same run
    bool asksSpeed = false;     // its loader asks at which speed to go on
    bool hasOldLoader = false;  // its loader may be an old one, which takes its own successor first
    bool choosesPort = false;   // the user says by which of its ports it is connected
    bool hasUSBPort = false;    // it has a USB port of its own, which goes with its power

    // --- its parameters
    Capture capture = Capture::None;
    bool holdsNoParams = false;      // nothing to save before the flash
    bool numbersSatellites = false;  // it tells its satellites by numbers
    bool renamesSatellites = false;  // its new software may know its satellites under other names

    // --- its restart
    bool anyTextIsRestart = false;
    int extraCommonWait = 0;  // seconds on top of the waits of the common list

    // --- its files
    BootFile bootFile = BootFile::None;
    const BlockLayout* layout = nullptr;  // of boards that take an .S19 file
    FallBack fallBack = FallBack::Never;
    bool foldsSecondFile = false;      // the second file's addresses repeat themselves at its image size
    const char* secondFile = nullptr;  // goes with a flash file that the user has chosen
};

/// Nothing is chosen.
inline constexpr int NoBoard = 22;

/// The row of a board; one of the group None for a type that isn't there.
const Board& BoardOf(int type);

/// True for the boards that hold parameters, print a limit switch test when they start, and can be flashed without
/// saved parameters: 0, 2, 5, 7, 8, 10, 12.
bool IsMainBoard(int type);

/// True when the versions of this board are asked from the antenna: 0, 1, 20, 21.
bool HasVersions(int type);

/// True for a main board that tells its own version and that of the RF board behind it: 0.
bool TellsMainVersion(int type);

/// True for an RF board that is asked for its version by itself: 1, 20, 21.
bool TellsRFVersion(int type);

/// The entries of the two board lists: table 0 numbers 1 to 27, table 1 numbers 1 to 7; empty for any other.
std::string BoardName(int index, unsigned table);

/// The board type of such an entry; NoBoard for any other.
int BoardTypeOf(int index, unsigned table);
