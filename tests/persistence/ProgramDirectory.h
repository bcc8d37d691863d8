#pragma once
// An empty program's directory for each test, and the files in it by their names.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "persistence/Logs.h"
#include "tests/VirtualComputer.h"

class ProgramDirectoryTest : public testing::Test {
protected:
    VirtualComputer machine;

    void SetUp() override { std::filesystem::remove(Path("Burnline.ini")); }
    void TearDown() override { CloseUpdatesLog(); }

    std::filesystem::path Path(const std::string& name) const { return machine.directory / name; }
    void Put(const std::string& name, const std::string& bytes) const { WriteFile(Path(name), bytes); }
    std::string Bytes(const std::string& name) const { return ReadFile(Path(name)); }
    bool There(const std::string& name) const { return std::filesystem::exists(Path(name)); }
};
