#pragma once
// A row of the antenna table becomes the plan of a flash.

#include <cstdint>
#include <string>

#include "frame/SessionState.h"

/// What a row says about its files, its numbers read.
struct BoardRow {
    std::string FlashFile, SecondFlashFile;  // the second one empty when the row names one file only
    FileArguments FirstFile, SecondFile;
    std::int16_t PauseTicks = 0;  // between two lines, in ticks of 10 ms; boards that take lines
};

/// Reads a row for a board of that type; an empty field is 0. Raises std::invalid_argument, std::out_of_range or
/// std::overflow_error for a number that isn't one or doesn't fit.
BoardRow ReadRow(const AntennaRecord& row, int boardType);

/// Takes a row for the board in hand: sign-on, program command, files, pause and both command lists. Raises what
/// ReadRow raises; then nothing of the row is taken.
void TakeRow(const AntennaRecord& row);
