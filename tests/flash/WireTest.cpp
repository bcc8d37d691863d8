// Every unit's undisturbed flash, byte for byte what it was when its line in wire.txt was written.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/flash/Walker.h"
#include "text/Text.h"

namespace {

/// FNV-1a of 64 bits.
std::string Digest(std::string_view bytes)
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    return text::Hex(static_cast<std::uint32_t>(hash >> 32), 8) + text::Hex(static_cast<std::uint32_t>(hash), 8);
}

/// BURNLINE_RECORD_WIRE=1 in the environment writes the lines anew.
TEST(EveryUnit, HearsTheBytesThatAreOnRecord)
{
    const std::filesystem::path golden = std::filesystem::path(SOURCE_DIR) / "tests" / "flash" / "wire.txt";
    std::string lines = "board unit connection bytes hash\n";
    for (const Road& road : Roads()) {
        Walker walker(road);
        ASSERT_TRUE(walker.ToBoards());
        const Account account = walker.Flash(road);
        ASSERT_TRUE(account.finished) << road.Name() << "\n" << account.pages.back() << walker.pc.Log();
        const std::string_view heard = std::string_view(account.heard).substr(account.planned);
        lines += road.Name() + " " + std::to_string(heard.size()) + " " + Digest(heard) + "\n";
    }
    if (std::getenv("BURNLINE_RECORD_WIRE") != nullptr) WriteFile(golden, lines);
    EXPECT_EQ(ReadFile(golden), lines);
}

}  // namespace
