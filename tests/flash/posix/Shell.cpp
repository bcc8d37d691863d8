#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/flash/FlashFiles.h"

void Shell(const std::string& command) { ASSERT_EQ(0, std::system((command + " 2>/dev/null").c_str())) << command; }

std::string Quoted(const std::filesystem::path& path) { return "'" + path.string() + "'"; }
