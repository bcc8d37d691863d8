#pragma once
// FLASHCFG.TXT as a value: which boards exist, which file belongs on each, what runs before and after its flash.

#include <optional>
#include <string>
#include <vector>

#include "platform/Failure.h"

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

/// What the file says of the boards of one kind: those that take lines, or those that take an .S19 file.
struct GroupConfig {
    std::vector<AntennaRecord> AntennaTable;                     // a row without a name ends it
    std::vector<std::string> sCommonPreflash, sCommonPostflash;  // an empty entry ends each
    std::optional<Failure> problem{};                            // why the rows behind the last one weren't read
};

struct FlashConfig {
    GroupConfig Main, RF;
    std::string sSignOn, sNewRFSignOn, sNewRFFlashOK, sNewRFChecksum;
    std::string sBootloaderUpgradeFile, sNewRFBootloaderFile, sRFOrMotorBootloaderFile, sRF6BootloaderFile;
    std::string sDeluxeUSBBootloaderFile, sRF5CompatibleMainFile;
    std::vector<CompatEntry> CompatLandMobileRF, CompatLandMobileRF6, CompatMarineRF6;
    std::vector<CompatEntry> CompatLandMobileRF6A, CompatMarineRF6A, CompatMarineRF7;
};
