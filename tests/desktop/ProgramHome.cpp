#include "tests/desktop/ProgramHome.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

void Run(const std::string& command)
{
    if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

std::string Quoted(const fs::path& path) { return "'" + path.string() + "'"; }

std::string FormatOf(const std::string& name) { return name.ends_with(".HEX") ? " -Intel " : " -Motorola "; }

fs::path NewDirectory()
{
    std::string name = (fs::temp_directory_path() / "burnline-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no directory for the test");
    return name;
}

}  // namespace

ProgramHome::ProgramHome() : directory_(NewDirectory())
{
    fs::copy_file(fs::path(SOURCE_DIR) / "demo" / "FLASHCFG.TXT", Path("FLASHCFG.TXT"));
    SetPort(7);
    std::string ports = "COM7=" + AntennaLink().string() + "\nCOM9=" + OtherLink().string() + "\n";
    for (int port = 1; port <= 64; ++port) ports += "COM" + std::to_string(port) + "=/nowhere\n";
    WriteAll(Path("Burnline.ports"), ports);
}

ProgramHome::~ProgramHome()
{
    std::error_code left;
    fs::permissions(directory_, fs::perms::owner_all, left);
    fs::remove_all(directory_, left);
}

void ProgramHome::SetPort(int port) const
{
    WriteAll(Path("Burnline.ini"), "[BurnlineParameters]\r\nCOMMPort=" + std::to_string(port) +
                                       "\r\nBaudRate=9600\r\nAutoCheckForUpdates=False\r\nTransmitDelay=1\r\n");
}

void ProgramHome::MakeFlashFile(const std::string& name, int lines) const
{
    std::mt19937 random(20261121);
    std::string data;
    for (int i = 0; i < lines * 16; ++i) data += static_cast<char>(random() & 0xFF);
    WriteAll(Path("data.bin"), data);
    Run("srec_cat " + Quoted(Path("data.bin")) + " -Binary -offset 0x200 -o " + Quoted(Path(name)) +
        " -Intel -line-length=44 -CRLF");
}

void ProgramHome::MakeRecords(const std::string& name, std::size_t size, int offset, const std::string& more) const
{
    // A fixed seed, under which no block of a boot area has the echo zero: that one is noise.
    std::mt19937 random(static_cast<unsigned>(size));
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() & 0xFF);
    WriteAll(Path("data.bin"), bytes);
    Run("srec_cat " + Quoted(Path("data.bin")) + " -Binary -offset " + std::to_string(offset) + " " + more + " -o " +
        Quoted(Path(name)) + FormatOf(name) + "-CRLF -Output_Block_Size=32 2>/dev/null");
}

std::string ProgramHome::JudgedRecords(const std::string& name, const std::string& more) const
{
    Run("srec_cat " + Quoted(Path(name)) + FormatOf(name) + more + " -crop 0 131072 -fill 0xFF 0 131072 -o " +
        Quoted(Path("judged.bin")) + " -Binary 2>/dev/null");
    return Bytes("judged.bin");
}

std::string ProgramHome::Bytes(const std::string& name) const { return ReadAll(Path(name)); }

std::string ReadAll(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteAll(const fs::path& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

std::string JudgedImage(const fs::path& hexFile)
{
    const fs::path binary = hexFile.string() + ".bin";
    Run("srec_cat " + Quoted(hexFile) + " -Intel -fill 0xFF 0 -maximum-address " + Quoted(hexFile) + " -Intel -o " +
        Quoted(binary) + " -Binary");
    return ReadAll(binary);
}

std::string FirstOutOfOrder(const std::string& text, const std::vector<std::string>& words)
{
    std::size_t at = 0;
    for (const std::string& next : words) {
        const std::size_t found = text.find(next, at);
        if (found == std::string::npos) return next;
        at = found + next.size();
    }
    return {};
}
