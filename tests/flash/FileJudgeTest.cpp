// The readers of flash files against srec_cat: the same verdict and the same image for files with one fault each, but
// for the exceptions that are listed here by kind.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <random>
#include <vector>

#include "flash/FileReport.h"
#include "tests/VirtualComputer.h"
#include "tests/flash/FlashFiles.h"
#include "text/Text.h"

namespace fs = std::filesystem;

namespace {

/// What srec_cat passes over, or only warns of.
constexpr const char* stricter[] = {
    "the line is no ",                    // it ignores garbage lines, a damaged first letter among them
    "ends before its end record",         // a .HEX file may have been cut there
    "there is something behind the end",  // it goes on reading
    "holds no data",
};
/// What it refuses, and here the user is asked.
constexpr const char* asked = "two different contents";

using Random = std::mt19937;

std::size_t Below(Random& random, std::size_t end) { return random() % end; }

/// One fault: a bit, a cut, a line that is lost, doubled or swapped, another line end.
std::string Mutated(const std::string& file, unsigned seed)
{
    Random random(seed);
    std::vector<std::string> lines = text::Split(file, "\n");
    lines.pop_back();
    for (std::string& line : lines) line += "\n";
    const std::size_t at = Below(random, lines.size());
    constexpr const char* ends[] = {"\n", "\r", "\n\r", "\r\r\n", "\r\n\r\n", "", " \r\n", "\t\n", "\x1A"};
    std::string mutant = file;
    switch (seed % 6) {
    case 0: mutant[Below(random, file.size())] ^= static_cast<char>(1 << Below(random, 8)); return mutant;
    case 1:
        return file.substr(
            0, Below(random, 3) == 0 ? file.find('\n', Below(random, file.size())) + 1 : Below(random, file.size()));
    case 2: lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at)); break;
    case 3: lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(Below(random, lines.size())), lines[at]); break;
    case 4: std::swap(lines[at], lines[Below(random, lines.size())]); break;
    default: lines[at].replace(lines[at].size() - 2, 2, ends[Below(random, std::size(ends))]);
    }
    mutant.clear();
    for (const std::string& line : lines) mutant += line;
    return mutant;
}

/// Every byte of a file with its address.
using Image = std::vector<std::pair<std::uint64_t, int>>;

Image ImageOf(const FileMap& map)
{
    Image image;
    for (const DataRange& range : map.Ranges())
        for (auto at = range.first; at < range.end; ++at) image.emplace_back(at, map.At(at));
    return image;
}

/// Reads what srec_cat has written itself.
Image Written(const fs::path& file)
{
    Image image;
    for (const std::string& line : text::Split(ReadFile(file), "\n")) {
        if (line.size() < 4 || line[1] < '1' || line[1] > '3') continue;
        const std::size_t dataAt = 6 + 2 * static_cast<std::size_t>(line[1] - '0');
        std::uint64_t address = std::stoul(line.substr(4, dataAt - 4), nullptr, 16);
        for (std::size_t at = dataAt; at + 2 < line.size() - 1; at += 2)
            image.emplace_back(address++, std::stoi(line.substr(at, 2), nullptr, 16));
    }
    return image;
}

std::size_t Wanted()
{
    const char* wanted = std::getenv("BURNLINE_JUDGED_FILES");
    return wanted != nullptr ? static_cast<std::size_t>(std::atol(wanted)) : 2000;
}

class Judge {
public:
    explicit Judge(std::string format) : format_(std::move(format)) {}

    void Take(const std::string& file)
    {
        WriteFile(Path(images_.size()), file);
        images_.emplace_back();
    }

    /// What srec_cat makes of the files, nothing where it refuses one. Those that it is likely to take go to it many at
    /// once, each with room of its own.
    const std::vector<std::optional<Image>>& Images(const std::vector<std::size_t>& likely)
    {
        constexpr std::size_t together = 64;
        for (std::size_t first = 0; first < likely.size(); first += together)
            JudgeTogether({likely.begin() + static_cast<std::ptrdiff_t>(first),
                           likely.begin() + static_cast<std::ptrdiff_t>(std::min(first + together, likely.size()))});
        std::string halves[2];
        for (std::size_t file = 0; file < images_.size(); ++file)
            if (!images_[file]) halves[file % 2] += Name(file) + " ";
        Run("each() { for f; do srec_cat $f " + format_ + " -o $f.out -Motorola 2>$f.why; done; }\neach " + halves[0] +
            " &\neach " + halves[1] + "\nwait");
        for (std::size_t file = 0; file < images_.size(); ++file) {
            const fs::path written = Path(file).string() + ".out";
            if (fs::exists(written)) images_[file] = Written(written);
        }
        return images_;
    }

    std::string Why(std::size_t file) const { return ReadFile(Path(file).string() + ".why"); }

    static constexpr std::size_t room = 0x20000;

private:
    fs::path Path(std::size_t file) const { return directory_.path / Name(file); }
    static std::string Name(std::size_t file) { return "f" + std::to_string(file); }

    void Run(const std::string& script)
    {
        WriteFile(directory_.path / "judge", script + "\ntrue\n");
        Shell("cd " + Quoted(directory_.path) + " && sh judge");
    }

    void JudgeTogether(const std::vector<std::size_t>& files)
    {
        std::string command = "rm -f all; srec_cat";
        for (std::size_t at = 0; at < files.size(); ++at)
            command += " " + Name(files[at]) + " " + format_ + " -offset " + std::to_string(at * room);
        Run(command + " -o all -Motorola");
        if (!fs::exists(directory_.path / "all")) return;  // one of them is refused: each for itself
        for (const std::size_t file : files) images_[file].emplace();
        for (const auto& [address, byte] : Written(directory_.path / "all"))
            images_[files.at(address / room)]->emplace_back(address % room, byte);
    }

    std::string format_;
    TempDirectory directory_;
    std::vector<std::optional<Image>> images_;
};

void JudgeAll(RecordKind kind, const std::string& format, const std::vector<std::string>& options)
{
    std::vector<std::string> bases;
    for (const std::string& option : options) {
        TempDirectory directory;
        MakeFlashFile(directory.path / "base", 700, 0xFE80, format + " -CRLF -Output_Block_Size=16 " + option);
        bases.push_back(ReadFile(directory.path / "base"));
    }
    Judge judge(format);
    std::vector<FileReport> reports;
    std::vector<std::size_t> likely;
    for (unsigned seed = 0; seed < Wanted(); ++seed) {
        const std::string mutant = Mutated(bases[seed / 6 % bases.size()], seed);
        judge.Take(mutant);
        reports.push_back(ReportOn(mutant, kind));
        const FileReport& ours = reports.back();
        if (ours.fault.empty() && !ours.map.Contradiction() && ours.map.Ranges().back().end <= Judge::room)
            likely.push_back(seed);
    }
    const auto& theirs = judge.Images(likely);

    std::map<std::string, int> differ;
    const Image whole = ImageOf(ReportOn(bases[0], kind).map);
    for (std::size_t seed = 0; seed < reports.size(); ++seed) {
        const FileReport& ours = reports[seed];
        if (theirs[seed] && ours.fault.empty()) {
            EXPECT_TRUE(*theirs[seed] == ImageOf(ours.map)) << seed;
            // An S-record file that counts its records tells when something of it is gone.
            const bool counts = kind == RecordKind::S && seed / 6 % bases.size() == 0;
            EXPECT_TRUE(!counts || !ours.oddities.empty() || ImageOf(ours.map) == whole) << seed;
        } else if (theirs[seed]) {
            const auto known = std::find_if(std::begin(stricter), std::end(stricter),
                                            [&](const char* words) { return text::Holds(ours.fault, words); });
            ASSERT_NE(std::end(stricter), known) << seed << ": " << ours.fault;
            ++differ[*known];
        } else if (ours.fault.empty()) {
            ASSERT_TRUE(ours.map.Contradiction()) << judge.Why(seed);
            ++differ[asked];
        }
    }
    for (const auto& [words, files] : differ) testing::Test::RecordProperty(format + ": " + words, files);
}

TEST(FlashFiles, AreJudgedAsSrecCatDoes)
{
    JudgeAll(RecordKind::Hex, "-Intel", {""});
    JudgeAll(RecordKind::S, "-Motorola", {"-header X", "-header X -disable=data-count -execution-start-address=0"});
}

}  // namespace
