#include "tests/flash/FlashFiles.h"

#include <algorithm>
#include <random>

#include "tests/VirtualComputer.h"

namespace fs = std::filesystem;

void MakeFlashFile(const fs::path& file, std::size_t size, int offset, const std::string& options)
{
    std::mt19937 random(static_cast<unsigned>(size));
    std::string bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
    TempDirectory directory;
    WriteFile(directory.path / "data.bin", bytes);
    Shell("srec_cat " + Quoted(directory.path / "data.bin") + " -Binary -offset " + std::to_string(offset) + " -o " +
          Quoted(file) + " " + options);
}

std::string Judged(const fs::path& file, const std::string& options, std::size_t size)
{
    TempDirectory directory;
    const fs::path binary = directory.path / "judged.bin";
    const std::string input = Quoted(file) + " " + options;
    const std::string range = size == 0 ? " -fill 0xFF 0 -maximum-address " + input
                                        : " -crop 0 " + std::to_string(size) + " -fill 0xFF 0 " + std::to_string(size);
    Shell("srec_cat " + input + range + " -o " + Quoted(binary) + " -Binary");
    return ReadFile(binary);
}
