#pragma once
// A program that a test starts, talks to over standard input and output, and ends. It never outlives the test.

#include <QProcess>
#include <functional>
#include <string>

class ChildProcess {
public:
    /// Ends what still runs.
    ~ChildProcess();

    QProcess& Process() { return process_; }
    void Start(const QString& program, const QStringList& arguments);
    void Write(const std::string& line);

    /// The next whole line of output; waits for it until `ms` have passed, then gives nothing.
    std::optional<std::string> ReadLine(int ms);

    bool IsRunning() const { return process_.state() != QProcess::NotRunning; }
    /// True when the program has ended by itself in that time.
    bool EndsWithin(int ms);
    /// kill -9.
    void Kill();

    /// What the child does between fork and exec.
    std::function<void()> prepare;

private:
    QProcess process_;
};
