#include "simulator/Memory.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace sim {

void Memory::Erase()
{
    bytes_.clear();
    written_.clear();
    count_ = 0;
}

bool Memory::Write(std::uint32_t address, const std::vector<std::uint8_t>& bytes)
{
    if (address > Size || bytes.size() > Size - address) return false;
    const std::size_t end = address + bytes.size();
    if (end > bytes_.size()) {
        bytes_.resize(end, 0xFF);
        written_.resize(end, false);
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes_[address + i] = bytes[i];
        if (!written_[address + i]) ++count_;
        written_[address + i] = true;
    }
    return true;
}

std::vector<std::uint8_t> Memory::Image() const { return bytes_; }

namespace {

/// The value of a hexadecimal digit, -1 for any other character.
int Digit(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

/// The bytes behind the colon; empty when a digit is none or one is missing.
std::vector<std::uint8_t> BytesOf(std::string_view digits)
{
    std::vector<std::uint8_t> bytes;
    if (digits.size() % 2 != 0) return bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const int high = Digit(digits[i]), low = Digit(digits[i + 1]);
        if (high < 0 || low < 0) return {};
        bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return bytes;
}

/// True when a record of this type may have so many data bytes.
bool FitsType(int type, std::size_t count)
{
    if (type == 0) return count > 0;
    if (type == 1) return count == 0;
    return (type == 2 || type == 4) && count == 2;
}

}  // namespace

std::optional<HexRecord> ReadHexRecord(std::string_view line, std::string& why)
{
    const auto refuse = [&why](const char* reason) {
        why = reason;
        return std::nullopt;
    };
    if (line.empty() || line.front() != ':') return refuse("no colon");
    const std::vector<std::uint8_t> bytes = BytesOf(line.substr(1));
    if (bytes.size() < 5) return refuse("damaged digits or too short");
    if (bytes.size() != bytes[0] + 5u) return refuse("its length is not what its count says");
    if ((std::accumulate(bytes.begin(), bytes.end(), 0u) & 0xFF) != 0) return refuse("wrong checksum");
    const int type = bytes[3];
    if (!FitsType(type, bytes[0])) return refuse("a type that this loader doesn't take");
    return HexRecord{type, static_cast<std::uint16_t>(bytes[1] * 256 + bytes[2]), {bytes.begin() + 4, bytes.end() - 1}};
}

namespace {

/// Bytes of a record's address; 0 for a type that there isn't.
constexpr std::array<std::size_t, 10> addressBytes{2, 2, 3, 4, 0, 2, 3, 4, 3, 2};

}  // namespace

std::optional<SRecord> ReadSRecord(std::string_view line, std::string& why)
{
    const auto refuse = [&why](const char* reason) {
        why = reason;
        return std::nullopt;
    };
    if (line.size() < 2 || line[0] != 'S' || line[1] < '0' || line[1] > '9') return refuse("no S-record");
    const int type = line[1] - '0';
    const std::size_t length = addressBytes[static_cast<std::size_t>(type)];
    const std::vector<std::uint8_t> bytes = BytesOf(line.substr(2));
    if (length == 0) return refuse("a type that there isn't");
    if (bytes.size() < length + 2) return refuse("damaged digits or too short");
    if (bytes.size() != bytes[0] + 1u) return refuse("its length is not what its count says");
    if ((std::accumulate(bytes.begin(), bytes.end(), 0u) & 0xFF) != 0xFF) return refuse("wrong checksum");
    SRecord record{type, 0, {bytes.begin() + 1 + static_cast<std::ptrdiff_t>(length), bytes.end() - 1}};
    for (std::size_t i = 1; i <= length; ++i) record.address = record.address << 8 | bytes[i];
    return record;
}

}  // namespace sim
