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

RowFound FindRow(const std::vector<AntennaRecord>& table, int from, const std::string& text, bool sameCount)
{
    const int last = static_cast<int>(table.size()) - 1;
    int row = from;
    for (; row >= 0 && row < last; ++row) {
        const AntennaRecord& candidate = table[static_cast<std::size_t>(row)];
        if (candidate.AntennaName.empty()) break;
        if (WordsFit(candidate.BoardIdWords, text, sameCount)) return {row, true};
    }
    return {row, false};
}
