#pragma once
// Questions with a few answers, and who answers them: a person, the command line, or a rule for when nobody is there.

#include <functional>
#include <string>
#include <vector>

#include "console/Input.h"
#include "console/Options.h"
#include "console/Voice.h"

/// What one of the answers is and what the user types for it.
struct Choice {
    std::string words;  // "Retry"
    std::string key;    // "r"
};

class Choices {
public:
    /// `wait` lets events happen; `over` tells that no answer is needed any more.
    Choices(Voice& voice, std::function<void()> wait, std::function<bool()> over);

    /// The index of the chosen answer; -1 when nothing more can be typed, or none is needed any more. An empty line
    /// takes `standard`.
    int Pick(const std::string& question, const std::vector<Choice>& choices, int standard);

    /// As Pick, from a numbered list: the answer is a number, or an entry's text, or the beginning of it that only this
    /// entry has.
    int PickFromList(const std::string& question, const std::vector<std::string>& entries, int standard);

    /// A line of text; `standard` when it is empty or nothing more can be typed.
    std::string AskForText(const std::string& question, const std::string& standard);

private:
    /// A typed line; false when there will be none.
    bool ReadAnswer(std::string& line);

    Voice& voice_;
    const std::function<void()> wait_;
    const std::function<bool()> over_;
    Input& input_;
};

/// Which of the entries is meant, in any case: the equal one, else the only one that holds the words. -1: none; -2:
/// more than one.
int EntryMeant(const std::string& words, const std::vector<std::string>& entries);
