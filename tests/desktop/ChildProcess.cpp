#include "tests/desktop/ChildProcess.h"

#include <signal.h>
#include <sys/prctl.h>

#include <QElapsedTimer>
#include <stdexcept>

ChildProcess::~ChildProcess() { Kill(); }

void ChildProcess::Start(const QString& program, const QStringList& arguments)
{
    process_.setChildProcessModifier([this] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);  // also when the test itself is killed
        if (prepare) prepare();
    });
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(program, arguments);
    if (!process_.waitForStarted()) throw std::runtime_error("can't start " + program.toStdString());
}

void ChildProcess::Write(const std::string& line)
{
    process_.write((line + "\n").c_str());
    process_.waitForBytesWritten();
}

std::optional<std::string> ChildProcess::ReadLine(int ms)
{
    QElapsedTimer waited;
    waited.start();
    while (!process_.canReadLine()) {
        const qint64 left = ms - waited.elapsed();
        if (left <= 0 || !process_.waitForReadyRead(static_cast<int>(left))) return std::nullopt;
    }
    return process_.readLine().trimmed().toStdString();
}

bool ChildProcess::EndsWithin(int ms) { return !IsRunning() || process_.waitForFinished(ms); }

void ChildProcess::Kill()
{
    if (!IsRunning()) return;
    process_.kill();
    process_.waitForFinished();
}
