#pragma once
// What the core and the front ends ask of the machine that they run on, beside its port.

#include <cstdio>
#include <filesystem>
#include <string>

/// For a flash: this process gets the processor ahead of others, and a machine that can be kept from falling asleep
/// doesn't. false goes back to how the process was started. A refusal is no failure.
void PreferThisProcess(bool preferred);

/// Settings that an older version of the program kept elsewhere than in its file; each empty where there is none.
struct OldSettings {
    std::string BaudRate, CommPort, LastUpdateCheck, UpdateURL;
};
OldSettings ReadOldSettings();
/// They have been taken over. Raises Failure when they can't be removed.
void RemoveOldSettings();

/// Opens a file to write to; `append` keeps what is in it. Null, and errno, when it can't be opened.
std::FILE* OpenToWrite(const std::filesystem::path& path, bool append);
