#pragma once
// The flash of a board with an .S19 file: its test, its boot loader, its blocks, its stages.

#include <cstdint>
#include <string>

/// Tests an .S19 file record by record and lays its data over FlashImage (`fillFirstImage`) or FlashImageVerify. Only
/// data records inside the board's address window count; their index is the address plus `addressBias`. The boot loader
/// file doesn't erase the image first; board 21 has no image. Sets bFlashFileBad, and tells the first bad record.
void CheckS19File(const std::string& fileName, std::int32_t addressBias, bool fillFirstImage, bool showProgress);

/// The same for the .HEX file that some Block boards take behind their .S19 file. Bytes under `lowestAddress` are
/// passed over; the index is folded at `imageLength` bytes on most boards.
void CheckHexImageFile(const std::string& fileName, std::int32_t imageLength, std::int32_t addressBias,
                       std::int32_t lowestAddress, bool fillFirstImage, bool showProgress);

/// Tests all records of an .S19 file, whichever board it is for; sets bFlashFileBad.
void CheckS19Records(const std::string& fileName);

/// Loads the new boot loader of board 1 into BootUpgradeImage. False, and told, when its file is missing or can't be
/// used.
bool SetupBootloaderUpgrade();

/// vCurrentLine becomes the next 64 bytes of the image, or the next record of board 21's file.
void PrepareNextBlock();

/// The next record of board 21's file.
void PrepareNextRecord();

/// The last block or record is acknowledged.
void EndOfImage();

/// Starts the leg that fills the boot area, or the main leg, or the records of board 21: counters, first unit.
void StartBootLeg();
void StartMainLeg();

/// The plan of board 21's second and third stage: command and newest file.
void InitRF7FPGAFlash();
void InitBAPIFlash();
