#include <io.h>
#include <windows.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "platform/Terminal.h"

namespace {

std::function<void(EndRequest)> onRequest;

/// The system calls it on a thread of its own. When the console closes, the process ends as soon as this returns.
BOOL WINAPI NoteRequest(DWORD kind)
{
    switch (kind) {
    case CTRL_C_EVENT: onRequest(EndRequest::Interrupt); return TRUE;
    case CTRL_BREAK_EVENT: onRequest(EndRequest::Terminate); return TRUE;
    case CTRL_CLOSE_EVENT:
    case CTRL_LOGOFF_EVENT:
    case CTRL_SHUTDOWN_EVENT:
        onRequest(EndRequest::HangUp);
        ::Sleep(INFINITE);  // the main thread ends the program in order
        return TRUE;
    default: return FALSE;
    }
}

bool IsConsole(DWORD stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

}  // namespace

bool OutputIsTerminal() { return IsConsole(STD_OUTPUT_HANDLE); }

bool InputIsTerminal() { return IsConsole(STD_INPUT_HANDLE); }

int TerminalWidth()
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info)) return 80;
    return info.srWindow.Right - info.srWindow.Left + 1;
}

std::string ReadInput()
{
    std::array<char, 4096> bytes{};
    DWORD count = 0;
    if (!ReadFile(GetStdHandle(STD_INPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr))
        return {};
    return {bytes.data(), count};
}

void WatchEndRequests(std::function<void(EndRequest)> told)
{
    onRequest = std::move(told);
    SetConsoleCtrlHandler(NoteRequest, TRUE);
    // The progress line needs a console that understands its two control sequences.
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(output, &mode)) SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    SetConsoleOutputCP(CP_UTF8);
}

std::vector<std::string> ShellCommand(const std::string& command)
{
    // The shell doesn't understand the quotation marks of a quoted argument; what it expands by itself needs none.
    constexpr const char* name = "BURNLINE_COMMAND";
    SetEnvironmentVariableA(name, command.c_str());
    const char* shell = std::getenv("COMSPEC");
    return {shell != nullptr ? shell : "cmd.exe", "/d", "/c", std::string("%") + name + "%"};
}
