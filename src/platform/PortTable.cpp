#include "platform/PortTable.h"

#include "platform/Failure.h"
#include "platform/WholeFile.h"
#include "text/Text.h"

namespace {

constexpr std::size_t MaxFileSize = 65536;

/// The number of "COM7", 0 when it is none from 1 to 64.
int PortNumber(const std::string& name)
{
    const std::string digits = text::Mid(name, 4);
    if (!text::StartsWith(name, "COM") || digits.empty() || digits.size() > 2) return 0;
    if (digits.find_first_not_of("0123456789") != std::string::npos) return 0;
    const int number = std::stoi(digits);
    return number <= PortTable::LastPort ? number : 0;
}

}  // namespace

bool PortTable::Load()
{
    devices_.clear();
    words_.clear();
    problem_.clear();
    readable_ = false;
    try {
        if (Exists(file_)) words_ = ReadWholeFile(file_, MaxFileSize);
        readable_ = true;
    } catch (...) {
        FailureNumber(problem_);
        return false;
    }
    for (const std::string& line : text::Split(words_, "\n")) {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos) continue;
        const int port = PortNumber(text::TrimLines(line.substr(0, equals)));
        const std::string device = text::TrimLines(line.substr(equals + 1));
        if (port != 0 && !device.empty()) devices_.emplace(port, device);  // the first line for a number counts
    }
    return true;
}

std::string PortTable::DeviceOf(int port) const
{
    const auto found = devices_.find(port);
    return found == devices_.end() ? std::string() : found->second;
}

int PortTable::PortOf(const std::string& device) const
{
    for (const auto& [port, known] : devices_)
        if (known == device) return port;
    return 0;
}

bool PortTable::Assign(const std::vector<std::string>& devices)
{
    std::string added;
    int port = 1;
    for (const std::string& device : devices) {
        const bool isOneLine = !device.empty() && device.find_first_of("\r\n") == std::string::npos;
        if (!isOneLine || PortOf(device) != 0) continue;
        while (devices_.contains(port)) ++port;
        if (port > LastPort) break;
        devices_.emplace(port, device);
        added += "COM" + text::Num(port) + "=" + device + "\n";
    }
    if (added.empty()) return true;
    if (!readable_) return false;

    if (!words_.empty() && words_.back() != '\n') words_ += '\n';
    words_ += added;
    try {
        std::filesystem::path complete = file_;
        complete += ".new";
        WriteWholeFile(complete, words_);
        std::filesystem::rename(complete, file_);
    } catch (...) {
        FailureNumber(problem_);
        return false;
    }
    return true;
}
