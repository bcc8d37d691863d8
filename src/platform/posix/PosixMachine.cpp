#include "platform/posix/PosixMachine.h"

#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>

void RaiseNiceness(int steps)
{
    static const int startedWith = getpriority(PRIO_PROCESS, 0);
    setpriority(PRIO_PROCESS, 0, startedWith - steps);
}

std::string OwningGroup(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return {};
    const group* owner = getgrgid(status.st_gid);
    return owner ? owner->gr_name : std::to_string(status.st_gid);
}
