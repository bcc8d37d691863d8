#include "platform/ProgramFiles.h"

#include <algorithm>

#include "platform/Computer.h"
#include "text/Text.h"

namespace fs = std::filesystem;

fs::path PathOf(const std::string& words)
{
    try {
        return fs::path(std::u8string(words.begin(), words.end()));
    } catch (const fs::filesystem_error&) {
        return fs::path(words);  // an older configuration's name, in letters of a single byte
    }
}

fs::path ProgramFile(const std::string& name)
{
    const fs::path given = PathOf(name);
    return given.is_absolute() ? given : PathOf(computer->ProgramDirectory()) / given;
}

bool ProgramFileExists(const std::string& name)
{
    std::error_code ignored;
    const fs::file_status status = fs::status(ProgramFile(name), ignored);
    return !name.empty() && fs::exists(status) && !fs::is_directory(status);
}

std::vector<std::string> FamilyFiles(const std::string& name)
{
    const std::string stem = text::Trim(text::Left(name, 6));
    const std::string ending = "." + text::Right(name, 3);
    std::vector<std::string> found;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(PathOf(computer->ProgramDirectory()), ignored)) {
        const std::string candidate = entry.path().filename().string();
        if (candidate.size() >= stem.size() + ending.size() && text::StartsWith(candidate, stem) &&
            text::Equal(text::Right(candidate, 4), ending) && !entry.is_directory(ignored))
            found.push_back(candidate);
    }
    std::sort(found.begin(), found.end(),
              [](const std::string& a, const std::string& b) { return text::Compare(a, b) < 0; });
    return found;
}

std::string FindLatestFile(const std::string& name)
{
    constexpr std::string_view neverNewest = "F61118T1.HEX";
    const std::vector<std::string> files = FamilyFiles(name);
    if (files.empty()) return {};
    std::string latest = files.front();
    std::size_t longest = 0;
    for (const std::string& file : files)
        if (!text::Equal(file, neverNewest)) longest = std::max(longest, file.size());
    for (const std::string& file : files)
        if (file.size() == longest && !text::Equal(file, neverNewest) &&
            (latest.size() != longest || text::Equal(latest, neverNewest) || text::Compare(file, latest) > 0))
            latest = file;
    return latest;
}
