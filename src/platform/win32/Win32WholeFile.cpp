#include <windows.h>

#include "platform/Failure.h"
#include "platform/WholeFile.h"

namespace {

int FailureOf(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND: return FAIL_PATH;  // a file that is to be made lacks only its directory
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: return FAIL_ALREADY_OPEN;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_FILE_TOO_LARGE: return FAIL_DISK_FULL;
    case ERROR_INVALID_NAME: return FAIL_BAD_FILE;
    default: return FAIL_FILE_ACCESS;
    }
}

std::string WordsOf(DWORD error)
{
    char words[512] = {};
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                        words, sizeof words, nullptr);
    std::string text(words, length);
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n' || text.back() == ' ')) text.pop_back();
    return text.empty() ? "error " + std::to_string(error) : text;
}

[[noreturn]] void Fail(const std::filesystem::path& path, DWORD error)
{
    throw Failure{FailureOf(error), path.filename().string() + ": " + WordsOf(error)};
}

/// 0, or the system's error.
DWORD WriteAll(HANDLE file, std::string_view bytes)
{
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) return GetLastError();
        if (written == 0) return ERROR_DISK_FULL;
        bytes.remove_prefix(written);
    }
    return FlushFileBuffers(file) ? 0 : GetLastError();
}

std::error_code Code(DWORD error) { return {static_cast<int>(error), std::system_category()}; }

bool IsFile(const std::filesystem::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// 0, or the system's error. What looks for viruses, or for words, holds a new file for a moment.
DWORD Move(const std::filesystem::path& from, const std::filesystem::path& to)
{
    constexpr int tries = 20;
    for (int tried = 1;; ++tried) {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return 0;
        const DWORD error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION || tried == tries) return error;
        ::Sleep(50);
    }
}

}  // namespace

void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes)
{
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) Fail(path, GetLastError());
    const DWORD error = WriteAll(file, bytes);
    CloseHandle(file);
    if (error == 0) return;
    DeleteFileW(path.c_str());
    Fail(path, error);
}

std::error_code RenameOver(const std::filesystem::path& from, const std::filesystem::path& to)
{
    const DWORD refused = Move(from, to);
    if (refused != ERROR_ACCESS_DENIED || !IsFile(to)) return Code(refused);
    // A program that runs can't be replaced or deleted, but it can be renamed.
    const std::filesystem::path aside = to.wstring() + L".bnl-run";
    if (const DWORD held = Move(to, aside)) return Code(held);
    const DWORD error = Move(from, to);
    if (error != 0)
        Move(aside, to);
    else
        DeleteFileW(aside.c_str());  // what was only held for a moment can go
    return Code(error);
}

/// By the system itself: std::filesystem takes any two files of this system for one, and refuses. What comes from a
/// disc that can't be written is not so here.
std::error_code CopyOver(const std::filesystem::path& from, const std::filesystem::path& to)
{
    if (!CopyFileW(from.c_str(), to.c_str(), FALSE)) return Code(GetLastError());
    return Code(SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL) ? 0 : GetLastError());
}

/// A rename is kept by the file system's own journal; only what was written to a file can still be on its way.
void SyncToDisk(const std::filesystem::path& path)
{
    if (std::filesystem::is_directory(path)) return;
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) Fail(path, GetLastError());
    const DWORD error = FlushFileBuffers(file) ? 0 : GetLastError();
    CloseHandle(file);
    if (error != 0) Fail(path, error);
}
