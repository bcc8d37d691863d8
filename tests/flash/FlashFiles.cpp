#include "tests/flash/FlashFiles.h"

#include <algorithm>
#include <map>
#include <random>

#include "tests/VirtualComputer.h"
#include "text/Text.h"

namespace fs = std::filesystem;

namespace {

/// A record: its mark, its bytes in hexadecimal, their checksum.
std::string Record(const std::string& mark, const std::string& bytes)
{
    std::uint32_t sum = 0;
    std::string line = mark;
    for (const char c : bytes) {
        sum += static_cast<unsigned char>(c);
        line += text::Hex(static_cast<unsigned char>(c), 2);
    }
    return line + text::Hex((mark == ":" ? 0 - sum : ~sum) & 0xFF, 2) + "\r\n";
}

std::string Bytes(std::initializer_list<std::uint32_t> values) { return {values.begin(), values.end()}; }

/// Made here and not by srec_cat: a hundred of them are wanted at once, the same ones wherever they are made.
std::string FlashFile(const std::string& name, bool loader, bool large)
{
    std::seed_seq seed(name.begin(), name.end());
    std::mt19937 random(seed);
    const bool hex = text::Right(name, 4) == ".HEX";
    const std::string stem = name.substr(0, name.size() - 4);
    std::string file = hex ? Record(":", Bytes({2, 0, 0, 4, 0, 0}))
                           : Record("S0", Bytes({3 + static_cast<std::uint32_t>(stem.size()), 0, 0}) + stem);
    // Each kind where its board takes it from; a second file lies over the end of the first.
    std::uint32_t address = hex ? 0x2250 : (loader ? 0x180 : 0x2200);
    const bool ofBlocks = large && !hex && !loader && !text::StartsWith(name, "F613");
    const std::uint32_t lines = ofBlocks ? 360 : (large ? 40 : 10), length = ofBlocks || (large && loader) ? 64 : 16;
    for (std::uint32_t line = 0; line < lines; ++line, address += length) {
        std::string data(length, '\0');
        std::generate(data.begin(), data.end(), [&] { return static_cast<char>(random()); });
        file += hex ? Record(":", Bytes({length, address >> 8, address & 0xFF, 0}) + data)
                    : Record("S1", Bytes({length + 3, address >> 8, address & 0xFF}) + data);
    }
    return file + (hex ? ":00000001FF\r\n" : "S9030000FC\r\n");
}

std::map<std::string, std::string> ProgramFiles(bool large)
{
    const std::string config = ReadFile(fs::path(SOURCE_DIR) / "demo" / "FLASHCFG.TXT");
    std::map<std::string, std::string> files{{"FLASHCFG.TXT", config}};
    // What the program names itself: files for an RF1 board behind the main board, the later stages of board 21, and
    // the file that goes with one that is chosen for an RF board.
    std::string fields = config + "$F61102S.HEX$F61118L.HEX$F61340B.S19$F61357B.S19$DVBDSS.HEX";
    for (const char* mark : {"\r", "\n", ":"}) fields = text::Replace(fields, mark, "$");
    for (const std::string& name : text::Split(fields, "$")) {
        const std::string ending = text::Right(name, 4);
        if (ending != ".HEX" && ending != ".S19") continue;
        const bool loader = text::Holds(config, "BOOTLOADER_FILE$" + name);
        const std::string family = name.substr(0, 6);
        for (const std::string& file : {name, family + ending, family + "0" + ending})
            files[file] = FlashFile(file, loader, large);
        std::string& damaged = files[family + "0" + ending];
        damaged[damaged.size() / 2] ^= 1;
    }
    return files;
}

}  // namespace

void WriteProgramFiles(const fs::path& directory, bool others, bool large)
{
    static const std::map<std::string, std::string> small = ProgramFiles(false);
    for (const auto& [name, content] : large ? ProgramFiles(true) : small)
        if (others || (name[6] != '.' && name[6] != '0')) WriteFile(directory / name, content);
}

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
    return Judged(Quoted(file) + " " + options, size);
}

std::string Judged(const std::string& input, std::size_t size)
{
    TempDirectory directory;
    const fs::path binary = directory.path / "judged.bin";
    const std::string range = size == 0 ? " -fill 0xFF 0 -maximum-address " + input
                                        : " -crop 0 " + std::to_string(size) + " -fill 0xFF 0 " + std::to_string(size);
    Shell("srec_cat " + input + range + " -o " + Quoted(binary) + " -Binary");
    return ReadFile(binary);
}
