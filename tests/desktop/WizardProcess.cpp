#include "tests/desktop/WizardProcess.h"

#include <unistd.h>

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>
#include <sstream>
#include <stdexcept>

#include "tests/desktop/ProgramHome.h"

namespace {

constexpr unsigned long lookAgainMs = 20;

}  // namespace

WizardProcess::WizardProcess(const std::filesystem::path& home, std::function<void()> prepare,
                             const std::filesystem::path& program)
{
    child_.prepare = std::move(prepare);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("BURNLINE_HOME", QString::fromStdString(home.string()));
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("QT_QPA_GENERIC_PLUGINS", "user");
    environment.insert("QT_PLUGIN_PATH", USER_PLUGINS);
    child_.Process().setProcessEnvironment(environment);
    child_.Start(QString::fromStdString(program.string()), {});
}

QJsonObject WizardProcess::Ask(const std::string& command)
{
    constexpr int longestTurnMs = 20000;
    child_.Write(command);
    const auto answer = child_.ReadLine(longestTurnMs);
    if (!answer)
        throw std::runtime_error("\"" + command + "\": the program " + (child_.IsRunning() ? "hangs" : "has ended"));
    return QJsonDocument::fromJson(QByteArray::fromStdString(*answer)).object();
}

Seen WizardProcess::See(const std::string& name)
{
    const QJsonObject seen = Ask("see " + name);
    return {!seen.contains("problem"),
            seen["visible"].toBool(),
            seen["enabled"].toBool(),
            seen["checked"].toBool(),
            seen["text"].toString().toStdString(),
            seen["tip"].toString().toStdString(),
            seen["entries"].toString().toStdString()};
}

void WizardProcess::Do(const std::string& command, double seconds)
{
    QString problem;
    const auto done = [&] {
        problem = Ask(command)["problem"].toString();
        return problem.isEmpty();
    };
    try {
        WaitUntil(command, done, seconds);
    } catch (const std::runtime_error& failure) {
        throw std::runtime_error(failure.what() + std::string(": ") + problem.toStdString());
    }
}

void WizardProcess::Click(const std::string& name, double seconds) { Do("click " + name, seconds); }

void WizardProcess::Choose(const std::string& name, const std::string& entry)
{
    Do("choose " + name + " " + entry, 10);
}

void WizardProcess::Focus(const std::string& name) { Do("focus " + name, 10); }

void WizardProcess::Type(const std::string& text) { Do("type " + text, 10); }

void WizardProcess::PressKey(const std::string& name) { Do("key " + name, 10); }

void WizardProcess::Close() { Do("close", 10); }

int WizardProcess::PaintsOf(const std::string& name) { return Ask("paints " + name)["text"].toString().toInt(); }

void WizardProcess::WaitUntil(const std::string& what, const std::function<bool()>& holds, double seconds)
{
    QElapsedTimer waited;
    waited.start();
    while (!holds()) {
        if (static_cast<double>(waited.elapsed()) > seconds * 1000) {
            const Seen box = See("msgBox");
            throw std::runtime_error("in vain: " + what + (box.visible ? "; there is a box: " + box.text : ""));
        }
        QThread::msleep(lookAgainMs);
    }
}

void WizardProcess::WaitForText(const std::string& name, const std::string& words, double seconds)
{
    WaitUntil(
        name + " says \"" + words + "\"", [&] { return See(name).Says(words); }, seconds);
}

void WizardProcess::AnswerBox(const std::string& words, const std::string& button, double seconds)
{
    WaitForText("msgBox", words, seconds);
    Click("msgBox/" + button);
}

void WizardProcess::AnswerFileDialog(const std::filesystem::path& path)
{
    WaitUntil("a file is asked for", [&] { return See("fileDialog").visible; });
    if (path.empty()) return Click("fileDialog/Cancel");
    Focus("fileNameEdit");
    Type(path.string());
    WaitUntil("the path is typed", [&] { return See("fileNameEdit").text == path.string(); });
    PressKey("Return");
    WaitUntil("the dialog is answered", [&] { return !See("fileDialog").visible; });
}

double WizardProcess::ProcessorSeconds()
{
    const std::string stat = ReadAll("/proc/" + std::to_string(child_.Process().processId()) + "/stat");
    std::istringstream fields(stat.substr(stat.rfind(')') + 1));
    std::string field;
    for (int skipped = 0; skipped < 11; ++skipped) fields >> field;
    double user = 0, system = 0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

long WizardProcess::MemoryKB()
{
    std::istringstream status(ReadAll("/proc/" + std::to_string(child_.Process().processId()) + "/status"));
    long kilobytes = 0;
    for (std::string word; status >> word;)
        if (word == "VmRSS:") status >> kilobytes;
    return kilobytes;
}
