#pragma once
// The one antenna session: there is one antenna, one link and one flash at a time, and this is all that its procedures
// share. The tick machine and the reply dispatcher talk to each other through these variables alone.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

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
    STATE_UNUSED = 10,
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

/// One antenna of the flash configuration file; numbers stay text until the row is chosen.
struct AntennaRecord {
    std::string Line;
    std::string AntennaName;   // an empty name ends the table
    std::string BoardIdWords;  // blank-separated words that identify the board in its version reply
    std::string SignOn;
    std::string FlashCmd;
    std::string FlashFiles;     // one name, or two joined by ":"
    std::string ImageSize;      // bytes
    std::string AddressOffset;  // bytes, added to each record's address
    std::string CheckValue;
    std::string Extra1;  // "DELAYXMIT n", or the second file's ImageSize
    std::string Extra2;  // the second file's AddressOffset
    std::string Extra3;  // the second file's CheckValue
    std::string Extra4;
    std::string PreflashLine;  // the whole line, keyword included
    std::string PostflashLine;
};

/// An antenna model and the flash file that it needs.
struct CompatEntry {
    std::string AntennaModel;
    std::string FlashFileName;
};

/// The three numbers that go with a flash file into its test.
struct FileArguments {
    std::int32_t ImageSize = 0;
    std::int32_t AddressOffset = 0;
    std::int32_t CheckValue = 0;
};

/// An image of a board's memory; the last index is 131072.
using BoardImage = std::array<std::uint8_t, 131073>;
using BootImage = std::array<std::uint8_t, 32769>;

struct SessionState {
    // --- the link's mode and its time ----------------------------------------------------------------------------
    std::int16_t iCommMode = STATE_NONE;
    std::int16_t iWaitTicks = 0;       // countdown in ticks of 100 ms; 0: nothing is armed
    bool bTickPending = false;         // Timer1 asks for a tick
    std::int16_t iDelayTicks = 0;      // countdown in ticks of 10 ms
    std::int16_t iLinePauseTicks = 0;  // pause between two flash lines in ticks of 10 ms
    std::string sCmdQueueText;         // text that waits for the idle mode
    bool bScriptPaused = false;        // a script goes on by one command a click
    std::string sCommBuffer;           // received text, not yet consumed
    std::string sCommLine;             // the text under test
    bool bExitRequested = false;
    bool bUpdateCheckRunning = false;
    bool bOKToClose = false;  // the user agreed to leave

    // --- the port ------------------------------------------------------------------------------------------------
    std::int16_t iCommPort = 0;  // COM number
    std::int32_t lBaudRate = 0;
    std::int16_t iCommID = 0;  // above 0 while the port is open
    bool bPortOpened = false;  // it was opened in this run
    bool bPortReady = false;   // data came since the open
    bool bUSBLink = false;     // the USB port option was chosen

    // --- which board, which antenna ------------------------------------------------------------------------------
    std::int32_t iBoardType = 0;  // 0 to 22, see knowledge/BoardTable
    std::int32_t iSavedBoardType = 0;
    std::int16_t iAntennaIdx = 0;  // row of AntennaTable in use
    std::string sMainVersion;
    std::string sRFVersion;
    bool bPCBVersionA2 = false;                  // an RF1 board
    std::string sFPGARev, sBAPIRev;              // revisions told by the antenna; "0" when it never answered
    std::string sLatestFPGARev, sLatestBAPIRev;  // revision letters of the newest files
    std::string sFPGAFileName, sBAPIFileName;
    std::string sBoardSignOn;
    std::string sFlashCmd;       // starts the board's program mode
    std::string sFlashFile;      // the first flash file
    std::string sFlashFileName;  // the second one
    FileArguments FirstFile, SecondFile;
    bool bSkipParams = false;  // parameters are neither saved nor restored in this session

    // --- progress of the flash -----------------------------------------------------------------------------------
    std::int16_t iFlashPhase = 0;
    std::int16_t iFlashFileNum = 0;   // the open flash file, 0: none
    std::int32_t lFlashFileSize = 0;  // bytes
    bool bFlashFileBad = false;
    std::string vCurrentLine;  // the line or block in flight
    std::string sFirstLine;    // the line read ahead
    std::int32_t lBytesSent = 0;
    std::int16_t iLineRetries = 0;   // resends of this line
    std::int16_t iTotalRetries = 0;  // resends of this flash
    std::int32_t lFlashPos = 0;
    std::int32_t lFlashBlockPos = 0;
    std::int32_t lFlashTotalBytes = 0;
    bool bRFBootPhase = false;  // blocks are answered by a one-byte echo
    std::int16_t bExpectedChecksum = 0;
    bool bUpgradeBootloader = false;  // the old boot loader of board 1 is to be replaced when it signs on
    bool bRFBootDone = false;         // the board fell back from the boot area leg
    std::int32_t lBootBytePos = 0;
    std::int32_t iRF7Stage = 0;  // board 21: 0 none, 1 RF board, 2 FPGA, 3 acquisition processor
    std::int32_t iRF7PrevStage = 0;
    double dFlashStart = 0;  // seconds of Computer::Seconds
    std::int16_t iCalGyroTries = 0;
    bool bCalGyroPending = false;
    bool bCalGyroOK = false;
    bool bAutoRetryUsed = false;  // the one silent retry was used

    // --- command lists: an empty entry ends each; an index names the next entry to send --------------------------
    std::vector<std::string> sCommonPreflashMain, sCommonPostflashMain, sCommonPreflashRF, sCommonPostflashRF;
    std::int16_t iCommonPreflashMainIdx = 0, iCommonPostflashMainIdx = 0;
    std::int16_t iCommonPreflashRFIdx = 0, iCommonPostflashRFIdx = 0;
    std::vector<std::string> sPreflashCmds, sPostflashCmds;
    std::int16_t iPreflashCmdIdx = 0, iPostflashCmdIdx = 0;

    // --- parameters of the antenna -------------------------------------------------------------------------------
    std::vector<std::string> sCapturedParams;  // replies before the flash, from element 1 on
    std::int16_t iCapturedParamCount = 0;
    std::string sExpectedReply;  // marks the reply of the command in flight; empty: any
    bool bReplySeen = false;
    bool bAntennaInitDone = false;  // the restarted antenna has finished its start-up
    int iInitLooks = 0;             // how often the end of its start-up was looked for
    bool bWaitInitFlag = false;     // a WAIT entry is running down
    bool bSatInstallFound = false;
    std::string sSatInstallCmd;
    std::string sFECHits1, sFECHits2;

    // --- texts of the configuration file -------------------------------------------------------------------------
    std::string sSignOn, sNewRFSignOn, sNewRFFlashOK, sNewRFChecksum;
    std::string sBootloaderUpgradeFile, sNewRFBootloaderFile, sRFOrMotorBootloaderFile, sRF6BootloaderFile;
    std::string sDeluxeUSBBootloaderFile, sRF5CompatibleMainFile;

    // --- tables and images ---------------------------------------------------------------------------------------
    std::vector<AntennaRecord> AntennaTable{1};
    bool bFlashConfigLoaded = false;
    std::vector<CompatEntry> CompatLandMobileRF, CompatLandMobileRF6, CompatMarineRF6;
    std::vector<CompatEntry> CompatLandMobileRF6A, CompatMarineRF6A, CompatMarineRF7;
    std::string sCompatFlashFile;
    bool bCompatFlashChosen = false;
    BoardImage FlashImage{}, FlashImageVerify{};
    BootImage BootUpgradeImage{};

    // --- what only one procedure uses, kept between its calls ----------------------------------------------------
    // CommHandler
    bool bStaticsReady = false;
    char cLineEndSeen = 0;         // the text before ended in CR: '\n' when its LF was added already, else '\r'
    bool bRestartSeen = false;     // the restart of the antenna was noticed
    bool bSwitchTestSeen = false;  // the line that announces the switch test was seen
    bool bRFVersionSeen = false;   // the RF line of the version reply is in hand; never cleared
    std::int16_t iBadReplies = 0;
    bool bPortErrorShown = false;  // the port failure was reported; cleared by each successful read
    bool bTrisatDone = false;      // the names of a two-satellite installation were translated
    bool bUpgradeToGLTV = false;   // "Upgrade to GLTV" was chosen: the new software knows other satellite names
    // TimerHandler
    std::int16_t iCmdRetries = 0;        // resends of the current command
    bool bPortWentAway = false;          // the port was seen gone
    std::int16_t iFlashAutoRetries = 0;  // silent retries of a whole flash
    std::int16_t iFPGARevTries = 0, iBAPIRevTries = 0;
    // ResetFlashConfig
    bool bFlashConfigWasReset = false;
    // logs
    std::string sSavedLogName;  // where the user wants a copy of the log at exit
};

inline SessionState Session;

/// The values of a new session; called once, when the main form is loaded.
void InitSessionVars();

/// The received text is done with: sCommLine and sCommBuffer become empty.
void ClearCommBuffers();

/// An entry of a command list; the empty text behind its end.
const std::string& ListEntry(const std::vector<std::string>& list, int index);
