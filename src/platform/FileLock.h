#pragma once
// A lock on a file that the system releases when its program ends, however it ends: nothing that a killed program
// leaves behind locks anybody out.

#include <cstdint>
#include <filesystem>

class FileLock {
public:
    FileLock() = default;
    ~FileLock() { Release(); }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// False when another program holds the lock. A file that can't be made holds nobody off. The file stays.
    bool Take(const std::filesystem::path& path);
    void Release();

private:
    std::intptr_t file_ = -1;  // of the system; -1: none
};
