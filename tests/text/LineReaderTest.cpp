#include "text/LineReader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

std::vector<std::string> LinesOf(const std::string& content)
{
    std::istringstream in(content);
    LineReader reader(in);
    std::vector<std::string> lines;
    while (!reader.AtEnd()) lines.push_back(reader.Next());
    EXPECT_EQ(reader.Position(), content.size());
    EXPECT_EQ(reader.Next(), "");
    return lines;
}

TEST(LineReader, TakesEveryLineEnd)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ(LinesOf("one\r\ntwo\nthree\rfour"), (Lines{"one", "two", "three", "four"}));
    EXPECT_EQ(LinesOf("one\r\n\r\ntwo\n\nthree\r\r"), (Lines{"one", "", "two", "", "three", ""}));
    EXPECT_EQ(LinesOf("one\n"), Lines{"one"});
    EXPECT_EQ(LinesOf(""), Lines{});
    EXPECT_EQ(LinesOf(std::string("a\0b\nc", 5)), (Lines{std::string("a\0b", 3), "c"}));
}

TEST(LineReader, ALineEndAcrossTwoPiecesIsOneLineEnd)
{
    // The reader takes 65536 bytes at a time: put CR and LF on both sides of that border.
    const std::string first(65535, 'x');
    const auto lines = LinesOf(first + "\r\nsecond");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], first);
    EXPECT_EQ(lines[1], "second");
}

TEST(LineReader, TellsWhereItIs)
{
    std::istringstream in("12345\r\n678\n");
    LineReader reader(in);
    EXPECT_EQ(reader.Size(), 11u);
    EXPECT_EQ(reader.Position(), 0u);
    reader.Next();
    EXPECT_EQ(reader.Position(), 7u);
    reader.Next();
    EXPECT_EQ(reader.Position(), 11u);
    EXPECT_TRUE(reader.AtEnd());
}

}  // namespace
