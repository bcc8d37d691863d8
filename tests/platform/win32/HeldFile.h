#pragma once
// A file that another program has open and shares with nobody.

#include <windows.h>

#include <filesystem>

class HeldFile {
public:
    explicit HeldFile(const std::filesystem::path& path)
        : file_(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    ~HeldFile() { CloseHandle(file_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

private:
    HANDLE file_;
};
