// Every unit's undisturbed flash, byte for byte what it was when its line in wire.txt was written: up to the last
// restore command its length and hash, behind it what is asked.

#include <gtest/gtest.h>

#include <cstdlib>

#include "session/Session.h"
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
    std::string lines = "board unit connection bytes hash asked behind it\n";
    for (const Road& road : Roads()) {
        Walker walker(road);
        ASSERT_TRUE(walker.ToBoards());
        std::string asked;
        walker.pc.onSent = [&asked](std::string& bytes) {
            if (Session.link.iCommMode == STATE_READ_BACK) asked += bytes;
        };
        const Account account = walker.Flash(road);
        ASSERT_TRUE(account.finished) << road.Name() << "\n" << account.pages.back() << walker.pc.Log();
        std::string_view heard = std::string_view(account.heard).substr(account.planned);
        ASSERT_TRUE(heard.ends_with(asked)) << road.Name();
        heard.remove_suffix(asked.size());
        lines += road.Name() + " " + std::to_string(heard.size()) + " " + Digest(heard) +
                 (asked.empty() ? "" : " " + text::Trim(text::Replace(asked, "\r", " "))) + "\n";
    }
    if (std::getenv("BURNLINE_RECORD_WIRE") != nullptr) WriteFile(golden, lines);
    EXPECT_EQ(ReadFile(golden), lines);
}

}  // namespace
