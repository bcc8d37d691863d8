// The one route by which failures and results reach the user.

#include <string>

#include "forms/frmWizard.h"
#include "messages/MessageTable.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/Failure.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

/// Words for the log: on a line of their own, whatever stands ahead of them.
void LogLine(const std::string& words) { WriteLogLine("\r\n" + text::Replace(words, "\n", text::CrLf)); }

std::string Filled(const char* words, int code, const std::string& detail)
{
    std::string filled = text::Replace(words, "{port}", text::Num(Session.link.iCommPort));
    filled = text::Replace(filled, "{code}", text::Num(code));
    filled = text::Replace(filled, "{revision}", computer->Revision());
    filled = text::Replace(filled, "{detail}", detail);
    return text::Replace(filled, "{directory}", computer->ProgramDirectory());
}

Answer Show(int code, const std::string& origin, const std::string& detail, bool withBox)
{
    const Message& message = MessageOf(code, Session.link.iCommPort);
    const std::string words = message.words ? Filled(message.words, code, detail) : std::string();
    if (message.log) LogLine(text::Replace(Filled(message.log, code, detail), "{words}", words));
    Answer answer = Answer::OK;
    // A program on its way out has said why; a second file that can't be written is no news.
    const bool leaving = message.ends && IsExitRequested();
    if (withBox && message.words && !leaving)
        answer = computer->MsgBox(words, message.buttons, message.icon, message.title, message.standard);
    if (!origin.empty()) LogLine("ShowMsgBox was called from " + origin + " with error code " + text::Num(code) + ".");
    return answer;
}

void ShowUSBHelp()
{
    constexpr int testedAdapters = 1050;
    frmWizard.bHelpOpened = true;
    computer->ShowHelp(testedAdapters, "usb");
}

}  // namespace

Answer ShowMsgBox(int code, const std::string& origin, const std::string& detail)
{
    // A failure in here ends the message with what has been done: told by itself it might never end.
    try {
        return Show(code, origin, detail, true);
    } catch (...) {
        std::string words;
        const int number = FailureNumber(words);
        LogLine("++>Message " + text::Num(code) + " was ended by failure #" + text::Num(number) + " " + words);
        return Answer::OK;
    }
}

void LogMsg(int code, const std::string& origin) { Show(code, origin, {}, false); }

void TellFailure(int number, const std::string& origin)
{
    const Answer answer = ShowMsgBox(number, origin);
    if (number == FAIL_PORT_READ && answer == Answer::Yes) ShowUSBHelp();
    if (MessageOf(number, Session.link.iCommPort).ends) SetExitRequested(true);
}

void ReportFailure(const std::string& name)
{
    std::string detail;
    const int number = FailureNumber(detail);
    if (!detail.empty()) LogLine("++>" + name + ": " + detail);
    TellFailure(number, name);
}
