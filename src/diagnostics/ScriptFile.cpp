#include "diagnostics/ScriptFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>

#include "text/LineReader.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t mostCommands = 32766;  // a script's line has a 16-bit number
constexpr std::size_t mostBytes = 4 * 1024 * 1024;

bool IsCommand(const std::string& line) { return line.size() >= 3 && line[0] != ';'; }

void ReadLines(std::ifstream& stream, ScriptFile& script)
{
    LineReader lines(stream);
    lines.SkipByteOrderMark();
    if (lines.Size() > mostBytes) {
        script.problem = "It is larger than 4 MB, which is no script.";
        return;
    }
    while (!lines.AtEnd()) {
        std::string line = lines.Next();
        if (!IsCommand(line)) continue;
        if (script.commands.size() == mostCommands) {
            script.problem = "It holds more than 32766 commands; the rest is left out.";
            return;
        }
        script.commands.push_back(std::move(line));
    }
    if (stream.bad()) script.problem = "It could not be read to its end.";
}

}  // namespace

ScriptFile ReadScriptFile(const fs::path& path)
{
    ScriptFile script;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    // A pipe in the file's place would be waited for.
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        script.problem = "It is not a file.";
        return script;
    }
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (stream)
        ReadLines(stream, script);
    else
        script.problem = std::string(std::strerror(errno)) + ".";
    return script;
}
