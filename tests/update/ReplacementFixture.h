#pragma once
// Files that are to be replaced, and a program that is killed while it does that.

#include <gtest/gtest.h>

#include <map>

#include "tests/VirtualComputer.h"
#include "update/Replacement.h"

namespace fs = std::filesystem;

/// Runs it and kills it ahead of its `step`th change of the disk; true when it came that far. What it raises by itself
/// is the test's failure.
bool KilledAt(int step, const std::function<void(const StepHook&)>& act);

using Set = std::map<std::string, std::string>;  // names and contents

class Replacement : public testing::Test {
protected:
    Replacement()
    {
        fs::create_directories(staging);
        fs::create_directories(home);
        Lay();
    }

    /// Two files with predecessors, one without, and one that is nobody's business.
    void Lay()
    {
        for (const auto& entry : fs::directory_iterator(home)) fs::remove_all(entry.path());
        for (const auto& [name, bytes] : former) WriteFile(home / name, bytes);
        for (const auto& [name, bytes] : brought) WriteFile(staging / name, bytes);
    }

    std::vector<PlacedFile> Files() const
    {
        std::vector<PlacedFile> files;
        for (const auto& [name, bytes] : brought) files.push_back({staging / name, home / name});
        return files;
    }

    Set Found() const
    {
        Set found;
        for (const auto& entry : fs::directory_iterator(home))
            found[entry.path().filename().string()] = entry.is_regular_file() ? ReadFile(entry.path()) : "(directory)";
        return found;
    }

    Set New() const
    {
        Set all = former;
        for (const auto& [name, bytes] : brought) all[name] = bytes;
        return all;
    }

    TempDirectory temp;
    const fs::path home = temp.path / "home", staging = temp.path / "staging";
    const Set former{{"A.HEX", "old a"}, {"burnline", "old program"}, {"Burnline.ini", "mine"}};
    const Set brought{{"A.HEX", "new a"}, {"B.S19", std::string(100000, 'b')}, {"burnline", "new program"}};
};
