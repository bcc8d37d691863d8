// burnline-flash: the same flash without a window, for a bench or a machine without a display.

#include <QCoreApplication>
#include <QMetaObject>

#include "console/ConsoleComputer.h"
#include "console/Lists.h"
#include "console/Operator.h"
#include "loop/StartUp.h"
#include "platform/SerialControl.h"

namespace {

Style StyleOf(const Options& options)
{
    if (options.json) return Style::Json;
    return OutputIsTerminal() ? Style::Terminal : Style::Plain;
}

int RunTask(const Options& options, ConsoleComputer& console, Ports& ports, Voice& voice)
{
    switch (options.task) {
    case Task::ListPorts: return ListPorts(console, voice);
    case Task::ListBoards: return ListBoards(voice);
    case Task::ListAntennas: return ListAntennas(options, voice);
    case Task::Check: return CheckFile(options, console, voice);
    case Task::Flash:
    case Task::Identify: break;
    }
    Operator hands(options, console, ports, voice);
    bool prepared = false;
    console.work = [&hands] { hands.Work(); };
    console.watch = [&hands] { hands.Watch(); };
    Main([&] {
        prepared = true;
        hands.Prepare();
    });
    const int stage = prepared || console.AnotherOneWorks() ? hands.CodeOfStage() : static_cast<int>(END_USAGE);
    const int code = console.Settled().value_or(stage);
    voice.EndProgress();
    std::string words = WordsOf(code);
    // What a cancelled session leaves behind.
    const bool stopped = code == END_CANCELLED || code == END_INTERRUPTED;
    const bool flashed = stage == END_FLASH_FAILED || stage == END_PARAMS_OUT;
    if (stopped && flashed && hands.HasErased()) words += " " + WordsOf(stage);
    if (code == END_FLASH_FAILED && !hands.HasErased())
        words = "The flash did not start: the antenna has not entered its boot loader. Nothing was erased.";
    if (code == END_DONE)
        voice.Tell("end", words, {{"exitCode", code}});
    else
        voice.Complain("end", words, {{"exitCode", code}});
    return code;
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"Burnline"_qs);  // it shares the directory of the program with windows
    QCoreApplication::setApplicationVersion(QStringLiteral(BURNLINE_REVISION));
    const Options options = ReadOptions();
    Voice voice(StyleOf(options));
    CaughtFailure caught;
    const std::string directory = FindProgramDirectory(options.directory);
    const auto ports = MakePorts(directory);
    const auto link = MakeSerialLink([&ports](int port) { return ports->DeviceOf(port); });
    ConsoleComputer console(options, directory, caught, *ports, *link, voice);
    computer = &console;
    MSComm1 = &link->Control();
    // The watch ends with the process, and so does what its thread posts to.
    auto* inbox = new QObject;
    WatchEndRequests([inbox, &console](EndRequest request) {
        QMetaObject::invokeMethod(
            inbox, [&console, request] { console.OnEndRequest(request); }, Qt::QueuedConnection);
    });
    return RunTask(options, console, *ports, voice);
}
