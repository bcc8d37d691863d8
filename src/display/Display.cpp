#include "display/Display.h"

#include "forms/frmWizard.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "session/Session.h"
#include "text/Text.h"

void StatusTextUpdate(const std::string& words)
{
    frmWizard.txtStatus.Text = frmWizard.txtStatus.Text() + "\r\n" + words;
}

void ShowProgress(int percent)
{
    frmWizard.ProgressBar1.Value = percent;
    if (percent == 0) {
        frmWizard.lblTimeLeft[1].Caption = "";
        return;
    }
    // Time so far; no time left is computed anywhere, whatever the control is called.
    frmWizard.fFlashSeconds = static_cast<float>(computer->Seconds() - Session.flash.dFlashStart);
    const long seconds = static_cast<long>(frmWizard.fFlashSeconds);
    frmWizard.lblTimeLeft[1].Caption = text::Str(seconds) + "  sec. so far  (" + text::Str(percent) + "  % completed)";
    frmWizard.lblBytesSent[1].Caption = text::Str(Session.attempt.lBytesSent);
    frmWizard.lblRetries[1].Caption = text::Str(Session.attempt.iLineRetries);
    frmWizard.lblTotalRetries[1].Caption = text::Str(Session.attempt.iTotalRetries);
}

int PercentOf(double done, double whole)
{
    if (whole <= 0) return 0;
    const double percent = done / whole * 100;
    return percent > 100 ? 100 : static_cast<int>(text::RoundHalfEven(percent));
}

namespace {

void AddToTerminal(const std::string& words)
{
    Control& terminal = frmWizard.Text1;
    std::string& paused = frmWizard.sPausedOutput;
    if (terminal.Text().size() > MaxCommsTextLength) terminal.Text = "";
    if (frmWizard.bOutputPaused) {
        paused += words;
        if (paused.size() > MaxCommsTextLength) paused.clear();
        return;
    }
    std::string shown = terminal.Text();
    if (!paused.empty()) {
        if (shown.size() + paused.size() > MaxCommsTextLength) shown.clear();
        shown += paused;
        paused.clear();
    }
    terminal.Text = shown + words;
}

}  // namespace

void ShowAllCommsTextUpdate(const std::string& words)
{
    // A serial port hands out so many bytes at most; a faster line must not break the terminal's bound with one piece.
    constexpr std::size_t longestPiece = 1024;
    for (std::size_t at = 0; at == 0 || at < words.size(); at += longestPiece)
        AddToTerminal(words.substr(at, longestPiece));
    WriteLog(words);
}

void EnableCmdEntry()
{
    frmWizard.lblSendCmd.Enabled = true;
    frmWizard.txtSendCmd.Enabled = true;
    frmWizard.txtSendCmd.Locked = false;
    frmWizard.imgEnabled.Visible = true;
    frmWizard.imgDisabled.Visible = false;
}

void DisableCmdEntry()
{
    frmWizard.lblSendCmd.Enabled = false;
    frmWizard.txtSendCmd.Enabled = false;
    frmWizard.txtSendCmd.Locked = true;
    frmWizard.imgEnabled.Visible = false;
    frmWizard.imgDisabled.Visible = true;
}

void ShowBanner(int index, const std::string& words, int backColor, int foreColor)
{
    Control& banner = frmWizard.lblFlashStatus[index];
    banner.Caption = words;
    banner.BackColor = backColor;
    banner.ForeColor = foreColor;
    banner.Bold = true;
    banner.Visible = true;
}

void AddParamsSent(const std::string& words) { frmWizard.txtParamsSent.Text = frmWizard.txtParamsSent.Text() + words; }
