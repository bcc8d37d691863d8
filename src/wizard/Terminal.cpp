// The terminal's command line, with the commands sent in this run, and its pause button.

#include <string>
#include <vector>

#include "display/Display.h"
#include "forms/frmWizard.h"
#include "link/PortAway.h"
#include "platform/Failure.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "wizard/Handlers.h"

namespace {

/// The newest command stands last; one that is sent again moves there.
void Remember(const std::string& command)
{
    constexpr std::size_t most = 100;
    std::vector<std::string>& sent = frmWizard.sSentCommands;
    if (!command.empty()) {
        std::erase(sent, command);
        sent.push_back(command);
        if (sent.size() > most) sent.erase(sent.begin());
    }
    frmWizard.iShownCommand = sent.size();
}

}  // namespace

bool txtSendCmd_KeyDown(int key)
{
    const std::vector<std::string>& sent = frmWizard.sSentCommands;
    std::size_t& shown = frmWizard.iShownCommand;
    if (key != UpKey && key != DownKey) return false;
    if (frmWizard.txtSendCmd.Locked || shown == (key == UpKey ? 0 : sent.size())) return true;
    if (shown == sent.size()) frmWizard.sTypedCommand = frmWizard.txtSendCmd.Text();
    key == UpKey ? --shown : ++shown;
    frmWizard.txtSendCmd.Text = shown == sent.size() ? frmWizard.sTypedCommand : sent[shown];
    return true;
}

bool txtSendCmd_KeyPress(int key)
{
    constexpr int Enter = 13;
    if (key != Enter) return false;
    // While the link is busy the text stays in the box, and a later Enter sends it.
    if (Session.link.iCommMode != STATE_IDLE || IsPortAway()) return true;
    if (Session.link.iCommID == 0) {
        ShowMsgBox(FAIL_PORT_CLOSED, "txtSendCmd_KeyPress");
        return true;
    }
    Session.link.sCmdQueueText += frmWizard.txtSendCmd.Text() + std::string(text::CrLf);
    Session.link.iWaitTicks = 2;
    Remember(frmWizard.txtSendCmd.Text);
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
