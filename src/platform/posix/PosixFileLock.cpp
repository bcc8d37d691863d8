#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/FileLock.h"

bool FileLock::Take(const std::filesystem::path& path)
{
    constexpr mode_t everybodyReads = 0644;
    Release();
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, everybodyReads);
    if (file < 0) return true;
    const bool held = flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (held)
        close(file);
    else
        file_ = file;
    return !held;
}

void FileLock::Release()
{
    if (file_ >= 0) close(static_cast<int>(file_));
    file_ = -1;
}
