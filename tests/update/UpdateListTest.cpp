// The list of an update, well formed and hostile.

#include <gtest/gtest.h>

#include <random>

#include "update/UpdateList.h"

namespace {

const std::string digest = "E3B0C44298FC1C149AFBF4C8996FB92427AE41E4649B934CA495991B7852B855";
const std::string heading = "burnline-updates 1\nproduct burnline\nrevision 12\nexpires 2027-01-31\n";

std::string FileLine(const std::string& name) { return "file " + digest + " 1234 " + name + " files/" + name + "\n"; }

constexpr int taken = -1;

/// The line of which the list complains.
int RefusedLine(const std::string& bytes)
{
    try {
        ReadUpdateList(bytes);
        return taken;
    } catch (const UpdateListError& error) {
        return error.Line;
    }
}

TEST(UpdateList, GivesFilesAndMessagesWhateverEndsItsLines)
{
    std::string bytes = heading + FileLine("F61118AC.HEX") +
                        "message 4 <b>New</b> software:  see 50% more\n"
                        "file " +
                        digest + " 0 Release%20notes.htm ../a%25b\n";
    for (int ends = 0; ends < 2; ++ends) {
        const UpdateList list = ReadUpdateList(bytes);
        EXPECT_EQ(list.Revision, 12);
        EXPECT_EQ(list.Expires, "2027-01-31");
        ASSERT_EQ(list.Files.size(), 2u);
        EXPECT_EQ(list.Files[0].Name, "F61118AC.HEX");
        EXPECT_EQ(list.Files[0].Size, 1234);
        EXPECT_EQ(list.Files[0].Sha256, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
        EXPECT_EQ(list.Files[1].Name, "Release notes.htm");
        EXPECT_EQ(list.Files[1].Address, "../a%b");
        ASSERT_EQ(list.Messages.size(), 1u);
        EXPECT_EQ(list.Messages[0].Number, 4);
        EXPECT_EQ(list.Messages[0].Text, "<b>New</b> software:  see 50% more");
        for (std::size_t at = 0; (at = bytes.find('\n', at)) != std::string::npos; at += 2) bytes.insert(at, "\r");
    }
}

TEST(UpdateList, IsRefusedWithTheLineThatIsWrong)
{
    const std::string good = FileLine("A.HEX");
    EXPECT_EQ(RefusedLine(heading + good), taken);
    EXPECT_EQ(RefusedLine(""), 1);
    EXPECT_EQ(RefusedLine("burnline-updates 1\n"), 2);
    EXPECT_EQ(RefusedLine("burnline-updates 2\n"), 1);
    EXPECT_EQ(RefusedLine("burnline-updates 1\nproduct other\n"), 2);
    EXPECT_EQ(RefusedLine("burnline-updates 1\nproduct burnline\nrevision -1\n"), 3);
    EXPECT_EQ(RefusedLine("burnline-updates 1\nproduct burnline\nrevision 99999999999\n"), 3);
    EXPECT_EQ(RefusedLine("burnline-updates 1\nproduct burnline\nrevision 1\nexpires 2027-02-30\n"), 4);
    EXPECT_EQ(RefusedLine(heading + good + "\n"), 6) << "an empty line";
    EXPECT_EQ(RefusedLine(heading + "file " + digest + " 12 A.HEX a"), 5) << "cut off";
    EXPECT_EQ(RefusedLine(heading + "file  " + digest + " 12 A.HEX a\n"), 5) << "two blanks";
    EXPECT_EQ(RefusedLine(heading + "file " + digest + " 12 A.HEX a b\n"), 5);
    EXPECT_EQ(RefusedLine(heading + "file " + digest + " 12 A.HEX\n"), 5);
    EXPECT_EQ(RefusedLine(heading + "file " + digest.substr(1) + " 12 A.HEX a\n"), 5);
    EXPECT_EQ(RefusedLine(heading + "file " + digest + " 1e3 A.HEX a\n"), 5);
    EXPECT_EQ(RefusedLine(heading + "file " + digest + " 67108865 A.HEX a\n"), 5) << "more than 64 MiB";
    EXPECT_EQ(RefusedLine(heading + "file " + digest + " 12 A%2 a\n"), 5);
    EXPECT_EQ(RefusedLine(heading + good + FileLine("a.hex")), 6) << "the same name twice";
    EXPECT_EQ(RefusedLine(heading + "message x y\n"), 5);
    EXPECT_EQ(RefusedLine(heading + "folder x\n"), 5);
}

TEST(UpdateList, TakesOnlyBareNamesThatAreNobodysOwn)
{
    for (const char* name : {"F61118AC.HEX", "FLASHCFG.TXT", "burnline", "Console.txt", "COM10.HEX", "a..b"})
        EXPECT_EQ(NameProblem(name), "") << name;
    for (const char* name : {"",
                             ".",
                             "..",
                             "../x",
                             "a/b",
                             "a\\b",
                             "C:x",
                             "x:y",
                             "a\tb",
                             "a\x7F",
                             "NUL",
                             "nul.txt",
                             "Com1.HEX",
                             "LPT9",
                             "AUX .h",
                             "COM\xC2\xB2",
                             "Burnline.ini",
                             "BURNLINE.INI",
                             "burnline.ini.old",
                             "BNL.LOG",
                             "bnlbak.log",
                             "BNLUPDATES.HTM",
                             "Burnline.ports",
                             "BNLUpdate.pub",
                             "bnlupdate.placing",
                             "A.HEX.bnl-new",
                             "name.",
                             "name ",
                             ".hidden",
                             "a*b",
                             "what?"})
        EXPECT_NE(NameProblem(name), "") << name;
    EXPECT_NE(NameProblem(std::string(300, 'a')), "");
    EXPECT_NE(NameProblem(std::string("a\0b", 3)), "");
}

TEST(UpdateList, SurvivesWhateverBytesItIsMadeOf)
{
    std::mt19937 random(20261121);
    const std::string good = heading + FileLine("A.HEX") + "message 1 text\n";
    int unharmed = 0;
    for (int run = 0; run < 20000; ++run) {
        std::string bytes = good;
        for (int change = 0; change < 3; ++change) bytes[random() % bytes.size()] = static_cast<char>(random());
        unharmed += RefusedLine(bytes) == taken;
    }
    EXPECT_GT(unharmed, 0) << "texts of messages may hold anything";
    EXPECT_LT(unharmed, 2000);
    EXPECT_NE(RefusedLine(heading + std::string(70000, 'x')), 5) << "too long as a whole, not by a line";
}

}  // namespace
