#pragma once
// BNL.LOG, the story of this run, BNLBAK.LOG, that of the run before, and BNLUPDATES.HTM, the history of updates.

#include <string>

/// Keeps the former log as BNLBAK.LOG and opens a new BNL.LOG. A log that can't be opened is told; the program goes on.
void OpenLog();
bool IsLogOpen();
void CloseLog();

/// Adds text to BNL.LOG as it stands, complete on the disk's side when the call returns; an empty one writes nothing.
void WriteLog(const std::string& words);

/// The same with CR LF behind it.
void WriteLogLine(const std::string& words);

/// Closes BNL.LOG and copies it to a file of the user's choice. False when the copy failed.
bool CloseLogAndCopyTo(const std::string& path);

/// BNLUPDATES.HTM: opened for adding lines, one line added with its line end, closed.
void OpenUpdatesLog();
bool IsUpdatesLogOpen();
void WriteUpdatesLog(const std::string& line);
void CloseUpdatesLog();
