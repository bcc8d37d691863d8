#include <windows.h>

#include "platform/FileLock.h"

bool FileLock::Take(const std::filesystem::path& path)
{
    Release();
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return true;
    OVERLAPPED fromTheStart{};
    const bool held = !LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &fromTheStart);
    if (held)
        CloseHandle(file);
    else
        file_ = reinterpret_cast<std::intptr_t>(file);
    return !held;
}

void FileLock::Release()
{
    if (file_ != -1) CloseHandle(reinterpret_cast<HANDLE>(file_));
    file_ = -1;
}
