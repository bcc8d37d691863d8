#include "console/Choices.h"

#include <QJsonArray>

#include "text/Text.h"

namespace {

QString Words(const std::string& words) { return QString::fromStdString(words); }

QJsonObject Fields(const std::vector<std::string>& answers, int standard)
{
    QJsonArray list;
    for (const std::string& answer : answers) list.append(Words(answer));
    QJsonObject fields{{"choices", list}};
    if (standard >= 0) fields["default"] = list[standard];
    return fields;
}

/// A typed number of the list, counted from 1; -1 when it isn't one.
int NumberTyped(const std::string& line, std::size_t count)
{
    bool isNumber = false;
    const int number = Words(line).toInt(&isNumber);
    return isNumber && number >= 1 && number <= static_cast<int>(count) ? number - 1 : -1;
}

}  // namespace

int EntryMeant(const std::string& words, const std::vector<std::string>& entries)
{
    int holding = -1;
    for (std::size_t at = 0; at < entries.size(); ++at) {
        if (text::Equal(text::Trim(entries[at]), text::Trim(words))) return static_cast<int>(at);
        if (!text::Holds(entries[at], words)) continue;
        holding = holding == -1 ? static_cast<int>(at) : -2;
    }
    return holding;
}

// Its thread waits for standard input until the program ends, and may outlive everything else; so it isn't destroyed.
Choices::Choices(Voice& voice, std::function<void()> wait, std::function<bool()> over)
    : voice_(voice), wait_(std::move(wait)), over_(std::move(over)), input_(*new Input)
{
}

bool Choices::ReadAnswer(std::string& line)
{
    for (;;) {
        if (over_()) break;
        if (const auto typed = input_.TakeLine()) {
            line = text::Trim(*typed);
            return true;
        }
        if (input_.AtEnd()) break;
        wait_();
    }
    voice_.EndLine();
    return false;
}

int Choices::Pick(const std::string& question, const std::vector<Choice>& choices, int standard)
{
    std::vector<std::string> answers;
    std::string shown;
    for (std::size_t at = 0; at < choices.size(); ++at) {
        answers.push_back(choices[at].words);
        const std::string key = static_cast<int>(at) == standard
                                    ? QString(Words(choices[at].key)).toUpper().toStdString()
                                    : choices[at].key;
        shown += (shown.empty() ? "" : ", ") + choices[at].words + " (" + key + ")";
    }
    std::string line;
    for (;;) {
        voice_.Ask((question.empty() ? "" : question + " ") + shown + "?", Fields(answers, standard));
        if (!ReadAnswer(line)) return -1;
        if (line.empty() && standard >= 0) return standard;
        for (std::size_t at = 0; at < choices.size(); ++at)
            if (text::Equal(line, choices[at].key) || text::Equal(line, choices[at].words)) return static_cast<int>(at);
    }
}

int Choices::PickFromList(const std::string& question, const std::vector<std::string>& entries, int standard)
{
    std::string list;
    for (std::size_t at = 0; at < entries.size(); ++at)
        list += (at + 1 < 10 ? "  " : " ") + std::to_string(at + 1) + "  " + entries[at] + "\n";
    const std::string hint = standard >= 0 ? " [" + std::to_string(standard + 1) + "]" : "";
    std::string line;
    for (bool first = true;; first = false) {
        voice_.Ask((first ? list : std::string()) + question + hint + ":", Fields(entries, standard));
        if (!ReadAnswer(line)) return -1;
        if (line.empty() && standard >= 0) return standard;
        const int typed = NumberTyped(line, entries.size());
        if (typed >= 0) return typed;
        const int meant = line.empty() ? -1 : EntryMeant(line, entries);
        if (meant >= 0) return meant;
        if (!line.empty())
            voice_.Complain("refused", meant == -2 ? "More than one entry holds \"" + line + "\"."
                                                   : "There is no entry \"" + line + "\".");
    }
}

std::string Choices::AskForText(const std::string& question, const std::string& standard)
{
    std::string line;
    voice_.Ask(question + " [" + standard + "]:", Fields({}, -1));
    return ReadAnswer(line) && !line.empty() ? line : standard;
}
