// Another flash file than the one that was found: the button of STEP_4 and its dialog.

#include <algorithm>
#include <filesystem>
#include <utility>

#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmWizard.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/ProgramFiles.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "wizard/Handlers.h"
#include "wizard/frmWizard_Events.h"

namespace fs = std::filesystem;

namespace {

SelectFlashFileForm& dialog = frmSelectFlashFileDialog;

/// The boot area's file goes with others; it is never a board's own.
constexpr const char* BootAreaFile = "DVBDSS.HEX";

const std::string& FileInPlan() { return Session.plan->stages.front().sFlashFile; }

std::string ChosenFile()
{
    if (!dialog.sBrowsedFile.empty()) return std::exchange(dialog.sBrowsedFile, {});
    const std::vector<std::string>& files = dialog.cboChooseFile.List;
    const int index = dialog.cboChooseFile.ListIndex;
    return index >= 0 && index < static_cast<int>(files.size()) ? files[static_cast<std::size_t>(index)] : "";
}

void HideDialog()
{
    frmWizard.cmdNav[2].Enabled = true;
    dialog.Self.Visible = false;
}

/// A file of the program's directory goes by its name alone, any other by its whole path.
std::string NameOf(const std::string& path)
{
    std::error_code ignored;
    const fs::path file = PathOf(path);
    const bool isBeside = fs::equivalent(file.parent_path(), PathOf(computer->ProgramDirectory()), ignored);
    return isBeside ? file.filename().string() : path;
}

/// A way for service staff to take any file. Cancelled, it leaves the list as it was.
void BrowseForFile()
{
    dialog.sBrowsedFile.clear();
    const std::vector<std::string> chosen =
        computer->OpenDialog({"Select Flash File", "Flash Files (*.HEX, *.S19)|*.hex;*.s19|All Files (*.*)|*.*",
                              computer->ProgramDirectory(), ""});
    if (chosen.empty()) return;
    dialog.sBrowsedFile = chosen.front();
    frmSelectFlashFileDialog_cmdOK_Click();
}

}  // namespace

void TakeFlashFile(const std::string& path)
{
    PlanAnswers answers = Session.plan->answers;
    answers.flashFile = NameOf(path);
    MakePlan(answers);
    WriteLogLine("++>Flash file selected by user: " + *answers.flashFile);
}

void cmdOverrideFile_Click()
{
    if (dialog.Self.Visible) frmSelectFlashFileDialog_cmdCancel_Click();
    const std::vector<std::string> family = FamilyFiles(PathOf(FileInPlan()).filename().string());
    if (family.size() < 2) {
        ShowMsgBox(13, "");
        return;
    }
    std::vector<std::string> offered;
    for (const std::string& file : family)
        if (!text::Equal(file, BootAreaFile)) offered.push_back(file);
    dialog.cboChooseFile.List = offered;
    dialog.cboChooseFile.Select(0);
    frmWizard.cmdNav[2].Enabled = false;
    dialog.Self.Visible = true;
}

void frmSelectFlashFileDialog_cmdOK_Click()
{
    const std::string file = ChosenFile();
    if (file.empty()) {
        frmSelectFlashFileDialog_cmdCancel_Click();
        return;
    }
    TakeFlashFile(file);
    HideDialog();
}

void frmSelectFlashFileDialog_cmdCancel_Click()
{
    dialog.cboChooseFile.List = std::vector<std::string>{};
    dialog.cboChooseFile.ListIndex = -1;
    dialog.sBrowsedFile.clear();
    HideDialog();
}

bool frmSelectFlashFileDialog_KeyDown(int key, bool shift, bool ctrl, bool alt)
{
    constexpr int F7 = 118;
    if (key != F7 || !ctrl || !alt || shift) return false;
    BrowseForFile();
    return true;
}
