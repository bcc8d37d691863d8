#pragma once
// What the console tells, in one of three ways: to a person at a terminal, to a file or pipe, to another program.

#include <QElapsedTimer>
#include <QJsonObject>
#include <string>

enum class Style { Terminal, Plain, Json };

/// How far something is. What isn't known is below 0.
struct Progress {
    std::string what;       // "Flashing", "Checking the file"
    int percent = 0;        // 0 to 100
    long bytes = -1;        // sent so far
    double rate = -1;       // bytes a second
    double lineShare = -1;  // percent of what the line can carry
    double seconds = -1;    // so far
    double secondsLeft = -1;
};

class Voice {
public:
    explicit Voice(Style style) : style_(style) {}
    ~Voice() { EndProgress(); }
    Voice(const Voice&) = delete;
    Voice& operator=(const Voice&) = delete;

    /// Something has happened. `words` are for people, one or more lines, none: nothing is shown to them. `fields` are
    /// for programs.
    void Tell(const char* event, const std::string& words, QJsonObject fields = {});
    /// The same for what went wrong: people read it on the error stream.
    void Complain(const char* event, const std::string& words, QJsonObject fields = {});
    /// Words without a line end, behind which an answer is typed.
    void Ask(const std::string& words, QJsonObject fields);
    /// No answer came.
    void EndLine();
    /// The one line that changes.
    void Show(const Progress& progress);
    void EndProgress();

private:
    void Print(std::FILE* stream, const std::string& words);
    void ClearLine();

    const Style style_;
    std::string line_;  // on the terminal, without a line end
    QElapsedTimer sinceShown_;
    Progress last_;  // that was shown
};
