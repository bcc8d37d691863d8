#include "tests/console/BenchConsole.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <array>
#include <future>
#include <stdexcept>

#include "platform/Computer.h"
#include "platform/posix/PosixSerialControl.h"

namespace {

/// Our end and the program's.
std::pair<int, int> NewLine(On on)
{
    std::array<int, 2> ends{-1, -1};
    if (on == On::Pipes && socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0)
        return {ends[0], ends[1]};
    const int ours = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::array<char, 64> name{};
    const bool made = grantpt(ours) == 0 && unlockpt(ours) == 0 && ptsname_r(ours, name.data(), name.size()) == 0;
    const int theirs = open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    const winsize size{30, 160, 0, 0};
    if (!made || ioctl(theirs, TIOCSWINSZ, &size) != 0) throw std::runtime_error("no terminal");
    return {ours, theirs};
}

bool IsOver(const QElapsedTimer& waited, double seconds)
{
    return static_cast<double>(waited.elapsed()) > seconds * 1000;
}

}  // namespace

ConsoleProcess::ConsoleProcess(const Words& arguments, On on) : on_(on)
{
    const auto [ours, theirs] = NewLine(on);
    line_ = ours;
    child_.prepare = [end = theirs] {
        setsid();
        ioctl(end, TIOCSCTTY, 0);  // a terminal is its own
        signal(SIGHUP, SIG_DFL);   // also where the tests run under nohup
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(end, standard);
    };
    QStringList words;
    for (const std::string& argument : arguments) words << QString::fromStdString(argument);
    child_.Start(CONSOLE_PROGRAM, words);
    close(theirs);
}

ConsoleProcess::~ConsoleProcess()
{
    if (line_ >= 0) close(line_);
}

/// False when nothing has come in that time.
bool ConsoleProcess::ReadSome(int ms)
{
    pollfd watched{line_, POLLIN, 0};
    std::array<char, 4096> bytes{};
    const ssize_t count = poll(&watched, 1, ms) > 0 ? read(line_, bytes.data(), bytes.size()) : 0;
    if (count > 0) output_.append(bytes.data(), static_cast<std::size_t>(count));
    return count > 0;
}

void ConsoleProcess::WaitFor(const std::string& words, double seconds)
{
    QElapsedTimer waited;
    waited.start();
    std::size_t found = 0;
    while ((found = output_.find(words, seen_)) == std::string::npos) {
        if (!ReadSome(50) && (child_.EndsWithin(0) || IsOver(waited, seconds)))
            throw std::runtime_error("\"" + words + "\" was waited for in vain:\n" + output_);
    }
    seen_ = found + words.size();
}

void ConsoleProcess::Type(const std::string& bytes) const
{
    if (write(line_, bytes.data(), bytes.size()) < 0) throw std::runtime_error("nobody reads what is typed");
}

void ConsoleProcess::Signal(int number) { kill(static_cast<pid_t>(child_.Process().processId()), number); }

void ConsoleProcess::HangUp()
{
    if (on_ == On::Pipes) return void(shutdown(line_, SHUT_WR));
    close(std::exchange(line_, -1));
}

int ConsoleProcess::ExitCode(double seconds)
{
    QElapsedTimer waited;
    waited.start();
    while (!child_.EndsWithin(5)) {
        ReadSome(20);
        if (IsOver(waited, seconds)) throw std::runtime_error("it doesn't end:\n" + output_);
    }
    while (ReadSome(0)) continue;
    const int code = child_.Process().exitCode();
    return child_.Process().exitStatus() == QProcess::NormalExit ? code : -code;
}

Bench::Bench()
{
    Edit("FLASHCFG.TXT", "GYROSFAZ$GYROSFEL$=CALUP$SATINSTALL$GPS$=SERNUM$INSTANT$SLEEP$SKEWMTR$DEW$HALT$flasha",
         "SATINSTALL$DEW$HALT$flasha");
    Edit("FLASHCFG.TXT",
         "CLEAREE$WAIT 2$BIASAZ$BIASEL$GYROSFAZ$GYROSFEL$=CALUP$SATINSTALL$GPS$=SERNUM$INSTANT$SLEEP$SKEWMTR$DEW",
         "CLEAREE$BIASAZ$SATINSTALL$DEW");
    Edit("FLASHCFG.TXT", "POSTFLASH MAINBOARD$WAIT 3", "POSTFLASH MAINBOARD$WAIT 1");
    Edit("FLASHCFG.TXT", "POSTFLASH RFBOARD$WAIT 10", "POSTFLASH RFBOARD$WAIT 1");
    for (const char* lines : {"F61118AB.HEX", "F61195A.HEX", "F61300A.HEX"}) home.MakeFlashFile(lines, 60);
    for (const char* blocks : {"F61197A.S19", "F61207A.S19"}) home.MakeRecords(blocks, 20000, 6208);
    for (const char* boot : {"F61130A.S19", "F61140A.S19"}) home.MakeRecords(boot, 4096, 128);
}

void Bench::Edit(const std::string& file, const std::string& from, const std::string& to) const
{
    std::string bytes = home.Bytes(file);
    bytes.replace(bytes.find(from), from.size(), to);  // raises when it isn't there
    WriteAll(home.Path(file), bytes);
}

void Bench::StartAntenna(int board, const std::string& unit)
{
    antenna = std::make_unique<AntennaProcess>(board, home.AntennaLink(), true, unit, false, true);
}

void Bench::Start(Words arguments, On on)
{
    // The last of an option that is given twice counts.
    arguments.insert(arguments.begin(), {"--directory", home.Path("").string()});
    console = std::make_unique<ConsoleProcess>(arguments, on);
}

void Bench::StartUnattended(Words arguments, On on)
{
    arguments.insert(arguments.end(), {"--yes", "--power-cycle", antenna->PowerCommand()});
    Start(arguments, on);
}

void Bench::Greet()
{
    console->WaitFor("Waiting on COM7");
    antenna->Do("say Hello");
}

void Bench::ExpectEnd(int exitCode)
{
    EXPECT_EQ(console->ExitCode(), exitCode) << console->Output() << Log();
    const std::size_t last = Log().rfind("++>Shutting down Burnline Assistant");
    EXPECT_TRUE(last != std::string::npos && Log().find('\n', last) >= Log().size() - 1) << Log();
    EXPECT_EQ(TestDevice(home.AntennaLink()), PORT_USABLE);
}

void Bench::ExpectState(const Words& lines)
{
    antenna->Dump(home.Path("state"));
    const std::string state = home.Bytes("state/state.txt");
    EXPECT_EQ(FirstOutOfOrder(state, lines), "") << state;
}

void Together(const std::vector<std::pair<std::string, std::function<void()>>>& cases)
{
    std::vector<std::future<void>> running;
    for (const auto& one : cases) {
        running.push_back(std::async(std::launch::async, [&one] {
            SCOPED_TRACE(one.first);
            try {
                one.second();
            } catch (const std::exception& failure) {
                ADD_FAILURE() << failure.what();
            }
        }));
    }
    for (std::future<void>& one : running) one.get();
}
