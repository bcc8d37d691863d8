// Flash files from anywhere on this computer, copied to where the program looks for them.

#include <filesystem>

#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/ProgramFiles.h"
#include "platform/WholeFile.h"
#include "session/Wizard.h"
#include "update/Update.h"
#include "update/UpdateList.h"

namespace fs = std::filesystem;

namespace {

/// Empty when the copy stands in the program's directory; else why it doesn't. A copy that fails in the middle leaves
/// the former file as it was.
std::string Import(const fs::path& path)
{
    const fs::path target = ProgramFile(path.filename().string());
    fs::path beside = target;
    beside += ".bnl-import";
    std::error_code error, ignored;
    const std::string problem = NameProblem(path.filename().string());
    if (!problem.empty()) return problem;
    if (fs::equivalent(path, target, ignored)) return "it is in that directory already";
    if (!fs::is_regular_file(path, error)) return error ? error.message() : "it is no file";
    if (fs::exists(target, ignored) && !fs::is_regular_file(target, ignored)) return "a directory has that name there";
    error = CopyOver(path, beside);
    if (!error) error = RenameOver(beside, target);
    if (error) fs::remove(beside, ignored);
    return error ? error.message() : "";
}

}  // namespace

void ImportFiles(const std::vector<std::string>& paths)
{
    std::string failed;
    for (const std::string& path : paths) {
        const std::string problem = Import(PathOf(path));
        // Logged whether it was copied or not, on purpose; what was not is told below.
        WriteLogLine("++>Updated (copied) Flash File: " + path);
        if (!problem.empty()) failed += "\n" + path + ": " + problem + ".";
    }
    ShowMsgBox(19, "");
    if (failed.empty()) return;
    const std::string words = "These files could not be copied to " + computer->ProgramDirectory() + ":\n" + failed +
                              "\n\nThe files that were there before are unchanged. Please check the directory's "
                              "permissions and the room on the disk, then import them again.";
    computer->MsgBox(words, Buttons::OK, Icon::Exclamation, "QEL Burnline Assistant - Update Flash Files", Answer::OK);
}

void mnuUpdate_ItemImportFile_Click()
{
    const std::vector<std::string> paths =
        computer->OpenDialog({"", "Flash Files (*.HEX, *.S19)|*.hex;*.s19|All Files (*.*)|*.*", "", "", true});
    if (!paths.empty()) ImportFiles(paths);
}
