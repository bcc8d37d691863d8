#include <windows.h>

#include <cerrno>

#include "platform/Failure.h"
#include "platform/Machine.h"

namespace {

/// Where programs of the former kind kept their properties, under the program's name.
constexpr const char* oldProgram = "Software\\VB and VBA Program Settings\\Burnline";
constexpr const char* oldSection = "Software\\VB and VBA Program Settings\\Burnline\\Properties";

std::string Value(const char* name)
{
    char words[1024] = {};
    DWORD bytes = sizeof words;
    const LSTATUS result = RegGetValueA(HKEY_CURRENT_USER, oldSection, name, RRF_RT_REG_SZ, nullptr, words, &bytes);
    return result == ERROR_SUCCESS ? words : "";
}

}  // namespace

void PreferThisProcess(bool preferred)
{
    SetPriorityClass(GetCurrentProcess(), preferred ? HIGH_PRIORITY_CLASS : NORMAL_PRIORITY_CLASS);
    SetThreadExecutionState(preferred ? ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED : ES_CONTINUOUS);
}

OldSettings ReadOldSettings()
{
    return {Value("BaudRate"), Value("CommPort"), Value("LastUpdateCheck"), Value("UpdateURL")};
}

void RemoveOldSettings()
{
    const LSTATUS result = RegDeleteTreeA(HKEY_CURRENT_USER, oldSection);
    if (result == ERROR_FILE_NOT_FOUND) return;
    if (result != ERROR_SUCCESS)
        throw Failure{FAIL_FILE_ACCESS, "the settings of an older version can't be removed from the registry"};
    RegDeleteKeyA(HKEY_CURRENT_USER, oldProgram);  // stays where something else is in it
}

std::FILE* OpenToWrite(const std::filesystem::path& path, bool append)
{
    return _wfopen(path.c_str(), append ? L"ab" : L"wb");
}
