#pragma once
// What a row of the antenna table means beyond its fields: they name an antenna, and this is what is known of it.

#include <optional>
#include <string>

#include "session/FlashPlan.h"

/// How the antenna of this row differs from the others of its board, by its words or its name.
RowFacts FactsOf(const AntennaRecord& row);

/// The board type behind the words of a row; none when they don't tell it.
std::optional<int> BoardTypeOf(const AntennaRecord& row);

/// False for rows that name too little to be picked by hand: their software depends on the antenna's model, or they are
/// reached through another board. One whose loader is new and whose software is gone says nothing: only then can the
/// rows be picked that are told by their versions otherwise.
bool CanBePicked(const AntennaRecord& row, bool hasAnswered);

/// The list of antenna models on which the software of an RF board depends, and the file for a model that isn't in it.
struct ModelChoice {
    const char* nameHolds;
    ModelList list;
    const char* defaultFile;
};
/// Null for a row whose software doesn't depend on the model.
const ModelChoice* ModelChoiceOf(const AntennaRecord& row);

/// What a row says about its files, its numbers read.
struct RowFiles {
    std::string FlashFile, SecondFlashFile;  // the second one empty when the row names one file only
    FileArguments FirstFile, SecondFile;
    std::int16_t PauseTicks = 0;  // between two lines, in ticks of 10 ms; boards that take lines
};

/// Reads a row for a board of that type; an empty field is 0. Raises std::invalid_argument, std::out_of_range or
/// std::overflow_error for a number that isn't one or doesn't fit.
RowFiles ReadRow(const AntennaRecord& row, int boardType);
