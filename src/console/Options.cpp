#include "console/Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

namespace {

struct Meaning {
    int code;
    const char* words;
};

constexpr Meaning meanings[] = {
    {END_DONE, "Done."},
    {END_USAGE, "The command line or the program's directory can't be used."},
    {END_NO_PORT, "There is no port to work with. Check the adapter and --port; --list-ports shows what there is."},
    {END_NOT_KNOWN, "The antenna's versions were not read, or its board is not known. Check power, cable and --board."},
    {END_BAD_FILE,
     "A file is missing, corrupt or odd. Nothing was sent to the antenna; check for updates, give another --file, or "
     "take an odd one with --accept-warnings."},
    {END_PARAMS_UNREAD,
     "The antenna's parameters were not read. Nothing was erased; check cable and power, then start again."},
    {END_FLASH_FAILED,
     "The flash failed. The antenna waits in its boot loader and is inoperative until it is flashed again."},
    {END_PARAMS_OUT,
     "The antenna has its new software, but not all of its parameters. BNL.LOG holds what was read from it."},
    {END_CANCELLED, "Cancelled."},
    {END_INTERRUPTED, "Interrupted."},
};

std::string ExitCodes()
{
    std::string words = "Exit codes:\n";
    for (const Meaning& meaning : meanings)
        words += "  " + std::string(meaning.code < 10 ? "  " : "") + std::to_string(meaning.code) + "  " +
                 meaning.words + "\n";
    return words;
}

[[noreturn]] void Refuse(const QString& words)
{
    std::fprintf(stderr, "burnline-flash: %s\nburnline-flash --help tells what can be asked for.\n", qPrintable(words));
    std::exit(END_USAGE);
}

/// The parser's own way opens a message box on Windows where no console is.
[[noreturn]] void Print(const QString& words)
{
    std::fputs(qPrintable(words), stdout);
    std::exit(END_DONE);
}

struct TaskOption {
    const char* name;
    Task task;
};
constexpr TaskOption taskOptions[] = {{"identify", Task::Identify},
                                      {"check", Task::Check},
                                      {"list-ports", Task::ListPorts},
                                      {"list-boards", Task::ListBoards},
                                      {"list-antennas", Task::ListAntennas}};

void Describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QString::fromStdString(
        "Updates the software inside an Orbimaster satellite-television antenna and its companion boards over a serial "
        "port.\nWhat no option tells is asked.\n\n" +
        ExitCodes()));
    parser.addOptions({
        {"directory", "The program's directory: settings, log, FLASHCFG.TXT and flash files.", "DIR"},
        {"port", "The antenna's serial port.", "COM3|DEVICE"},
        {"board", "The board to flash, by its name or its type; see --list-boards.", "NAME|TYPE"},
        {"file", "Another flash file than the newest of the board.", "FILE"},
        {"antenna",
         "The antenna, when it doesn't tell its versions; see --list-antennas. Its parameters then aren't restored.",
         "NAME"},
        {"model", "The antenna's model, where its software depends on it; \"none\" when it isn't listed.", "NAME"},
        {"skip-parameters", "Neither read nor restore the antenna's parameters."},
        {"usb", "The board is connected by its own USB port."},
        {"power-cycle", "A command that switches the antenna's power off and on again.", "COMMAND"},
        {"yes", "Ask nothing: nobody is there to answer."},
        {"accept-warnings", "Take a flash file although its test finds it odd."},
        {"log", "Keep a copy of BNL.LOG there.", "FILE"},
        {"json", "Tell everything as JSON, one object a line."},
        {"list-ports", "List the serial ports."},
        {"list-boards", "List the boards."},
        {"list-antennas", "List the antennas of FLASHCFG.TXT; with --board those of that kind of board."},
        {"check", "Test a flash file, and do nothing else.", "FILE"},
        {"identify", "Read the antenna's versions, and do nothing else."},
    });
    parser.addHelpOption();
    parser.addVersionOption();
}

}  // namespace

std::string WordsOf(int exitCode)
{
    for (const Meaning& meaning : meanings)
        if (meaning.code == exitCode) return meaning.words;
    return {};
}

Options ReadOptions()
{
    QCommandLineParser parser;
    Describe(parser);
    if (!parser.parse(QCoreApplication::arguments())) Refuse(parser.errorText());
    if (parser.isSet("version")) Print(QCoreApplication::applicationName() + " " + BURNLINE_REVISION + "\n");
    if (parser.isSet("help")) Print(parser.helpText());
    if (!parser.positionalArguments().isEmpty())
        Refuse("\"" + parser.positionalArguments().front() + "\" belongs to no option.");

    Options options;
    const struct {
        const char* name;
        std::string& value;
    } values[] = {{"directory", options.directory},
                  {"port", options.port},
                  {"board", options.board},
                  {"file", options.file},
                  {"antenna", options.antenna},
                  {"model", options.model},
                  {"power-cycle", options.powerCycle},
                  {"log", options.log},
                  {"check", options.file}};
    for (const auto& [name, value] : values) {
        if (!parser.isSet(name)) continue;
        value = parser.value(name).toStdString();
        if (value.empty()) Refuse("--" + QString(name) + " wants a value.");
    }
    options.skipParameters = parser.isSet("skip-parameters");
    options.usb = parser.isSet("usb");
    options.yes = parser.isSet("yes");
    options.acceptWarnings = parser.isSet("accept-warnings");
    options.json = parser.isSet("json");

    int tasks = 0;
    for (const TaskOption& option : taskOptions) {
        if (!parser.isSet(option.name)) continue;
        options.task = option.task;
        if (++tasks > 1) Refuse("--" + QString(option.name) + " can't be asked for with another task.");
    }
    if (options.task == Task::Check && parser.isSet("file"))
        Refuse("--check names the file; --file has no place beside it.");
    if (!options.directory.empty() && !QFileInfo(QString::fromStdString(options.directory)).isDir())
        Refuse("There is no directory " + QString::fromStdString(options.directory) + ".");
    return options;
}
