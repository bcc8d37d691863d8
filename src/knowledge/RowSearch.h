#pragma once
// Which row of the antenna table fits the words that a board says of itself.

#include <string>
#include <vector>

#include "frame/SessionState.h"

/// Where a search ended: at the row that fits, or at the first row without a name, or at the last row.
struct RowFound {
    int row = 0;
    bool fits = false;
};

/// True when the equal pairs of a row word and a text word are exactly as many as the row's words; the text may hold
/// other words too, unless `sameCount` asks for as many words on both sides. A word that the text repeats counts twice,
/// so that such a text doesn't fit; that is on purpose.
bool WordsFit(const std::string& rowWords, const std::string& text, bool sameCount);

/// Looks from row `from` on. The table's last row never fits: it is the one that ends the table.
RowFound FindRow(const std::vector<AntennaRecord>& table, int from, const std::string& text, bool sameCount);
