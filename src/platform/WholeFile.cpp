#include "platform/WholeFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "platform/Failure.h"

namespace fs = std::filesystem;

bool Exists(const fs::path& path) { return fs::exists(fs::status(path)); }

std::string ReadWholeFile(const fs::path& path, std::size_t maxBytes)
{
    const std::string name = path.filename().string();
    // A pipe or a device in the file's place would be read for ever.
    if (!Exists(path)) throw Failure{FAIL_NOT_FOUND, name + " isn't there."};
    if (!fs::is_regular_file(path)) throw Failure{FAIL_FILE_ACCESS, name + " is not a file."};

    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure{FailureFromErrno(errno), name + ": " + std::strerror(errno) + "."};
    std::string bytes(maxBytes + 1, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (file.bad()) throw Failure{FAIL_FILE_ACCESS, name + " could not be read to its end."};
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    if (bytes.size() > maxBytes)
        throw Failure{FAIL_MEMORY, name + " is longer than " + std::to_string(maxBytes / 1024) +
                                       " KB. Please move it out of its directory and start again."};
    return bytes;
}
