#include "platform/posix/PosixMachine.h"

#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "platform/Machine.h"

void PreferThisProcess(bool preferred)
{
    constexpr int steps = 10;  // of niceness
    static const int startedWith = getpriority(PRIO_PROCESS, 0);
    setpriority(PRIO_PROCESS, 0, preferred ? startedWith - steps : startedWith);
}

OldSettings ReadOldSettings() { return {}; }  // older versions knew no such system

void RemoveOldSettings() {}

std::FILE* OpenToWrite(const std::filesystem::path& path, bool append)
{
    return std::fopen(path.c_str(), append ? "ab" : "wb");
}

std::string OwningGroup(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return {};
    const group* owner = getgrgid(status.st_gid);
    return owner ? owner->gr_name : std::to_string(status.st_gid);
}
