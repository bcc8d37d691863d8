// The File menu and the form's keys.

#include <filesystem>

#include "forms/frmWizard.h"
#include "link/Mode.h"
#include "platform/Computer.h"
#include "platform/ProgramFiles.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "update/Update.h"
#include "wizard/Handlers.h"
#include "wizard/frmWizard_Events.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* SaveTitle = "Burnline Assistant - Save Log File";

enum class Place { Free, TryAnother, GiveUp };

/// Makes room for the log's copy; what stands there goes only when the user says so.
Place FreePlace(const std::string& name)
{
    std::error_code error;
    const fs::path path = PathOf(name);
    if (!fs::exists(path, error)) return Place::Free;
    const bool isFile = fs::is_regular_file(path, error);
    if (isFile) {
        const Answer answer = computer->MsgBox("Replace existing file - " + name, Buttons::YesNoCancel, Icon::Question,
                                               SaveTitle, Answer::No);
        if (answer == Answer::No) return Place::TryAnother;
        if (answer != Answer::Yes) return Place::GiveUp;
        if (fs::remove(path, error)) return Place::Free;
    }
    computer->MsgBox("This file can't be replaced - " + name + "\n\nPlease choose another name.", Buttons::OK,
                     Icon::Exclamation, SaveTitle, Answer::OK);
    return Place::TryAnother;
}

/// True for BNL.LOG itself: it is written there anyhow, and must not be deleted to make room for its own copy.
bool IsTheLog(const std::string& name)
{
    std::error_code ignored;
    return fs::equivalent(PathOf(name), ProgramFile("BNL.LOG"), ignored);
}

/// Ctrl with an arrow key moves the antenna while the buttons that do it are in front. True when it did.
bool MoveAntenna(int key)
{
    constexpr int antennaControl = 1;
    if (frmWizard.iCurrentStep != STEP_DIAGNOSTICS || frmWizard.SSTab1.ListIndex != antennaControl) return false;
    const struct {
        int key;
        Control& button;
    } moves[] = {{UpKey, frmWizard.cmdUp},
                 {DownKey, frmWizard.cmdDown},
                 {LeftKey, frmWizard.cmdLeft},
                 {RightKey, frmWizard.cmdRight}};
    for (const auto& move : moves) {
        if (move.key != key) continue;
        move.button.Click();
        return true;
    }
    return false;
}

}  // namespace

void mnuFile_ItemSaveLogFile_Click()
{
    Session.program.sSavedLogName.clear();
    const FileDialog dialog{SaveTitle, "Log Files (*.LOG)|*.log|All Files (*.*)|*.*", computer->ProgramDirectory(),
                            "BNL.LOG"};
    for (;;) {
        const std::optional<std::string> name = computer->SaveDialog(dialog);
        if (!name || IsTheLog(*name)) return;
        const Place place = FreePlace(*name);
        if (place == Place::GiveUp) return;
        if (place == Place::TryAnother) continue;
        Session.program.sSavedLogName = *name;
        return;
    }
}

bool Form_KeyDown(int key, bool shift, bool ctrl, bool alt)
{
    if (key == F1Key) {
        mnuHelp_ItemHelp_Click();
        return true;
    }
    if (!ctrl || shift) return false;
    if (!alt) return MoveAntenna(key);
    // The way to the diagnostics unlocks the command line and the buttons, which a flash keeps locked.
    if (!IsFlashing() && !Session.flash.bAtRisk) SetStep(STEP_DIAGNOSTICS);
    return true;
}
