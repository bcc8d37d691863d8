#include "flash/FileIO.h"

#include <fstream>
#include <memory>

#include "display/Display.h"
#include "flash/HexRecord.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/LineReader.h"

namespace {

struct OpenFile {
    std::ifstream stream;
    std::unique_ptr<LineReader> lines;
};

OpenFile flashFile;

int OpenForReading(const std::string& name)
{
    CloseFlashFile();
    if (!ProgramFileExists(name)) return FILE_NOT_FOUND;
    const std::filesystem::path path = ProgramFile(name);
    const auto size = std::filesystem::file_size(path);
    flashFile.stream = std::ifstream(path, std::ios::binary);
    if (!flashFile.stream) throw Failure{FAIL_FILE_ACCESS, path.string() + " can't be opened"};
    flashFile.lines = std::make_unique<LineReader>(flashFile.stream);
    Session.flash.lFlashFileSize = static_cast<std::int32_t>(size);
    return FILE_OPENED;
}

}  // namespace

int OpenFlashFile(const std::string& name)
{
    int status = FILE_NOT_FOUND;
    Guarded("OpenFlashFile", [&] { status = OpenForReading(name); });
    return status;
}

void CloseFlashFile()
{
    flashFile.lines.reset();
    flashFile.stream.close();
}

bool FlashFileAtEnd() { return !flashFile.lines || flashFile.lines->AtEnd(); }

std::string GetLine()
{
    std::string line;
    Guarded("GetLine", [&] {
        if (FlashFileAtEnd()) throw Failure{FAIL_PAST_END, "the flash file has no further line"};
        line = flashFile.lines->Next();
    });
    return line;
}

int FlashFilePercent()
{
    if (!flashFile.lines) return 0;
    return PercentOf(static_cast<double>(flashFile.lines->Position()), Session.flash.lFlashFileSize);
}

bool ReadNextHexLine()
{
    if (FlashFileAtEnd()) return false;
    Session.attempt.vCurrentLine = Session.attempt.sFirstLine;
    Session.attempt.sFirstLine = GetLine();
    ShowProgress(FlashFilePercent());
    if (IsShortContinuation(Session.attempt.sFirstLine))
        Session.attempt.vCurrentLine = MergeShortRecord(Session.attempt.vCurrentLine, Session.attempt.sFirstLine);
    Session.attempt.vCurrentLine += "\r";
    return true;
}
