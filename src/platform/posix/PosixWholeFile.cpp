#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/Failure.h"
#include "platform/WholeFile.h"

namespace {

int FailureOfWriting(int error)
{
    switch (error) {
    case ENOENT: return FAIL_PATH;  // a file that is to be made lacks only its directory
    case EDQUOT:
    case EFBIG: return FAIL_DISK_FULL;
    default: return FailureFromErrno(error);
    }
}

/// 0, or the system's error. Some file systems can't sync; what they have taken counts as written.
int Sync(int descriptor) { return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno; }

/// 0, or the system's error.
int WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return Sync(descriptor);
}

}  // namespace

void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes)
{
    const auto fail = [&path](int error) {
        throw Failure{FailureOfWriting(error), path.filename().string() + ": " + std::strerror(error) + "."};
    };
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, 0666);
    if (descriptor < 0) fail(errno);
    int error = WriteAll(descriptor, bytes);
    if (close(descriptor) != 0 && error == 0) error = errno;
    if (error == 0) return;
    unlink(path.c_str());
    fail(error);
}

std::error_code RenameOver(const std::filesystem::path& from, const std::filesystem::path& to)
{
    std::error_code error;
    std::filesystem::rename(from, to, error);
    return error;
}

std::error_code CopyOver(const std::filesystem::path& from, const std::filesystem::path& to)
{
    std::error_code error;
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
    return error;
}

void SyncToDisk(const std::filesystem::path& path)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const int error = descriptor < 0 ? errno : Sync(descriptor);
    if (descriptor >= 0) close(descriptor);
    if (error != 0)
        throw Failure{FailureOfWriting(error), path.filename().string() + ": " + std::strerror(error) + "."};
}
