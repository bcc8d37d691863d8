#pragma once
// A program's directory for the real program: settings, configuration, one small flash file, and ports of its own.

#include <filesystem>
#include <string>
#include <vector>

class ProgramHome {
public:
    /// COM7 leads to `AntennaLink()`, COM9 to `OtherLink()`. All other numbers lead nowhere, so that the serial ports
    /// of the machine that runs the tests get none and are left alone.
    ProgramHome();
    ~ProgramHome();
    ProgramHome(const ProgramHome&) = delete;
    ProgramHome& operator=(const ProgramHome&) = delete;

    /// The settings with this line in the place of "COMMPort=7".
    void SetPort(int port) const;

    /// A flash file of `lines` records of 16 bytes, made by srec_cat from a fixed seed.
    void MakeFlashFile(const std::string& name, int lines) const;

    /// The same as S-records or lines of Intel HEX, by its name: `size` bytes from `offset` on; `more` are further
    /// options of srec_cat.
    void MakeRecords(const std::string& name, std::size_t size, int offset, const std::string& more = {}) const;

    /// What srec_cat makes of such a file on an erased image of 128 KB; `more` are further filters.
    std::string JudgedRecords(const std::string& name, const std::string& more = {}) const;

    std::filesystem::path Path(const std::string& name) const { return directory_ / name; }
    std::string Bytes(const std::string& name) const;
    std::filesystem::path AntennaLink() const { return Path("antenna"); }
    std::filesystem::path OtherLink() const { return Path("other"); }

private:
    std::filesystem::path directory_;
};

/// The bytes of a file; empty when there is none.
std::string ReadAll(const std::filesystem::path& path);
void WriteAll(const std::filesystem::path& path, const std::string& bytes);

/// Bytes of a .HEX file as srec_cat reads it, from address 0 on, 0xFF in its gaps.
std::string JudgedImage(const std::filesystem::path& hexFile);

/// The first of `words` that doesn't occur in `text` behind the one ahead of it; empty when all stand in this order.
std::string FirstOutOfOrder(const std::string& text, const std::vector<std::string>& words);
