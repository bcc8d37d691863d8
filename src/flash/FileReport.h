#pragma once
// A flash file as a whole: whether its records are sound, what they hold, and what is odd about them.

#include <string>
#include <vector>

#include "flash/FileMap.h"
#include "flash/RecordFile.h"

/// .S19 files hold S-records, all others Intel HEX.
RecordKind KindOf(const std::string& fileName);

struct FileReport {
    std::string fault;                  // "line 12: ..." or what is wrong with the whole; empty: the records are sound
    FileMap map;                        // up to the fault
    std::vector<std::string> oddities;  // what one wonders about in a sound file; mostly nothing
};

/// Reads the text of a flash file from its first line to its first fault.
FileReport ReportOn(std::string_view bytes, RecordKind kind);

/// The same of a file that was read by its records.
std::vector<std::string> Oddities(const RecordFile& records, const FileMap& map);

/// The revision of the family of `fileName` that comes ahead of it, among the files of the program's directory; empty
/// when there is none.
std::string RevisionBefore(const std::string& fileName);
