#pragma once
// The open flash file: opened, read line by line, one line read ahead. There is one at a time.

#include <string>

inline constexpr int FILE_OPENED = 2;
inline constexpr int FILE_NOT_FOUND = 4;

/// Opens a file of the program's directory for reading from its first line; one that was open before is closed.
/// FILE_OPENED or FILE_NOT_FOUND. A file that is there but can't be read is told to the user and counts as not found.
int OpenFlashFile(const std::string& name);

void CloseFlashFile();

/// True when every line was read, and when no file is open.
bool FlashFileAtEnd();

/// The next line without its line end; a failure is told and gives an empty line.
std::string GetLine();

/// Percent of the file that was read.
int FlashFilePercent();

/// vCurrentLine becomes the next line with CR behind it; a short continuation is folded into the line before it. False
/// at the end of the file, with nothing changed: the last line of a file is thus never sent. In a sound file it is the
/// end record.
bool ReadNextHexLine();
