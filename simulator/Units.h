#pragma once
// The boards that the simulated antenna can be: what each says, takes and needs.

#include <cstdint>
#include <string_view>
#include <vector>

namespace sim {

/// What a boot loader takes.
enum class Loader {
    HexLines,   // lines of Intel HEX, each answered with "$" or "1"
    Blocks,     // blocks of 64 bytes without an address, each answered with 255 less the sum of its bytes modulo 256
    OldBlocks,  // first the blocks of its own successor, each answered with "$"; that one then takes Blocks
    SRecords,   // S-records, for three parts of the board, each with a command of its own
};

/// Where the blocks of a board lie in its memory; the ends aren't included.
struct Areas {
    std::uint32_t bootStart, bootEnd;  // what comes ahead of the erase
    std::uint32_t mainStart, mainEnd;  // what comes behind it
};

/// How a boot loader wants its lines of Intel HEX.
enum class Lines {
    Ordinary,      // the bare command, then lines ended by CR; LF and empty lines are passed over
    ReturnBehind,  // a lone CR behind the command, then as above
    Strict,        // a lone CR behind the command; a line counts only when it ends in exactly one CR, with no LF
};

/// What the software prints when it has started.
enum class StartUp {
    SwitchTest,  // the limit switch test, announced and passed
    FogError,    // the error line that ends the start-up of antennas without limit switches
    Banner,      // its name alone
};

/// How the antenna tells its position.
enum class Position { Words, Commas };

/// The parameters that a unit keeps.
enum class Keeps { Nothing, OfMainBoard, OfRFBoard };

/// One kind of unit. Times in seconds.
struct Unit {
    int board;               // board type
    const char* name;        // as --unit calls it
    const char* version;     // answer to VERSION; an RF board's to @VER too
    const char* rfVersion;   // answer of the RF board behind it to @VER; empty: there is none to ask
    const char* signOn;      // what its boot loader says when it starts
    const char* command;     // starts its program mode
    const char* resetWords;  // commands that restart it into its boot loader, separated by blanks
    const char* satellites;  // installed satellites, separated by commas
    int baud;
    Lines lines;
    bool saysReady;  // "1" some time behind the "$" of the erase, and no line is taken before it
    StartUp startUp;
    Position position;
    double eraseSeconds;
    Keeps keeps;
    Loader loader = Loader::HexLines;
    const Areas* areas = nullptr;        // of blocks
    bool hasBootArea = true;             // false: room for it has to be made first, see Antenna
    const char* fpgaRevision = nullptr;  // answers to FPGARev and BAPIRev; null: none comes
    const char* bapiRevision = nullptr;
};

/// True for words that differ in case alone.
bool SameWord(std::string_view a, std::string_view b);

/// All kinds, the ordinary one of each board type first.
const std::vector<Unit>& Units();

/// The unit of a board type, by its name where there are several; the first of that type for an empty name, null when
/// there is none. Case is ignored.
const Unit* FindUnit(int board, std::string_view name = {});

}  // namespace sim
