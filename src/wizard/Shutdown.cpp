// The way out: the ordered end of the program, and the window's close button.

#include "forms/frmWizard.h"
#include "link/SerialPortIO.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/ProgramFiles.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "wizard/frmWizard_Events.h"

namespace {

/// Leaves an antenna that isn't whole by the user's word alone.
bool MayLeave() { return !Session.flash.bAtRisk || ShowMsgBox(23, "CleanUpForShutdown") == Answer::OK; }

std::string ClosingLine(int reason)
{
    const std::string start = "++>Shutting down Burnline Assistant - ";
    const std::string now = computer->DateAndTime();
    switch (reason) {
    case 1: return start + "Cancelled by User " + now + " =====";
    case 2: return start + "Finished " + now + " =====";
    case 3: return start + "Update scheduled " + now + " =====";
    default: return start + "Unknown reason " + now + " ====";  // one sign less, on purpose
    }
}

void CloseLogs()
{
    const std::string& copy = Session.program.sSavedLogName;
    if (copy.empty()) {
        CloseLog();
        return;
    }
    if (CloseLogAndCopyTo(copy)) return;
    computer->MsgBox("The log could not be saved as " + copy + ".\n\nIt is kept as " + ProgramFile("BNL.LOG").string() +
                         "; the next start of the program renames it to BNLBAK.LOG.",
                     Buttons::OK, Icon::Exclamation, "Burnline Assistant - Save Log File", Answer::OK);
}

}  // namespace

void CleanUpForShutdown(int reason)
{
    // The timers end here alone: the port and the log are closed already, and opening the log again would begin a new
    // one.
    if (IsExitRequested() && !frmWizard.Timer1.Enabled) return;
    if (reason == 1 && !IsExitRequested() && !MayLeave()) return;

    if (frmWizard.bHelpOpened) computer->CloseHelp();
    Guarded("CleanUpForShutdown", CloseComm);
    if (!IsLogOpen()) OpenLog();
    WriteLogLine(ClosingLine(reason));
    CloseLogs();
    frmWizard.Timer1.Enabled = false;
    frmWizard.Timer2.Enabled = false;
    SetExitRequested(true);
}

void Form_QueryUnload() { CleanUpForShutdown(1); }

bool Form_Unload() { return IsExitRequested(); }
