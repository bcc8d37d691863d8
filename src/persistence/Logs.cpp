#include "persistence/Logs.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "platform/Failure.h"
#include "platform/Machine.h"
#include "platform/ProgramFiles.h"
#include "platform/WholeFile.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace fs = std::filesystem;

namespace {

std::FILE* logFile = nullptr;
std::FILE* updatesLogFile = nullptr;

/// A directory that can't be written is told once: by then the program is on its way out.
void TellOnce(int number, const std::string& origin)
{
    if (number == FAIL_ALREADY_OPEN) number = FAIL_FILE_ACCESS;  // the catalogue has words for it
    if (!IsExitRequested()) TellFailure(number, origin);
}

/// Mode 1 starts a new file, any other adds to the one that is there. Null, and told, when it can't be opened.
std::FILE* OpenOutPutFile(const std::string& name, int mode)
{
    const fs::path path = ProgramFile(name);
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        TellOnce(FAIL_FILE_ACCESS, "OpenOutPutFile");
        return nullptr;
    }
    std::FILE* file = OpenToWrite(path, mode != 1);
    if (file == nullptr) {
        TellOnce(errno == ENOENT ? FAIL_PATH : FailureFromErrno(errno), "OpenOutPutFile");
        return nullptr;
    }
    // Each write goes to the system at once, so that a program that dies leaves a complete log.
    std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

/// A disk that is full loses the line and nothing else.
void Write(std::FILE* file, const std::string& bytes)
{
    if (file != nullptr && !bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), file);
}

void Close(std::FILE*& file)
{
    if (file != nullptr) std::fclose(file);
    file = nullptr;
}

}  // namespace

void OpenLog()
{
    if (IsLogOpen()) return;
    try {
        if (fs::exists(fs::status(ProgramFile("BNL.LOG")))) {
            fs::remove(ProgramFile("BNLBAK.LOG"));
            fs::rename(ProgramFile("BNL.LOG"), ProgramFile("BNLBAK.LOG"));
        }
    } catch (...) {
        std::string what;
        TellFailure(FailureNumber(what), "GetLogFile");
        return;
    }
    logFile = OpenOutPutFile("BNL.LOG", 1);
}

bool IsLogOpen() { return logFile != nullptr; }

void CloseLog() { Close(logFile); }

void WriteLog(const std::string& words) { Write(logFile, words); }

void WriteLogLine(const std::string& words) { Write(logFile, words + std::string(text::CrLf)); }

bool CloseLogAndCopyTo(const std::string& path)
{
    CloseLog();
    std::error_code error;
    const fs::path log = ProgramFile("BNL.LOG");
    const fs::path copy = ProgramFile(path);
    if (fs::equivalent(log, copy, error)) return true;  // the user chose the log itself
    return !CopyOver(log, copy);
}

void OpenUpdatesLog()
{
    if (IsUpdatesLogOpen()) return;
    const bool isNew = !ProgramFileExists("BNLUPDATES.HTM");
    updatesLogFile = OpenOutPutFile("BNLUPDATES.HTM", 2);
    if (isNew) WriteUpdatesLog("<HTML TITLE=Burnline Assistant Update Log File>");
}

bool IsUpdatesLogOpen() { return updatesLogFile != nullptr; }

void WriteUpdatesLog(const std::string& line)
{
    if (!line.empty()) Write(updatesLogFile, line + std::string(text::CrLf));
}

void CloseUpdatesLog() { Close(updatesLogFile); }
