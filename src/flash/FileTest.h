#pragma once
// What the tests of all flash files have in common: the walk through the records, the progress, and the words for the
// first bad one. What becomes of the data is each test's own.

#include <functional>
#include <string>

#include "flash/FileMap.h"
#include "flash/RecordFile.h"

struct FileTest {
    std::string fileName;
    RecordKind kind = RecordKind::S;
    bool colonInLog = true;  // "at record: 12" and no line end, or "at record 12"
    /// Takes the data of a record; raises std::invalid_argument or std::out_of_range that says why it can't.
    std::function<void(const DataRecord& record)> take = [](const DataRecord&) {};
    /// What is wrong with the file as a whole, once its records have passed; empty when nothing is.
    std::function<std::string()> wholeFault = [] { return std::string(); };
    /// The share of the memory that is filled is compared with that of the revision before.
    bool comparesShare = false;
    /// The memory that the file is for: how many bytes it has, and how many of them are filled; without them it is what
    /// the revision before spans.
    std::int64_t window = 0;
    std::function<std::int64_t(const FileMap& map)> filled{};
};

/// Reads a file of the program's directory and runs a test over it; sets bFlashFileBad when it fails or the file can't
/// be read, and adds what is odd about it to Session.flash.warnings.
void RunFileTest(const FileTest& test);

/// Tests all files of the plan: those of every stage, the second one, the boot area's and the boot loader upgrade.
/// False at the first one that is missing or can't be sent, and when the user doesn't want an odd one; that has been
/// told.
bool FlashFilesAreSound();

/// The title of the box that asks whether odd files are to be flashed.
inline constexpr const char* ODD_FILES_TITLE = "QEL Burnline Assistant - Flash File Warning";
