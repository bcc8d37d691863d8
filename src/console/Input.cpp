#include "console/Input.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QPointer>
#include <thread>

#include "platform/Terminal.h"

std::optional<std::string> Input::TakeLine()
{
    if (!started_) Start();
    if (lines_.empty()) return std::nullopt;
    std::string line = lines_.front();
    lines_.pop_front();
    return line;
}

/// Standard input can't be waited for together with the rest on every system, so a thread waits for it alone. It ends
/// with the program.
void Input::Start()
{
    started_ = true;
    std::thread([this] {
        for (;;) {
            const std::string bytes = ReadInput();
            QMetaObject::invokeMethod(
                this, [this, bytes] { Add(bytes); }, Qt::QueuedConnection);
            if (bytes.empty()) return;
        }
    }).detach();
}

void Input::Add(const std::string& bytes)
{
    if (bytes.empty()) ended_ = true;
    for (const char byte : bytes) {
        if (byte == '\n') {
            lines_.push_back(std::exchange(rest_, {}));
        } else if (byte != '\r') {
            rest_ += byte;
        }
    }
    if (ended_ && !rest_.empty()) lines_.push_back(std::exchange(rest_, {}));
}
