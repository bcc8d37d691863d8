#pragma once
// The antenna's power, switched by a command of the bench.

#include <QProcess>
#include <string>

class PowerSupply {
public:
    /// An empty command: there is nothing to switch with.
    explicit PowerSupply(std::string command) : command_(std::move(command)) {}
    ~PowerSupply();

    bool IsThere() const { return !command_.empty(); }
    const std::string& Command() const { return command_; }

    /// Starts the command; events go on meanwhile.
    void Cycle();
    bool IsSwitching() const { return process_.state() != QProcess::NotRunning; }
    /// What went wrong with the last run; empty when nothing did.
    std::string Problem() const;

private:
    const std::string command_;
    QProcess process_;
};
