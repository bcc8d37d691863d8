#pragma once
// The plan of a flash: everything that is decided before anything is sent, as a value that nobody alters.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session/FlashConfig.h"

/// The three numbers that go with a flash file into its test.
struct FileArguments {
    std::int32_t ImageSize = 0;
    std::int32_t AddressOffset = 0;
    std::int32_t CheckValue = 0;
};

/// The lists of antenna models that decide which software an RF board needs.
enum class ModelList { RF, RF6, RF6A };

/// What the user answers on STEP_4. What wasn't asked is empty.
struct PlanAnswers {
    std::optional<bool> upgradeToGLTV{};     // the satellite library of a JARL system
    std::optional<std::string> modelFile{};  // the file of the antenna's model; empty: the model isn't listed
    std::optional<std::string> flashFile{};  // another flash file than the one that was found
    bool skipParameters = false;             // parameters are neither saved nor restored
};

/// One file that goes to the board behind one power cycle; most boards take one, board 21 up to three.
struct FlashStage {
    std::string banner;   // behind "*** FLASHING "
    std::string done;     // what the stage ahead of it has done, for a user who sees no parameters saved
    std::string request;  // asks for the power cycle ahead of it
    std::string sFlashCmd;
    std::string sFlashFile;
};

/// How the antenna of a row differs from the others of its board.
struct RowFacts {
    bool bareLines = false;            // takes a line with a single CR and nothing of the file's line ends
    bool returnBehindCommand = false;  // wants a lone CR behind the program command
    bool announcesFirstLine = false;   // says "1" when it is ready for the first line
    bool startsWithFogError = false;   // has no limit switches; an error line ends its start-up
    bool needsRF5File = false;         // its software must match an older RF board behind it
};

struct FlashPlan {
    int iBoardType = 22;  // 0 to 21, see knowledge/BoardTable; 22: nothing is planned
    AntennaRecord row;
    RowFacts facts;
    std::string sBoardSignOn;
    std::vector<FlashStage> stages{1};
    std::string sFlashFileName;  // the second flash file, of some boards
    FileArguments FirstFile, SecondFile;
    std::int16_t iLinePauseTicks = 0;                        // pause between two flash lines in ticks of 10 ms
    std::string sNewRFBootloaderFile;                        // goes into the boot area
    bool paced = true;                                       // lines go out in paced pieces
    std::vector<std::string> sPreflashCmds, sPostflashCmds;  // of the row; an empty entry ends each
    bool bUSBLink = false;                                   // the board's port goes with its power
    bool tellsWholeDegrees = false;                          // the antenna counts its position in whole degrees
    bool bSkipParams = false;                                // parameters are neither saved nor restored
    PlanAnswers answers;                                     // that it was made with
    std::optional<ModelList> asksModel{};                    // the list that the user has to be asked about
    bool offersLibrary = false;                              // and whether the satellite library is to be offered

    /// The board is in the table.
    bool IsKnown() const { return !row.AntennaName.empty(); }
};
