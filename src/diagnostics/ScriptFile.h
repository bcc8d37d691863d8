#pragma once
// A script file: plain text, one command a line.

#include <filesystem>
#include <string>
#include <vector>

struct ScriptFile {
    std::vector<std::string> commands;  // as they stand in the file, at most 32766
    std::string problem;                // why the file wasn't read, or not to its end; empty when it was
};

/// Reads the commands of a file: every line but those that begin with ";" or have fewer than three characters.
/// What can't be read is told in `problem`; raises nothing.
ScriptFile ReadScriptFile(const std::filesystem::path& path);
