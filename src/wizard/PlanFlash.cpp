// The plan of a flash, as STEP_4 makes it with the user's answers and shows it.

#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "wizard/Handlers.h"
#include "wizard/ModelChooser.h"
#include "wizard/frmWizard_Events.h"

namespace {

void ShowPlan(const FlashPlan& plan)
{
    const bool chosen = plan.answers.flashFile.has_value();
    std::string files = plan.stages.front().sFlashFile;
    for (std::size_t stage = 1; stage < plan.stages.size() && !chosen; ++stage)
        files += " : " + plan.stages[stage].sFlashFile;
    if (!plan.sFlashFileName.empty()) files += ", " + plan.sFlashFileName;
    const char* words = !chosen                       ? "The Burnline will update the board with file: "
                        : plan.sFlashFileName.empty() ? "File to Flash is: "
                                                      : "Files to Flash are: ";
    frmWizard.lblFlashFile.Caption = words + files;
    frmWizard.lblFlashFile.Visible = true;
}

/// What the plan leaves to the user is asked, and answered into it.
void CompletePlan()
{
    PlanAnswers answers;
    if (Session.plan->offersLibrary) {
        answers.upgradeToGLTV = AskForLibraryUpgrade();
        MakePlan(answers);
    }
    if (Session.plan->asksModel && !IsExitRequested()) {
        answers.modelFile = AskForModel(*Session.plan->asksModel);
        MakePlan(answers);
    }
}

}  // namespace

void PlanFlash()
{
    Session.plan = FlashPlan{};
    MakePlan({});
    if (!Session.plan->IsKnown()) {
        if (IsSettingTrue(SETTING_DRY_RUN)) return;
        if (ShowMsgBox(6, "SetStep") == Answer::Cancel) return CleanUpForShutdown(1);
        return SetStep(STEP_3);
    }
    CompletePlan();
    if (IsExitRequested()) return;  // the program was closed instead of an answer, and its log with it
    const FlashPlan& plan = *Session.plan;
    // An antenna that was picked by hand may be another board than the one that was chosen.
    SetLinkSettings(BoardOf(plan.iBoardType).link);
    frmWizard.Timer2.Enabled = plan.iLinePauseTicks > 0;
    WriteLogLine("++>Board picked to flash is " + BoardNameForLog());
}

void MakePlan(const PlanAnswers& answers)
{
    Session.plan = ResolveBoard(*Session.config, Session.choice, Session.reading, answers);
    if (Session.plan->IsKnown()) ShowPlan(*Session.plan);
}

void SkipParameters()
{
    PlanAnswers answers = Session.plan->answers;
    answers.skipParameters = true;
    MakePlan(answers);
}
