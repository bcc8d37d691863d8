#include "simulator/Console.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>
#include <utility>

#include "simulator/AnyFault.h"

namespace sim {

namespace {

constexpr double portGoneSeconds = 5;
constexpr std::string_view portGoneWord = "port-gone", anyWord = "any ";

/// The first word of a line; the line keeps the rest.
std::string TakeWord(std::string& line)
{
    const auto first = line.find_first_not_of(" \t\r");
    if (first == std::string::npos) {
        line.clear();
        return {};
    }
    const auto end = line.find_first_of(" \t\r", first);
    const std::string word = line.substr(first, end == std::string::npos ? end : end - first);
    line.erase(0, end == std::string::npos ? line.size() : line.find_first_not_of(" \t\r", end));
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
    return word;
}

/// On or off; anything else is neither.
bool IsSwitch(const std::string& word) { return word == "on" || word == "off"; }

/// A number of bytes, 100 MB at most; nothing for any other text.
std::optional<std::size_t> CountOf(const std::string& text)
{
    constexpr std::size_t mostDigits = 8;
    const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    if (!digits || text.size() > mostDigits) return std::nullopt;
    return std::stoul(text);
}

/// Bytes as one line of plain text: \r, \n, \xNN, and a backslash as two.
std::string Legible(const std::string& bytes)
{
    constexpr unsigned char firstPrinted = 0x20, lastPrinted = 0x7E;
    std::string line;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        std::array<char, 8> hex{};
        if (byte == '\r') {
            line += "\\r";
        } else if (byte == '\n') {
            line += "\\n";
        } else if (code < firstPrinted || code > lastPrinted) {
            std::snprintf(hex.data(), hex.size(), "\\x%02X", code);
            line += hex.data();
        } else {
            line += byte == '\\' ? "\\\\" : std::string(1, byte);
        }
    }
    return line;
}

bool WriteImage(const std::filesystem::path& path, const Memory& memory)
{
    const auto image = memory.Image();
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
    file.close();
    return !file.fail();
}

}  // namespace

std::string Console::Help()
{
    return std::string(
               "power on|off                  the power switch\n"
               "update on|off                 the update mode of a control panel\n"
               "say WORDS                     the antenna says a line by itself\n"
               "flood BYTES                   and so many bytes of numbered lines\n"
               "heard                         every byte that it has heard since the last \"heard\"\n"
               "dump DIR                      memory.bin, parameters.txt and state.txt into a directory; what else "
               "was\n"
               "                              programmed into boot.bin, fpga.bin and bapi.bin\n"
               "state                         what the antenna is doing\n"
               "quit                          the end\n") +
           Faults::Help() +
           "fault any SEED                a fault by chance; the same seed makes the same one\n"
           "fault port-gone [SECONDS|always] the port vanishes and comes back (5), or not before the next \"port-gone "
           "0\"\n";
}

bool Console::Run(const std::string& line, double now, std::string& answer)
{
    std::string rest = line;
    const std::string word = TakeWord(rest);
    answer.clear();
    if (word == "quit") return false;
    if (word == "help") {
        answer = Help();
    } else if (word == "power" && IsSwitch(rest)) {
        antenna_.SetPower(rest == "on", now);
    } else if (word == "update" && IsSwitch(rest)) {
        antenna_.SetUpdateMode(rest == "on");
    } else if (word == "say" && !rest.empty()) {
        antenna_.Print(rest, now);
    } else if (word == "flood" && CountOf(rest)) {
        antenna_.Flood(*CountOf(rest), now);
    } else if (word == "heard" && rest.empty()) {
        answer = "heard: " + Legible(antenna_.TakeHeard());
    } else if (word == "fault") {
        answer = SetFault(rest);
    } else if (word == "dump" && !rest.empty()) {
        answer = Dump(rest);
    } else if (word == "state") {
        answer = antenna_.StateWords() + "\n" + antenna_.Looks().Position();
        for (const std::string& fault : antenna_.SetFaults().InForce()) answer += "\nfault " + fault;
    } else if (!word.empty()) {
        answer = "not understood: " + line + " (try \"help\")";
    }
    return true;
}

std::string Console::SetFault(const std::string& words)
{
    std::string why;
    if (words.starts_with(anyWord) && CountOf(words.substr(anyWord.size()))) {
        Dice dice(*CountOf(words.substr(anyWord.size())));
        return SetFault(AnyFault(antenna_.Kind(), {}, dice));
    }
    if (!words.starts_with(portGoneWord)) return antenna_.SetFault(words, why) ? "" : "not understood: " + why;
    std::istringstream in(words.substr(portGoneWord.size()));
    double seconds = portGoneSeconds;
    std::string more;
    if (in.str() == " always") {
        seconds = std::numeric_limits<double>::infinity();
    } else if (!(in >> std::ws).eof() && (!(in >> seconds) || seconds < 0 || (in >> more))) {
        return "not understood: port-gone wants seconds";
    }
    portGone(seconds);
    return {};
}

std::string Console::Dump(const std::string& directory) const
{
    std::error_code error;
    const std::filesystem::path path(directory);
    std::filesystem::create_directories(path, error);
    bool written = WriteImage(path / "memory.bin", antenna_.Flash());
    const std::pair<const char*, const Memory&> others[] = {
        {"boot.bin", antenna_.BootImage()}, {"fpga.bin", antenna_.Stage(2)}, {"bapi.bin", antenna_.Stage(3)}};
    for (const auto& [name, memory] : others) {
        if (memory.BytesWritten() > 0) written = WriteImage(path / name, memory) && written;
    }
    std::ofstream parameters(path / "parameters.txt");
    for (const auto& [name, value] : antenna_.Held().All()) parameters << name << '=' << value << '\n';
    std::ofstream state(path / "state.txt");
    state << antenna_.StateWords() << '\n'
          << "software=" << (antenna_.HasSoftware() ? "yes" : "no") << '\n'
          << "bytes=" << antenna_.Flash().BytesWritten() << '\n'
          << "lines=" << antenna_.GoodLines() << '\n'
          << "refused=" << antenna_.RefusedLines() << '\n'
          << "stray=" << antenna_.StrayBytes() << '\n'
          << "position=" << antenna_.Looks().Position() << '\n';
    parameters.close();
    state.close();
    if (!written || !parameters || !state) return "the dump failed: " + directory + " can't be written";
    return "dumped " + std::to_string(antenna_.Flash().Image().size()) + " bytes to " + directory;
}

}  // namespace sim
