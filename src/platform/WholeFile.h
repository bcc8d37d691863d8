#pragma once
// Small files that are read and written as a whole: settings, the list of ports.

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

/// True when something stands at `path`. Raises std::filesystem::filesystem_error when that can't be told.
bool Exists(const std::filesystem::path& path);

/// All bytes of a file. Raises Failure with words for the user: 53 when it isn't there, 75 when it is no file or can't
/// be read, 7 when it is longer than `maxBytes`.
std::string ReadWholeFile(const std::filesystem::path& path, std::size_t maxBytes);

/// Makes a file, or empties it, and writes all bytes; they are on the disk when the call returns, so they survive even
/// a battery that runs empty right after it. What was written of a file that can't be completed is deleted again.
/// Raises Failure: 61 disk full, 76 no such directory, or the number for the system's error.
void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes);

/// Renames a file; one that has the new name already gives way, even when it is the program that runs. What then can't
/// be deleted before that ends has the name with ".bnl-run" behind it.
std::error_code RenameOver(const std::filesystem::path& from, const std::filesystem::path& to);

/// Copies a file; one that has the new name already is overwritten.
std::error_code CopyOver(const std::filesystem::path& from, const std::filesystem::path& to);

/// What was written of a file, or renamed in a directory, is on the disk when the call returns; where the system can't
/// do that it does nothing. Raises Failure when the disk refuses.
void SyncToDisk(const std::filesystem::path& path);
