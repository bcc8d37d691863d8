#pragma once
// The flash of a board with an .S19 file: its test, its boot loader, its blocks, its stages.

#include <cstdint>
#include <string>

#include "session/FlashPlan.h"

/// Which window of the board's memory takes a file's records.
enum class S19File { Software, BootLoader };

/// Tests an .S19 file record by record and lays its data over FlashImage, at the address plus `addressBias`. The boot
/// loader file doesn't erase the image first; board 21 has no image, and its file is sent as it stands. Sets
/// bFlashFileBad, and tells the first bad record: one that reaches out of what the board takes is one, unless it lies
/// wholly below that.
void CheckS19File(const std::string& fileName, std::int32_t addressBias, int boardType, S19File kind);

/// The same for the .HEX file that some Block boards take behind their .S19 file. What lies below the arguments'
/// CheckValue is passed over; the index is folded at their ImageSize on most boards.
void CheckHexImageFile(const std::string& fileName, const FileArguments& arguments, int boardType);

/// Tests all records of an .S19 file, whichever board it is for; sets bFlashFileBad.
void CheckS19Records(const std::string& fileName);

/// The part of BootUpgradeImage that is sent.
inline constexpr std::int32_t UpgradeFirst = 1024;
inline constexpr std::int32_t UpgradeEnd = 32256;

/// Tests the file of board 1's new boot loader and loads it into BootUpgradeImage; sets bFlashFileBad.
void CheckUpgradeFile(const std::string& fileName);

/// Ticks of 100 ms that the old boot loader of board 1 may take for a block of its successor.
inline constexpr short UpgradePatience = 300;

/// Gets the new boot loader ready to be sent. False, and told, when there is none.
bool SetupBootloaderUpgrade();

/// The last block or record is acknowledged.
void EndOfImage();

/// Starts the leg that fills the boot area, or the main leg, or the records of board 21: counters, first unit.
void StartBootLeg();
void StartMainLeg();
void StartRecordLeg();
