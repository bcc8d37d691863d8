#pragma once
// What the tests of all flash files have in common: the walk through the records, the progress, and the words for the
// first bad one. What a record must be is each test's own.

#include <functional>
#include <string>

struct FileTest {
    std::string fileName;
    bool colonInLog = true;  // "at record: 12" and no line end, or "at record 12"
    /// False for a line that is no record and doesn't count.
    std::function<bool(const std::string& line)> isRecord = [](const std::string&) { return true; };
    /// Tests a record; raises std::invalid_argument or std::out_of_range that says what is wrong with it.
    std::function<void(const std::string& line)> test;
    /// What is wrong with the file as a whole, once its records have passed; empty when nothing is.
    std::function<std::string()> wholeFault = [] { return std::string(); };
};

/// Reads a file of the program's directory and runs a test over it; sets bFlashFileBad when it fails or the file can't
/// be read.
void RunFileTest(const FileTest& test);

/// Tests all files of the plan: those of every stage, the second one, the boot area's and the boot loader upgrade.
/// False at the first one that is missing or can't be sent; it has been told.
bool FlashFilesAreSound();
