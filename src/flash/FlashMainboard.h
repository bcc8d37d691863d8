#pragma once
// The flash of a board with a .HEX file: its start, its transfer, its end.

#include <string>

#include "session/FlashPlan.h"

/// Tests all files of the flash and sets the link going: the parameters are read out, or the reset is awaited. A file
/// that is missing or corrupt is told, and the link stays idle.
void StartFlash();

/// The next stage of a flash under way: its file was tested with the first one, and the user is asked for the power
/// cycle ahead of it.
void StartNextStage();

/// Without parameters to save the flash begins with the reset: some boards take it as a command, the others need the
/// user's hand. Nothing is armed, there is no hurry.
void AwaitReset();

/// The stage of the plan that is written now.
const FlashStage& StageInHand();

/// Tests a file as the one that a board is flashed with; sets bFlashFileBad when it can't be. `addressBias` is added to
/// the addresses of an .S19 file.
void CheckFlashFile(const std::string& fileName, int boardType, std::int32_t addressBias);

/// Tests a .HEX file record by record and tells the first bad one; sets bFlashFileBad.
void CheckHexFile(const std::string& fileName);

/// The words that ask for a power cycle, as a yellow banner on STEP_5.
void AskForPowerCycle(const std::string& words);

/// The banner of a transfer: what is flashed, and that the antenna must not be powered off.
std::string TransferBanner(const std::string& lineBreak);

/// Sends the line in flight as its board takes it: as it stands, or bare with one CR behind it.
void SendCurrentLine();

/// The line or record in flight is sent once more, and the flash failed when that was the last time.
void ResendLine();

/// An answer came behind the last one that was owed: the try can't be trusted.
void FailOnSurplus();

/// What the antenna doesn't hold as before, or isn't known to, with the command to enter: a line each. Empty: nothing.
std::string WhatIsNotBack();

/// What the end of a transfer says, and the ticks that are armed for the restart.
struct TransferEnd {
    const char* status;
    const char* log;
    const char* banner;
    short waitTicks;
};

/// The transfer has reached the end of the file: the user is asked for a power cycle and the restart is awaited, or the
/// session ends here when no parameters are to be restored.
void EndOfTransfer(const TransferEnd& end);
