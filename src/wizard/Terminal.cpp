// The terminal's command line and its pause button.

#include "display/Display.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "text/Text.h"
#include "wizard/Handlers.h"

bool txtSendCmd_KeyPress(int key)
{
    constexpr int Enter = 13;
    if (key != Enter) return false;
    // While the link is busy the text stays in the box, and a later Enter sends it.
    if (Session.iCommMode != STATE_IDLE) return true;
    Session.sCmdQueueText += frmWizard.txtSendCmd.Text() + std::string(text::CrLf);
    Session.iWaitTicks = 2;
    frmWizard.txtSendCmd.Text = "";
    return true;
}

void cmdPauseOrResume_Click()
{
    if (!frmWizard.bOutputPaused) {
        frmWizard.bOutputPaused = true;
        frmWizard.cmdPauseOrResume.Caption = "Resume Output";
        frmWizard.cmdPauseOrResume.BackColor = Red;
        return;
    }
    frmWizard.bOutputPaused = false;
    frmWizard.cmdPauseOrResume.Caption = "Pause Output";
    frmWizard.cmdPauseOrResume.BackColor = Green;
    if (frmWizard.sPausedOutput.empty()) return;
    std::string shown = frmWizard.Text1.Text;
    if (shown.size() + frmWizard.sPausedOutput.size() > MaxCommsTextLength) shown.clear();
    frmWizard.Text1.Text = shown + frmWizard.sPausedOutput;
    frmWizard.sPausedOutput.clear();
}
