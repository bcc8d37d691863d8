// The one route by which failures and results reach the user.

#include <string>

#include "display/Display.h"
#include "forms/frmWizard.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "platform/SerialControl.h"
#include "text/Text.h"
#include "wizard/Handlers.h"
#include "wizard/MessageTable.h"

namespace {

/// Words for the log: on a line of their own, whatever stands ahead of them.
void LogLine(const std::string& words) { WriteLogLine("\r\n" + text::Replace(words, "\n", text::CrLf)); }

// --- what an answer does -----------------------------------------------------------------------------------------

void ResumeCommands()
{
    if (Session.bPortOpened) EnableCmdEntry();
}

void LeavePortClosed(Answer answer)
{
    if (answer != Answer::OK) return;
    Session.iCommMode = STATE_IDLE;
    if (Session.iCommPort != 0) UncheckCurrentPort();
    DisableCmdEntry();
    SetNavCmds(14);
}

void WaitForAnotherPort(Answer answer)
{
    if (answer != Answer::OK) return;
    Session.iCommMode = STATE_IDLE;
    if (Session.bPortOpened) {
        EnableCmdEntry();
    } else {
        SetNavCmds(14);
    }
}

void ResetIntoLoader()
{
    // Board 21's loader starts at 9600 again: at the speed of the transfer its sign-on would be noise, at every retry.
    if (IsSettingTrue(SETTING_USE_FAST_BAUD) && Session.iBoardType == 21) SetLinkSettings("9600,N,8,1");
    if (BoardOf(Session.iBoardType).takesFlasha) MSComm1->Output("flasha\r");
}

/// The whole flash starts again at the antenna's sign-on; there is no time limit, since the user may have to climb.
void RetryFlash(Answer answer)
{
    if (answer != Answer::Retry) return;
    ResumeCommands();
    Session.iCommMode = STATE_WAIT_RESET;
    Session.iWaitTicks = 0;
    frmWizard.cmdNav[0].Enabled = true;
    if (!BoardOf(Session.iBoardType).takesFlasha) {
        StatusTextUpdate("Please cycle power to the antenna to reset");
        ShowBanner(0, "*** Please cycle power to the antenna to reset. ***", PaleYellow, Red);
    } else {
        // It resets on command; if it has lost its power or its software, only the user's hand helps.
        ShowBanner(0, "*** Waiting for the antenna to reset. If nothing happens, cycle its power. ***", PaleYellow,
                   Red);
    }
    StatusTextUpdate("Waiting for reset");
    LogLine("++>FLASHING_ERROR_CAN_RETRY: Will retry entire flash");
    ResetIntoLoader();
}

void RetryFlashSilently(Answer)
{
    Session.iCommMode = STATE_WAIT_RESET;
    Session.iWaitTicks = 10;
    LogLine("++>FLASHING_ERROR_AUTO_RETRY: Will retry entire flash");
    ResetIntoLoader();
}

void ShowUSBHelp(Answer answer)
{
    constexpr int testedAdapters = 1050;
    if (answer != Answer::Yes) return;
    frmWizard.bHelpOpened = true;
    computer->ShowHelp(testedAdapters, "usb");
}

void AgreeToLeave(Answer answer)
{
    if (answer == Answer::OK) Session.bOKToClose = true;
}

// --- where it leads ----------------------------------------------------------------------------------------------

void Exit(Answer) { SetExitRequested(true); }

void Close(Answer) { CleanUpForShutdown(1); }

void CloseOnCancel(Answer answer)
{
    if (answer == Answer::Cancel) CleanUpForShutdown(1);
}

void StepOrClose(Answer answer, int step)
{
    CloseOnCancel(answer);
    if (answer == Answer::OK) SetStep(step);
}

void BackToPortChoice(Answer answer)
{
    if (answer == Answer::OK) {
        Session.iCommMode = STATE_IDLE;
        ResumeCommands();
    }
    StepOrClose(answer, STEP_1);
}

void BackToVersions(Answer answer) { StepOrClose(answer, STEP_3); }

/// What belongs to a message beside its words. `onAnswer` is its own work; `then` leads elsewhere, behind the last line
/// that the message writes to the log.
struct Effect {
    int code;
    void (*onAnswer)(Answer);
    void (*then)(Answer);
};

constexpr Effect effects[] = {
    {3, nullptr, BackToPortChoice},
    {4, LeavePortClosed, CloseOnCancel},
    {6, nullptr, BackToVersions},
    {15, RetryFlash, CloseOnCancel},
    {16, nullptr, Close},
    {21, nullptr, CloseOnCancel},
    {22, WaitForAnotherPort, CloseOnCancel},
    {23, AgreeToLeave, nullptr},
    {25, nullptr, Exit},
    {27, LeavePortClosed, CloseOnCancel},
    {29, RetryFlashSilently, nullptr},
    {52, nullptr, Exit},
    {75, nullptr, Exit},
    {8018, nullptr, Exit},
    {8020, ShowUSBHelp, nullptr},
    {30012, nullptr, Exit},
};

Effect EffectOf(int code, bool known)
{
    for (const Effect& effect : effects)
        if (effect.code == code) return effect;
    return {code, nullptr, known ? nullptr : Exit};
}

// --- the message itself ------------------------------------------------------------------------------------------

std::string Filled(const char* words, int code)
{
    std::string filled = text::Replace(words, "{port}", text::Num(Session.iCommPort));
    filled = text::Replace(filled, "{code}", text::Num(code));
    filled = text::Replace(filled, "{revision}", computer->Revision());
    filled = text::Replace(filled, "{board}", BoardNameForLog());
    return text::Replace(filled, "{directory}", computer->ProgramDirectory());
}

/// For a port that this user may not open: how to be allowed to.
std::string ShowRemedy(int code)
{
    if (code != 27 || computer->TestCommPort(Session.iCommPort) != PORT_FORBIDDEN) return {};
    const std::string remedy = computer->DescribeCommPort(Session.iCommPort).remedy;
    frmWizard.lblCommPortStatus.ToolTipText = remedy;
    return ": " + remedy;
}

void ShowUpdateComplete()
{
    frmWizard.lblStep[6].Caption = "Update Complete";
    frmWizard.lblStep[7].Caption = "Finished!";
    frmWizard.lblStep[6].Visible = true;
    frmWizard.lblStep[7].Visible = true;
}

Answer Ask(const Message& message, int code, const std::string& words, const Effect& effect)
{
    if (code == 15 && IsSettingTrue(SETTING_AUTO_RETRY_ONCE) && !Session.bAutoRetryUsed) {
        Session.bAutoRetryUsed = true;
        return Answer::Retry;
    }
    const bool unattended = code == 30006 && Session.bUpdateCheckRunning;
    // A program on its way out has said why; a second file that can't be written is no news.
    const bool leaving = effect.then == Exit && IsExitRequested();
    if (!message.words || unattended || leaving) return Answer::OK;
    return computer->MsgBox(words, message.buttons, message.icon, message.title);
}

void Tell(int code, const std::string& origin)
{
    const Message& message = MessageOf(code, Session.iCommPort);
    const Effect effect = EffectOf(code, message.code == code);
    const std::string words = message.words ? Filled(message.words, code) : std::string();

    if (message.status) ShowPortStatus(Filled(message.status, code));
    const std::string remedy = ShowRemedy(code);
    if (code == 14) ShowUpdateComplete();
    if (message.log) LogLine(text::Replace(Filled(message.log, code), "{words}", words) + remedy);

    const Answer answer = Ask(message, code, words, effect);
    if (effect.onAnswer) effect.onAnswer(answer);
    if (!origin.empty()) LogLine("ShowMsgBox was called from " + origin + " with error code " + text::Num(code) + ".");
    if (effect.then) effect.then(answer);
}

}  // namespace

void ShowMsgBox(int code, const std::string& origin)
{
    // A failure in here ends the message with what has been done: told by itself it might never end.
    try {
        Tell(code, origin);
    } catch (...) {
        std::string detail;
        const int number = FailureNumber(detail);
        LogLine("++>Message " + text::Num(code) + " was ended by failure #" + text::Num(number) + " " + detail);
    }
}

void ReportFailure(const std::string& name)
{
    std::string detail;
    const int number = FailureNumber(detail);
    if (!detail.empty()) LogLine("++>" + name + ": " + detail);
    ShowMsgBox(number, name);
}

void SetExitRequested(bool value) { Session.bExitRequested = value; }

bool IsExitRequested() { return Session.bExitRequested; }
