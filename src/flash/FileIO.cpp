#include "flash/FileIO.h"

#include <algorithm>
#include <fstream>

#include "display/Display.h"
#include "persistence/Logs.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Lines.h"
#include "text/Sha256.h"
#include "text/Text.h"

namespace {

/// Far beyond any flash file: it isn't to fill the memory with whatever was chosen instead of one.
constexpr std::uintmax_t mostBytes = 16U << 20;

struct OpenFile {
    std::shared_ptr<const FlashFile> file;
    Lines lines{""};
};

OpenFile flashFile;

std::string ReadToItsEnd(const std::string& name)
{
    const std::filesystem::path path = ProgramFile(name);
    const auto size = std::filesystem::file_size(path);
    if (size > mostBytes) throw Failure{FAIL_FILE_ACCESS, path.string() + " is too large to be a flash file"};
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw Failure{FAIL_FILE_ACCESS, path.string() + " can't be opened"};
    std::string bytes(size, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(size));
    if (stream.gcount() != static_cast<std::streamsize>(size))
        throw Failure{FAIL_FILE_ACCESS, path.string() + " can't be read to its end"};
    return bytes;
}

}  // namespace

int ReadFlashFile(const std::string& name)
{
    auto& files = Session.flash.files;
    std::erase_if(files, [&](const auto& file) { return file->name == name; });
    if (!ProgramFileExists(name)) return FILE_NOT_FOUND;
    Guarded("ReadFlashFile", [&] {
        FlashFile file{name, ReadToItsEnd(name), {}};
        file.sha256 = Sha256(file.bytes);
        WriteLogLine("++>" + name + ": " + text::Num(static_cast<long long>(file.bytes.size())) + " bytes, SHA-256 " +
                     file.sha256);
        files.push_back(std::make_shared<const FlashFile>(std::move(file)));
    });
    return FlashFileNamed(name) ? FILE_OPENED : FILE_NOT_FOUND;
}

std::string FlashFileBytes(const std::string& name)
{
    try {
        return ReadToItsEnd(name);
    } catch (const Failure&) {
        return {};
    } catch (const std::filesystem::filesystem_error&) {
        return {};
    }
}

std::shared_ptr<const FlashFile> FlashFileNamed(const std::string& name)
{
    const auto& files = Session.flash.files;
    const auto found = std::find_if(files.begin(), files.end(), [&](const auto& file) { return file->name == name; });
    return found == files.end() ? nullptr : *found;
}

int OpenFlashFile(const std::string& name)
{
    CloseFlashFile();
    const std::shared_ptr<const FlashFile> file = FlashFileNamed(name);
    if (!file) return FILE_NOT_FOUND;
    flashFile = {file, Lines(file->bytes)};
    Session.flash.lFlashFileSize = static_cast<std::int32_t>(file->bytes.size());
    return FILE_OPENED;
}

void CloseFlashFile() { flashFile = {}; }

bool FlashFileAtEnd() { return flashFile.lines.AtEnd(); }

std::string GetLine()
{
    std::string line;
    Guarded("GetLine", [&] {
        if (FlashFileAtEnd()) throw Failure{FAIL_PAST_END, "the flash file has no further line"};
        line = flashFile.lines.Next();
    });
    return line;
}

long FlashFileLine() { return flashFile.lines.Number(); }

int FlashFilePercent()
{
    if (!flashFile.file) return 0;
    return PercentOf(static_cast<double>(flashFile.lines.Position()), Session.flash.lFlashFileSize);
}

bool ReadNextHexLine()
{
    if (FlashFileAtEnd()) return false;
    Session.attempt.vCurrentLine = Session.attempt.sFirstLine;
    Session.attempt.sFirstLine = GetLine();
    ShowProgress(FlashFilePercent());
    Session.attempt.vCurrentLine += "\r";
    return true;
}
