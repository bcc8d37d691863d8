#include "link/PortAway.h"

#include <utility>

#include "display/Display.h"
#include "display/PortStatus.h"
#include "forms/frmWizard.h"
#include "link/SerialPortIO.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

constexpr double lookEvery = 1;  // seconds

/// The user has been asked to cut the power of an antenna whose USB port goes with it.
bool IsExpectedToGo() { return Session.choice.bUSBLink && Session.link.iCommMode == STATE_WAIT_RESET; }

std::string PortName() { return "COM" + text::Num(Session.link.iCommPort); }

/// Once in the log; in the status of a flash too.
void Tell(const std::string& words)
{
    WriteLogLine("++>" + words);
    if (frmWizard.iCurrentStep >= STEP_5) StatusTextUpdate(words);
    if (frmWizard.iCurrentStep == STEP_6) AddParamsSent(words + "\r\n");
}

void TellLoss(const PortAway& away)
{
    const std::string since = text::Mid(away.since, 12, 8);
    const std::string gone = PortName() + " has gone at " + since;
    ShowPortStatus("COM port: " + gone + ".", true, away.adapter);
    ShowPortAdvice("The adapter has gone since " + since + ": " + away.adapter +
                   ". Plug it in again, and look after its cable and the antenna's power: the work goes on by itself "
                   "when it is back. You can also pick another port from the COM port menu above.");
    Tell(gone + ": " + away.adapter + ". Waiting until it is back.");
}

/// Why the port that is there again can't be had yet.
void TellWhy(int state)
{
    const std::string words = state == PORT_IN_USE      ? "another program holds it"
                              : state == PORT_FORBIDDEN ? "you may not open it"
                                                        : "";
    if (words.empty()) return;
    ShowPortStatus("COM port: " + PortName() + " is back, but " + words + ".", true,
                   computer->DescribeCommPort(Session.link.iCommPort).remedy);
}

}  // namespace

bool IsPortAway() { return Session.link.away.has_value(); }

bool IsOfPort(const Failure& failure) { return failure.number == FAIL_PORT_CLOSED || failure.number == FAIL_PORT_LOST; }

void OnPortFailure()
{
    if (Session.link.iCommID > 0) return NotePortLoss();
    if (!IsPortAway()) ShowMsgBox(FAIL_PORT_CLOSED, "Main");
}

void NotePortLoss()
{
    if (IsPortAway()) return;
    PortAway away;
    away.adapter = Session.link.sAdapter;
    away.since = computer->DateAndTime();
    away.from = away.lookedAt = computer->Seconds();
    away.silent = IsExpectedToGo();
    away.menu = frmWizard.mnuCommPort.Enabled;
    CloseComm();
    Session.link.away = away;
    HoldNavigation();
    if (away.silent) return;
    frmWizard.mnuCommPort.Enabled = true;
    UncheckPort();
    TellLoss(away);
}

void LookForPort()
{
    PortAway& away = *Session.link.away;
    if (computer->Seconds() < away.lookedAt + lookEvery) return;
    away.lookedAt = computer->Seconds();
    const int state = computer->TestCommPort(Session.link.iCommPort);
    if (state == PORT_USABLE && OpenCommAgain()) return EndPortAway();
    if (!away.silent) TellWhy(state);
}

void EndPortAway()
{
    if (!IsPortAway()) return;
    ReleaseNavigation();
    const PortAway away = *std::exchange(Session.link.away, std::nullopt);
    HidePortAdvice();
    if (away.silent) return;
    frmWizard.mnuCommPort.Enabled = away.menu;
    const auto seconds = static_cast<long>(computer->Seconds() - away.from);
    Tell(PortName() + " is back, it was away for " + text::Num(seconds) + " s. Going on.");
    if (Session.link.bPortReady) ShowPortStatus("COM port: " + PortName() + " is back", false);
}

void ReleaseNavigation()
{
    if (!IsPortAway()) return;
    frmWizard.cmdNav[0].Enabled = Session.link.away->cancel;
    frmWizard.cmdNav[2].Enabled = Session.link.away->next;
}

void HoldNavigation()
{
    if (!IsPortAway()) return;
    Session.link.away->cancel = frmWizard.cmdNav[0].Enabled;
    Session.link.away->next = frmWizard.cmdNav[2].Enabled;
    if (!Session.link.away->silent) frmWizard.cmdNav[0].Enabled = true;
    frmWizard.cmdNav[2].Enabled = false;
}
