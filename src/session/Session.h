#pragma once
// The one antenna session: there is one antenna, one link and one flash at a time, and this is all that its procedures
// share. The tick machine and the reply dispatcher talk to each other through these variables alone.
//
// Each variable stands in the struct that says how long it is true, and each struct begins anew by one assignment, in
// the place that its comment names. Nothing else is ever reset.

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "session/FlashConfig.h"
#include "session/FlashFile.h"
#include "session/FlashPlan.h"

// What the link is doing; the mode of iCommMode.
enum CommMode : std::int16_t {
    STATE_NONE = 0,
    STATE_WAIT_RESET = 1,
    STATE_WAIT_ERASE = 2,
    STATE_SEND_BLOCKS = 3,
    STATE_SEND_LINES = 4,
    STATE_FLASH_FAILED = 5,
    STATE_SHUTDOWN = 6,
    STATE_GET_VERSIONS = 7,
    STATE_IDLE = 8,
    STATE_POSTFLASH = 9,
    STATE_READ_BACK = 10,
    STATE_PREFLASH = 11,
    STATE_RF_BOOT_BLOCKS = 12,
    STATE_BOOT_UPGRADE = 13,
    STATE_SAT_LIST_A = 14,
    STATE_SAT_LIST_B = 15,
    STATE_SCRIPT = 16,
    STATE_WAIT_PORT_BACK = 17,
    STATE_BAUD_SELECT = 18,
    STATE_SEND_RF7 = 19,
    STATE_FPGA_REV = 20,
    STATE_BAPI_REV = 21,
};

// The steps of the wizard; a step is also the index of its frame.
inline constexpr int STEP_DIAGNOSTICS = 0;
inline constexpr int STEP_INTRO = 1;
inline constexpr int STEP_1 = 2;
inline constexpr int STEP_2 = 3;
inline constexpr int STEP_3 = 4;
inline constexpr int STEP_4 = 5;
inline constexpr int STEP_5 = 6;
inline constexpr int STEP_6 = 7;
inline constexpr int STEP_FINISHED = 8;

// States of a flash, in iFlashPhase.
inline constexpr int FLASH_RUNNING = 1;
inline constexpr int FLASH_FINISHED = 2;
inline constexpr int FLASH_FAILED = 4;

/// An image of a board's memory; the last index is 131072.
using BoardImage = std::array<std::uint8_t, 131073>;
using BootImage = std::array<std::uint8_t, 32769>;

/// A value that is replaced as a whole and never altered.
template <class T>
class Settled {
public:
    Settled& operator=(T value)
    {
        value_ = std::move(value);
        return *this;
    }
    const T& operator*() const { return value_; }
    const T* operator->() const { return &value_; }

private:
    T value_;
};

/// This run of the program. Begins in InitSessionVars.
struct Program {
    bool bTickPending = false;  // Timer1 asks for a tick
    bool bExitRequested = false;
    bool bUpdateCheckRunning = false;  // the check that nobody asked for, at the start
    std::string sSavedLogName;         // where the user wants a copy of the log at exit
};

/// The port has gone under the program, see link/PortAway.
struct PortAway {
    std::string since;    // local time
    std::string adapter;  // its name
    double from = 0;      // seconds of Computer::Seconds
    double lookedAt = 0;  // likewise: when it was last looked for
    bool silent = false;  // it was bound to go with the antenna's power
    bool cancel = true;   // the buttons and the COM menu as they are to be when it is back
    bool next = false;
    bool menu = true;
};

/// The port and the mode. Begins in InitSessionVars: an adapter that comes and goes doesn't end what is under way.
struct Link {
    std::int16_t iCommMode = STATE_IDLE;
    std::int16_t iWaitTicks = 2;   // countdown in ticks of 100 ms; 0: nothing is armed
    std::int16_t iDelayTicks = 0;  // countdown in ticks of 10 ms
    std::string sCmdQueueText;     // text that waits for the idle mode
    std::string sCommBuffer;       // received text, not yet consumed
    std::string sCommLine;         // the text under test
    char cLineEndSeen = 0;         // the text before ended in CR: '\n' when its LF was added already, else '\r'
    std::int16_t iCommPort = 0;    // COM number
    std::int32_t lBaudRate = 0;    // of the settings
    std::string sSettings;         // the line's speed, "9600,N,8,1"; empty: that of the settings
    std::int16_t iCommID = 0;      // above 0 while the port is open
    bool bPortOpened = false;      // it was opened in this run
    bool bPortReady = false;       // data came since the open
    std::string sAdapter;          // what is known of the adapter behind the port
    std::optional<PortAway> away;  // the port has gone
};

/// What the user said of the board. Begins in ChooseBoard: at each choice, and with each visit of STEP_3.
struct BoardChoice {
    int iBoardType = 22;             // 0 to 19, see knowledge/BoardTable; 22: nothing is chosen
    std::optional<int> pickedRow{};  // the antenna was picked by hand: its row in the table of the chosen board's group
    bool bUSBLink = false;           // the USB port option was chosen
};

/// What one antenna said of itself. Begins in ChooseBoard and in InitAntennaInfoVars: with each reading.
struct Reading {
    std::int16_t iCommonPreflashIdx = 0;  // the next query of the common list
    std::string sMainVersion, sRFVersion;
    bool bRFVersionSeen = false;                 // the RF line of the main board's reply is in hand
    bool bPCBVersionA2 = false;                  // an RF1 board
    std::optional<int> told{};                   // the type that an RF board's reply tells: 20 or 21
    std::string sFPGARev = "0", sBAPIRev = "0";  // "0": not told
    std::int16_t iFPGARevTries = 0, iBAPIRevTries = 0;
};

/// The command of a list that waits for its answer.
struct CommandInFlight {
    std::string sSent;  // empty: none
    bool bReplySeen = false;
    std::int16_t iCmdRetries = 0;  // resends
};

/// A parameter that is to be restored, as the antenna told it.
struct CapturedParameter {
    std::string sCommand;  // that read it
    std::string sLine;     // of the antenna
};

/// One antenna's parameters, as it told them ahead of its flash. Begins in StartFlash, ahead of the first stage.
struct Captured {
    std::int16_t iPreflashCmdIdx = 0;  // the next command of the plan's list
    CommandInFlight command;
    bool bAnswered = false;  // at least one of them
    std::vector<CapturedParameter> parameters;
    std::vector<std::string> notRead;      // commands of parameters that the user goes on without
    std::vector<std::string> notRestored;  // and of those that were read, and the row doesn't restore
};

/// One board with all its stages and tries. Begins in StartFlash, ahead of the first stage, and ends with a Back.
struct Flash {
    std::size_t stage = 0;  // of the plan's stages
    std::int16_t iFlashPhase = 0;
    bool bSkipParams = false;  // parameters are neither saved nor restored
    bool bFlashFileBad = false;
    bool bAtRisk = false;                                 // from the reset into the loader on, until it is whole again
    bool bErased = false;                                 // a program command went out: the antenna needs this flash
    std::vector<std::shared_ptr<const FlashFile>> files;  // as they were tested, each name once
    std::vector<std::string> warnings;                    // what their tests found odd
    std::string refusal;                                  // why one of them can't be flashed
    std::int32_t lFlashFileSize = 0;                      // bytes
    BoardImage FlashImage{};
    bool bBootloaderUpgraded = false;  // the old boot loader of board 1 was replaced, or isn't there
    BootImage BootUpgradeImage{};
    bool bRFBootDone = false;            // the board fell back from the boot area leg
    double dFlashStart = 0;              // seconds of Computer::Seconds
    double slowestAnswer = 0;            // seconds
    int iTimely = 0, iEarly = 0;         // answers behind what they are to, and ahead of its having left
    bool bLateTold = false;              // the first late answer was told
    std::int16_t iFlashAutoRetries = 0;  // silent retries of the whole flash
    bool bAutoRetryUsed = false;         // the one retry that the settings allow was used
};

/// One try to write a stage. Begins in StartFlash, and in OnSignOnReply at each sign-on.
struct Attempt {
    std::string vCurrentLine;  // the line or block in flight
    std::string sFirstLine;    // the line read ahead
    std::int32_t lBytesSent = 0;
    std::int16_t iLineRetries = 0;        // resends of this line
    std::vector<double> sentAt;           // when the line in flight was sent, each time; seconds
    std::vector<double> answeredAfter;    // how long its answers took, in the order of the sends; seconds
    int iAcknowledged = 0, iRefused = 0;  // its answers
    bool bEarly = false;                  // one came before it can have left
    bool bAtEnd = false;                  // all lines are in; the antenna is listened to for what it owes
    std::int16_t iTotalRetries = 0;       // resends of this try
    std::int32_t lFlashPos = 0;
    std::int32_t lFlashBlockPos = 0;
    std::int32_t lFlashTotalBytes = 0;
    std::int16_t bExpectedChecksum = 0;
    std::int32_t lBootBytePos = 0;
    std::int16_t iBadReplies = 0;
};

/// What the antenna tells of itself behind the last restore command.
struct ReadBack {
    int iRound = 0;           // 1: what was captured is asked; 2: once more, behind the restoring of what differed
    std::int16_t iQuery = 0;  // the next: the captured parameters in their order, then the version
    CommandInFlight command;
    bool bHeard = false;              // it said anything since the query in flight was first sent
    int iSilences = 0;                // queries in a row that it left without any answer
    std::vector<std::string> sLines;  // of the captured parameters; empty: not told
    std::string sVersion;             // empty: not told
};

/// The antenna gets its parameters back. Begins in EndOfTransfer.
struct Restore {
    bool bPortWentAway = false;     // the port went with the antenna's power
    bool bRestartSeen = false;      // the restart of the antenna was noticed
    bool bSwitchTestSeen = false;   // the line that announces the switch test was seen
    bool bAntennaInitDone = false;  // the restarted antenna has finished its start-up
    int iInitLooks = 0;             // how often the end of its start-up was looked for
    bool bPromptAsked = false;      // its start-up text may have been damaged: Enter was sent, for its prompt
    bool bWaitInitFlag = false;     // a WAIT entry is running down
    std::int16_t iCommonPostflashIdx = 0;
    std::vector<std::string> sPostflashCmds;  // the plan's list, made to restore what was captured
    std::int16_t iPostflashCmdIdx = 0;
    CommandInFlight command;
    std::vector<std::string> unconfirmed;  // commands that the antenna hasn't taken
    int iSilences = 0;                     // how many of them in a row it didn't answer at all
    std::int16_t iCalGyroTries = 0;
    bool bCalGyroPending = false;
    ReadBack readBack;
    bool bEnded = false;    // what the antenna holds was told
    bool bAllBack = false;  // the antenna holds what it held before, as far as it was to be asked
};

struct SessionState {
    Program program;
    Link link;
    Settled<FlashConfig> config;  // read by EnterStep3, so that it is what stands on the disk at each choice
    BoardChoice choice;
    Reading reading;
    Settled<FlashPlan> plan;  // made by EnterStep4, and anew when the user takes another flash file there
    Captured captured;
    Flash flash;
    Attempt attempt;
    Restore restore;
};

inline SessionState Session;

/// The values of a new session; called once, when the main form is loaded.
void InitSessionVars();

/// The received text is done with: sCommLine and sCommBuffer become empty.
void ClearCommBuffers();

/// An entry of a command list; the empty text behind its end.
const std::string& ListEntry(const std::vector<std::string>& list, int index);
