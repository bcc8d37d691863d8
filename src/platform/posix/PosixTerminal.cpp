#include <fcntl.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <thread>
#include <utility>

#include "platform/Terminal.h"

namespace {

std::array<int, 2> requests{-1, -1};  // a pipe: all that a signal handler may do is to write into it

void NoteSignal(int number)
{
    const int kept = errno;
    const char byte = static_cast<char>(number);
    if (write(requests[1], &byte, 1) < 0) errno = 0;  // full: enough requests wait already
    errno = kept;
}

void Catch(int number)
{
    struct sigaction action {};
    action.sa_handler = NoteSignal;
    action.sa_flags = SA_RESTART;
    sigaction(number, &action, nullptr);
}

/// A program that was started with "nohup" outlives its terminal.
bool IsIgnored(int number)
{
    struct sigaction action {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

EndRequest RequestOf(int number)
{
    if (number == SIGINT) return EndRequest::Interrupt;
    return number == SIGHUP ? EndRequest::HangUp : EndRequest::Terminate;
}

}  // namespace

bool OutputIsTerminal() { return isatty(STDOUT_FILENO) == 1; }

bool InputIsTerminal() { return isatty(STDIN_FILENO) == 1; }

int TerminalWidth()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

std::string ReadInput()
{
    std::array<char, 4096> bytes{};
    ssize_t count = 0;
    do count = read(STDIN_FILENO, bytes.data(), bytes.size());
    while (count < 0 && errno == EINTR);
    return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

void WatchEndRequests(std::function<void(EndRequest)> told)
{
    if (pipe2(requests.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    fcntl(requests[0], F_SETFL, 0);  // the thread waits there
    std::thread([told = std::move(told)] {
        char number = 0;
        for (;;) {
            const ssize_t count = read(requests[0], &number, 1);
            if (count == 1) told(RequestOf(number));
            if (count == 0 || (count < 0 && errno != EINTR)) return;
        }
    }).detach();
    signal(SIGPIPE, SIG_IGN);
    Catch(SIGINT);
    Catch(SIGTERM);
    if (!IsIgnored(SIGHUP)) Catch(SIGHUP);
}

std::vector<std::string> ShellCommand(const std::string& command) { return {"/bin/sh", "-c", command}; }
