// STATE_IDLE and STATE_SCRIPT: what the user typed, and the lines of a script.

#include "display/Display.h"
#include "flash/CommandLists.h"
#include "flash/Phases.h"
#include "link/SerialPortIO.h"
#include "session/Session.h"
#include "text/Text.h"

void SendQueuedText()
{
    if (!Session.link.sCmdQueueText.empty()) {
        const std::string queued = Session.link.sCmdQueueText;
        Session.link.sCmdQueueText.clear();
        SendCommandLine(queued);
    }
    Session.link.iWaitTicks = 2;  // looks for typed text five times a second
}

void SendScriptLine()
{
    const std::string line = Session.link.sCmdQueueText;
    Session.link.sCmdQueueText.clear();
    Session.link.iCommMode = STATE_IDLE;
    Session.link.iWaitTicks = 2;
    if (line.empty()) return;
    int seconds = 0;
    if (IsWaitEntry(line, seconds)) {
        ShowAllCommsTextUpdate("==>Waiting " + text::Num(seconds) + " seconds\r\n");
        Session.link.iWaitTicks = TicksOf(seconds);
        return;
    }
    SendCommandLine(line);
    Session.link.iWaitTicks = 10;
}
