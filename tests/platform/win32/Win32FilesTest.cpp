#include <windows.h>

#include <thread>

#include "flash/FileIO.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "platform/WholeFile.h"
#include "tests/persistence/ProgramDirectory.h"
#include "tests/platform/win32/HeldFile.h"

namespace {

namespace fs = std::filesystem;

class Win32Files : public ProgramDirectoryTest {
protected:
    void SetUp() override
    {
        Put("old", "old bytes");
        Put("new", "new bytes");
    }

    int Renaming() const { return FailureFromError(RenameOver(Path("new"), Path("old"))); }
    int Writing(const std::string& name) const
    {
        try {
            WriteWholeFile(Path(name), "more");
        } catch (const Failure& failure) {
            EXPECT_FALSE(failure.what.empty());
            return failure.number;
        }
        return 0;
    }
};

TEST_F(Win32Files, WhatAnotherProgramHoldsIsInUseAndStays)
{
    {
        const HeldFile held(Path("old"));
        EXPECT_EQ(Writing("old"), FAIL_ALREADY_OPEN);
        EXPECT_EQ(Renaming(), FAIL_ALREADY_OPEN);
        EXPECT_EQ(FailureFromError(CopyOver(Path("new"), Path("old"))), FAIL_ALREADY_OPEN);
    }
    EXPECT_EQ(Bytes("old"), "old bytes");
    EXPECT_EQ(Bytes("new"), "new bytes");
    EXPECT_EQ(Writing("nowhere\\old"), FAIL_PATH);
    EXPECT_EQ(Writing("ol?"), FAIL_BAD_FILE);
}

TEST_F(Win32Files, WhatIsHeldForAMomentIsWaitedFor)
{
    auto held = std::make_unique<HeldFile>(Path("new"));
    std::thread other([&held] {
        ::Sleep(120);
        held.reset();
    });
    const std::error_code error = RenameOver(Path("new"), Path("old"));
    other.join();
    EXPECT_FALSE(error) << error.message();
    EXPECT_EQ(Bytes("old"), "new bytes");
}

TEST_F(Win32Files, AProgramThatRunsGivesWayAndADirectoryDoesNot)
{
    // Mapped as a program is: it can be neither written nor deleted.
    ASSERT_FALSE(CopyOver("C:\\windows\\system32\\version.dll", Path("old.exe")));
    const std::string program = Bytes("old.exe");
    const HMODULE running = LoadLibraryExW(Path("old.exe").c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    ASSERT_NE(running, nullptr);
    EXPECT_FALSE(DeleteFileW(Path("old.exe").c_str()));
    EXPECT_FALSE(RenameOver(Path("new"), Path("old.exe")));
    EXPECT_EQ(Bytes("old.exe"), "new bytes");
    EXPECT_TRUE(Bytes("old.exe.bnl-run") == program);
    FreeLibrary(running);

    Put("new", "newer bytes");
    fs::create_directory(Path("directory"));
    EXPECT_TRUE(RenameOver(Path("new"), Path("directory")));
    EXPECT_TRUE(fs::is_directory(Path("directory")));
    EXPECT_EQ(Bytes("new"), "newer bytes");
}

TEST_F(Win32Files, ACopyOfWhatCannotBeWrittenCan)
{
    SetFileAttributesW(Path("new").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(CopyOver(Path("new"), Path("old")));
    EXPECT_EQ(Bytes("old"), "new bytes");
    EXPECT_EQ(GetFileAttributesW(Path("old").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
    SetFileAttributesW(Path("new").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Win32Files, LettersOfAnyAlphabetAreTheSameToTheSystemAndToTheProgram)
{
    machine.directory /= L"J\u00F6rg";
    fs::create_directory(machine.directory);
    const std::string name = "F6111\xC3\xA4\xCE\xA9.HEX";
    WriteWholeFile(ProgramFile(name), ":00000001FF\r\n");
    EXPECT_NE(GetFileAttributesW((machine.directory / L"F6111\u00E4\u03A9.HEX").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(FamilyFiles("F6111 .HEX"), std::vector{name});
    ASSERT_EQ(ReadFlashFile(name), FILE_OPENED);
    ASSERT_EQ(OpenFlashFile(name), FILE_OPENED);
    EXPECT_EQ(GetLine(), ":00000001FF");
    CloseFlashFile();
    EXPECT_FALSE(ProgramFileExists("Gr\xF6\xDF.HEX")) << "as an editor of this system writes it";
    WriteWholeFile(machine.directory / L"Gr\u00F6\u00DF.HEX", "");
    EXPECT_TRUE(ProgramFileExists("Gr\xF6\xDF.HEX"));
}

}  // namespace
