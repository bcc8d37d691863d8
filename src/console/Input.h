#pragma once
// Lines that are typed, or piped in.

#include <QObject>
#include <deque>
#include <memory>
#include <optional>
#include <string>

class Input : public QObject {
public:
    /// The next line, without its end; none as long as there is none. Standard input isn't touched before the first
    /// call.
    std::optional<std::string> TakeLine();
    /// Nothing more will come.
    bool AtEnd() const { return ended_ && lines_.empty(); }

private:
    void Start();
    void Add(const std::string& bytes);

    bool started_ = false;
    bool ended_ = false;
    std::string rest_;
    std::deque<std::string> lines_;
};
