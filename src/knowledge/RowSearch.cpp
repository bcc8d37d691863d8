#include "knowledge/RowSearch.h"

#include "text/Text.h"

bool WordsFit(const std::string& rowWords, const std::string& text, bool sameCount)
{
    if (text::Trim(rowWords).empty()) return false;
    const std::vector<std::string> wanted = text::Split(rowWords, " ");
    const std::vector<std::string> said = text::Split(text, " ");
    if (sameCount && wanted.size() != said.size()) return false;
    std::size_t pairs = 0;
    for (const std::string& word : wanted)
        for (const std::string& other : said)
            if (text::Equal(word, other)) ++pairs;
    return pairs == wanted.size();
}

RowFound FindRow(const std::vector<AntennaRecord>& table, const std::string& text, bool sameCount)
{
    RowFound found;
    for (const AntennaRecord& row : table) {
        if (row.AntennaName.empty()) break;
        found.fits = WordsFit(row.BoardIdWords, text, sameCount);
        if (found.fits) break;
        ++found.row;
    }
    return found;
}
