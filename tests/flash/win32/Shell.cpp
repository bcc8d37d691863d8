// Where these tests run Windows is Wine, and srec_cat is a program of the system under it.

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/VirtualComputer.h"
#include "tests/flash/FlashFiles.h"

namespace fs = std::filesystem;

/// Wine starts such a program, but can't wait for it: its end is the file that its shell then leaves.
void Shell(const std::string& command)
{
    TempDirectory directory;
    const fs::path done = directory.path / "done";
    std::string line = "Z:\\bin\\sh -c \"" + command + " 2>/dev/null; echo $? >" + Quoted(directory.path / "result") +
                       "; mv " + Quoted(directory.path / "result") + " " + Quoted(done) + "\"";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process));
    const ULONGLONG end = GetTickCount64() + 60000;
    while (!fs::exists(done) && GetTickCount64() < end) ::Sleep(1);
    ASSERT_EQ(ReadFile(done), "0\n") << command;
}

/// As the system under Wine names it.
std::string Quoted(const fs::path& path)
{
    using Translate = char*(CDECL*)(const wchar_t*);
    const auto translate = reinterpret_cast<Translate>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    if (translate == nullptr) throw std::runtime_error("these tests need Wine");
    char* const name = translate(path.c_str());
    const std::string quoted = std::string("'") + name + "'";
    HeapFree(GetProcessHeap(), 0, name);
    return quoted;
}
