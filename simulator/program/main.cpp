// burnline-antenna: an antenna on a pseudo-terminal, with or without a window.

#include <QApplication>
#include <QMetaObject>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include "simulator/program/AntennaLoop.h"
#include "simulator/program/AntennaWindow.h"

namespace {

struct Options {
    int board = 0;
    std::string unit;
    std::string link;
    bool window = false;
    AntennaWays ways;
    bool help = false;
};

constexpr const char* usage =
    "usage: burnline-antenna [--board N] [--unit NAME] [--link PATH] [--window] [--fast] [--quick] [--usb]\n"
    "\n"
    "An antenna on a pseudo-terminal. It reads commands from standard input and prints what happens.\n"
    "  --board N    board type (0)\n"
    "  --unit NAME  which antenna of that board type (the first)\n"
    "  --link PATH  a link to the pseudo-terminal\n"
    "  --window     shows itself\n"
    "  --fast       bytes take no time\n"
    "  --quick      start-up, erase and the boot loader's wait take a fifth of their time\n"
    "  --usb        the port goes and comes with the antenna's power\n";

/// The loop that a signal ends.
const AntennaLoop* running = nullptr;

void EndLoop(int)
{
    if (running) running->Command("quit");
}

Options ReadOptions(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        const auto value = [&]() -> std::string_view {
            if (i + 1 >= argc) throw std::runtime_error(std::string(word) + " wants a value");
            return argv[++i];
        };
        if (word == "--board") {
            const std::string_view number = value();
            const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), options.board);
            if (error != std::errc() || end != number.data() + number.size())
                throw std::runtime_error("--board wants a number");
        } else if (word == "--unit") {
            options.unit = value();
        } else if (word == "--link") {
            options.link = value();
        } else if (word == "--window") {
            options.window = true;
        } else if (word == "--fast") {
            options.ways.fast = true;
        } else if (word == "--quick") {
            options.ways.quick = true;
        } else if (word == "--usb") {
            options.ways.usb = true;
        } else if (word == "--help") {
            options.help = true;
        } else if (word.starts_with("--") || !options.window) {
            // Behind --window the toolkit has options of its own ("-platform offscreen").
            throw std::runtime_error("unknown option: " + std::string(word));
        }
    }
    return options;
}

std::string UnknownUnit(const Options& options)
{
    std::string words = "no such antenna; there are:";
    for (const sim::Unit& unit : sim::Units()) {
        words += "\n  --board " + std::to_string(unit.board) + " --unit \"" + unit.name + "\"";
    }
    return "board " + std::to_string(options.board) + " " + options.unit + ": " + words;
}

void Print(double seconds, const std::string& words)
{
    std::printf("%9.3f %s\n", seconds, words.c_str());
    std::fflush(stdout);
}

int RunWithWindow(const sim::Unit& unit, AntennaLoop& loop, const std::string& port, int& argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("burnline-antenna");
    AntennaWindow window(unit, port, [&loop](const std::string& line) { loop.Command(line.c_str()); });
    // The loop has a thread of its own: painting must not make the line late.
    loop.happened = [&window](double seconds, const std::string& words) {
        Print(seconds, words);
        QMetaObject::invokeMethod(&window, [&window, seconds, words] { window.AddEvent(seconds, words); });
    };
    loop.shown = [&window](const AntennaView& view) {
        QMetaObject::invokeMethod(&window, [&window, view] { window.Show(view); });
    };
    window.show();
    std::thread line([&] {
        loop.Run(false);
        QMetaObject::invokeMethod(&application, [] { QCoreApplication::quit(); });
    });
    const int result = QApplication::exec();
    loop.Command("quit");
    line.join();
    return result;
}

int Run(int argc, char** argv)
{
    const Options options = ReadOptions(argc, argv);
    if (options.help) {
        std::printf("%s\nCommands:\n%s", usage, sim::Console::Help().c_str());
        return 0;
    }
    const sim::Unit* unit = sim::FindUnit(options.board, options.unit);
    if (!unit) throw std::runtime_error(UnknownUnit(options));
    AntennaLoop loop(*unit, options.link, options.ways);
    running = &loop;
    std::signal(SIGINT, EndLoop);
    std::signal(SIGTERM, EndLoop);
    const std::string port = options.link.empty() ? loop.Path() : options.link;
    Print(0, std::string(unit->name) + " on " + port);
    int result = 0;
    if (options.window) {
        result = RunWithWindow(*unit, loop, port, argc, argv);
    } else {
        loop.happened = Print;
        loop.Run(true);
    }
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGTERM, SIG_IGN);
    running = nullptr;
    return result;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return Run(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "burnline-antenna: %s\n", failure.what());
        return 1;
    }
}
