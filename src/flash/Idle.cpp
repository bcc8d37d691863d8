// STATE_IDLE and STATE_SCRIPT: what the user typed, and the lines of a script.

#include "display/Display.h"
#include "flash/CommandLists.h"
#include "flash/Phases.h"
#include "frame/SessionState.h"
#include "link/SerialPortIO.h"
#include "text/Text.h"

void SendQueuedText()
{
    if (!Session.sCmdQueueText.empty()) {
        const std::string queued = Session.sCmdQueueText;
        Session.sCmdQueueText.clear();
        SendCommandLine(queued);
    }
    Session.iWaitTicks = 2;  // looks for typed text five times a second
}

void SendScriptLine()
{
    const std::string line = Session.sCmdQueueText;
    Session.sCmdQueueText.clear();
    Session.iCommMode = STATE_IDLE;
    Session.iWaitTicks = 2;
    if (line.empty()) return;
    int seconds = 0;
    if (IsWaitEntry(line, seconds)) {
        ShowAllCommsTextUpdate("==>Waiting " + text::Num(seconds) + " seconds\r\n");
        Session.iWaitTicks = TicksOf(seconds);
        return;
    }
    SendCommandLine(line);
    Session.iWaitTicks = 10;
}
