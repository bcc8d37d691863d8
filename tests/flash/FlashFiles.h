#pragma once
// Flash files, made and judged by srec_cat.

#include <filesystem>
#include <string>

/// Runs a command; a failure is the test's.
void Shell(const std::string& command);

/// A flash file of `size` bytes from a fixed seed, at `offset`, written by srec_cat with `options`.
void MakeFlashFile(const std::filesystem::path& file, std::size_t size, int offset, const std::string& options);

/// What srec_cat makes of a file, from address 0 on, 0xFF in its gaps; `size` bytes, or up to its last one.
std::string Judged(const std::filesystem::path& file, const std::string& options, std::size_t size = 0);

/// FLASHCFG.TXT and all flash files that it names, a few lines each and no two alike; with `others`, for every one a
/// revision that is never the newest ("F61160.HEX" beside "F61160A.HEX") and a damaged one ("F611600.HEX"). `large`
/// ones fill half of an image, or forty lines or records.
void WriteProgramFiles(const std::filesystem::path& directory, bool others, bool large = false);

/// What srec_cat makes of its input, likewise.
std::string Judged(const std::string& input, std::size_t size = 0);

std::string Quoted(const std::filesystem::path& path);
