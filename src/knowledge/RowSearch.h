#pragma once
// Which row of the antenna table fits the words that a board says of itself.

#include <string>
#include <vector>

#include "session/FlashConfig.h"

/// Where a search ended: at the row that fits, or at the first row without a name, or behind the last row.
struct RowFound {
    int row = 0;
    bool fits = false;
};

/// True when the equal pairs of a row word and a text word are exactly as many as the row's words; the text may hold
/// other words too, unless `sameCount` asks for as many words on both sides. A word that the text repeats counts twice,
/// so that such a text doesn't fit; that is on purpose.
bool WordsFit(const std::string& rowWords, const std::string& text, bool sameCount);

/// Looks through the table up to a row without a name.
RowFound FindRow(const std::vector<AntennaRecord>& table, const std::string& text, bool sameCount);
