#pragma once
// The flash files: each is read once, as a whole, when it is tested, and kept as long as its flash lasts. What is sent
// is that copy. It is walked through line by line, one line read ahead; blank lines aren't there. One is open at a
// time.

#include <memory>
#include <string>

#include "session/FlashFile.h"

inline constexpr int FILE_OPENED = 2;
inline constexpr int FILE_NOT_FOUND = 4;

/// Reads a file of the program's directory into Session.flash.files, in place of a copy that is there already, and logs
/// its size and SHA-256. FILE_OPENED or FILE_NOT_FOUND. One that is there but can't be read to its end is told to the
/// user and counts as not found.
int ReadFlashFile(const std::string& name);

/// What a file of the program's directory holds now; empty when it can't be read.
std::string FlashFileBytes(const std::string& name);

/// The copy of that name; null when there is none.
std::shared_ptr<const FlashFile> FlashFileNamed(const std::string& name);

/// Opens the copy of that name at its first line; one that was open before is closed. FILE_OPENED or FILE_NOT_FOUND.
int OpenFlashFile(const std::string& name);

void CloseFlashFile();

/// True when every line was read, blank ones behind the last one included, and when no file is open.
bool FlashFileAtEnd();

/// The next line without its line end; a failure is told and gives an empty line.
std::string GetLine();

/// The number of the line that GetLine has given last; the first line of the file is 1.
long FlashFileLine();

/// Percent of the file that was read.
int FlashFilePercent();

/// vCurrentLine becomes the next line with CR behind it. False at the end of the file, with nothing changed: the last
/// line of a file is thus never sent. In a sound file it is the end record.
bool ReadNextHexLine();
