#include "console/PowerSupply.h"

#include "platform/Terminal.h"

/// A supply must not be left half switched: what was begun is waited for.
PowerSupply::~PowerSupply()
{
    constexpr int patienceMs = 60000;
    if (IsSwitching()) process_.waitForFinished(patienceMs);
}

void PowerSupply::Cycle()
{
    const std::vector<std::string> shell = ShellCommand(command_);
    QStringList arguments;
    for (std::size_t at = 1; at < shell.size(); ++at) arguments << QString::fromStdString(shell[at]);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.start(QString::fromStdString(shell.front()), arguments);
}

std::string PowerSupply::Problem() const
{
    if (process_.error() == QProcess::FailedToStart) return process_.errorString().toStdString();
    if (process_.exitStatus() != QProcess::NormalExit) return "it was ended from outside";
    return process_.exitCode() == 0 ? "" : "exit code " + std::to_string(process_.exitCode());
}
