#pragma once
// Files beside the program: flash files, configuration, logs. Names are taken relative to the program's directory.

#include <filesystem>
#include <string>
#include <vector>

/// A path from its words. The program's words are UTF-8, whatever the system makes of names; so are a path's
/// `string()`.
std::filesystem::path PathOf(const std::string& words);

/// The path of a file in the program's directory; a name with a directory of its own stays as it is.
std::filesystem::path ProgramFile(const std::string& name);

/// True when `name` is a file (not a directory) that exists.
bool ProgramFileExists(const std::string& name);

/// All files of a family: those that share the first six characters and the last three of `name`, in the order of
/// their names.
std::vector<std::string> FamilyFiles(const std::string& name);

/// The newest file of the family of `name`: the longest name, and among those the greatest; empty when there is none.
/// "F61118T1.HEX" belongs to its family, but is never taken as long as there is another.
std::string FindLatestFile(const std::string& name);
