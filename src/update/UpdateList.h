#pragma once
// The list of files and messages that an update offers. Its signature is judged elsewhere; here it is only read.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Updater.h"

/// A file that the list offers.
struct UpdateFile {
    std::string Sha256;     // 64 hexadecimal digits, lower case
    std::int64_t Size = 0;  // bytes
    std::string Name;       // a bare file name, fit for the program's directory
    std::string Address;    // relative to the list's own, or whole; not yet resolved
};

struct UpdateList {
    std::int32_t Revision = 0;  // grows with every list that is published
    std::string Expires;        // YYYY-MM-DD, the last day on which the list counts
    std::vector<UpdateFile> Files;
    std::vector<UpdateMessage> Messages;
};

/// What is wrong with a list, and in which of its lines, counted from 1.
struct UpdateListError : std::runtime_error {
    UpdateListError(int line, const std::string& why)
        : std::runtime_error("line " + std::to_string(line) + ": " + why), Line(line)
    {
    }
    int Line;
};

inline constexpr std::size_t MaxUpdateListLength = 64 * 1024;          // bytes
inline constexpr std::int64_t MaxUpdateFileSize = 64LL * 1024 * 1024;  // bytes

/// Reads a whole list: "burnline-updates 1", "product burnline", "revision N", "expires YYYY-MM-DD", then the lines
/// "file SHA256 SIZE NAME ADDRESS" and "message NUMBER TEXT". Fields are separated by one blank, names and addresses
/// are percent-encoded, lines end in LF or CR LF. Raises UpdateListError on anything else: a list is taken whole or not
/// at all.
UpdateList ReadUpdateList(std::string_view bytes);

/// Why a name must not be written into the program's directory; empty when it may. A bare file name is wanted, on
/// whichever system, and none of a file that holds the user's own data.
std::string NameProblem(std::string_view name);
