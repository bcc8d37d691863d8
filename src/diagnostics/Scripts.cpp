// Command scripts: a text file with one command a line, played into the antenna all at once or line by line. Each line
// takes the way of a typed one: it waits in sCmdQueueText until the tick machine sends it.

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/Rooms.h"
#include "diagnostics/ScriptFile.h"
#include "display/Display.h"
#include "forms/frmWizard.h"
#include "link/SerialPortIO.h"
#include "platform/Computer.h"
#include "platform/ProgramFiles.h"
#include "session/Round.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

/// What the clicks want of the one wait that serves them all; a click in the middle of it begins no second one.
struct Wanted {
    bool wholeScript = false;
    int lines = 0;           // clicks on cmdDoNext that are still to be served
    bool elsewhere = false;  // iScriptLine was moved: the line under way isn't sent any more
    bool isServed = false;   // the wait runs
};
Wanted wanted;

/// The number of commands; two empty elements stand behind them.
int CommandCount() { return static_cast<int>(frmWizard.sScriptLines.size()) - 2; }

// --- what the user sees ------------------------------------------------------------------------------------------

std::string WhereAndWhat(const std::string& ahead)
{
    const std::string& line = frmWizard.sScriptLines.at(static_cast<std::size_t>(frmWizard.iScriptLine));
    return ahead + text::Num(frmWizard.iScriptLine + 1) + " of " + text::Num(CommandCount()) + ": " + line;
}

void ShowNextLine()
{
    frmWizard.ScriptProgress.Visible = false;
    Control& label = frmWizard.lblScriptLine;
    if (CommandCount() < 1)
        label.Caption = "The file holds no command.";
    else if (frmWizard.iScriptLine < CommandCount())
        label.Caption = WhereAndWhat("Next is command ");
    else
        label.Caption =
            "The script is at its end. Uncheck \"" + frmWizard.chkPauseBetweenCmds.Caption() + "\" to run it again.";
}

void ShowLineUnderWay()
{
    const int count = CommandCount(), line = frmWizard.iScriptLine;
    frmWizard.lblScriptLine.Caption = line < count ? WhereAndWhat("Command ") : "All commands are sent.";
    frmWizard.ScriptProgress.Value = PercentOf(line, count);
    frmWizard.ScriptProgress.Visible = wanted.wholeScript;
}

// --- sending -----------------------------------------------------------------------------------------------------

/// Hands the next line to the tick machine and waits until it has sent it. False when the port is gone, something else
/// has taken the link or the user went elsewhere: a line of a script must not reach an antenna that is being flashed.
bool SendLineOfScript()
{
    // What was typed just before goes first, instead of being overwritten.
    if (Session.link.iCommMode == STATE_IDLE && !Session.link.sCmdQueueText.empty())
        SendCommandLine(std::exchange(Session.link.sCmdQueueText, {}));
    ClearCommBuffers();  // nobody reads the answers, and a long script would pile them up
    const int step = frmWizard.iCurrentStep;
    Session.link.sCmdQueueText = frmWizard.sScriptLines.at(static_cast<std::size_t>(frmWizard.iScriptLine));
    Session.link.iCommMode = STATE_SCRIPT;
    if (Session.link.iWaitTicks <= 0) Session.link.iWaitTicks = 2;
    ShowLineUnderWay();
    const auto isFree = [step] {
        return frmWizard.iCurrentStep == step && Session.link.iCommID > 0 && !IsExitRequested();
    };
    while (Session.link.iCommMode == STATE_SCRIPT && !wanted.elsewhere && isFree()) RunRound();
    return isFree() && (wanted.elsewhere || Session.link.iCommMode == STATE_IDLE);
}

/// The line under way was sent: on to the next one. The empty element behind the last command is sent too when the
/// whole script runs, on purpose: it waits out the last command's answer.
void StepOn()
{
    if (wanted.lines > 0) --wanted.lines;
    if (++frmWizard.iScriptLine <= CommandCount()) return;
    frmWizard.iScriptLine = 0;
    wanted.wholeScript = false;
}

void EndOfLines()
{
    wanted.lines = 0;
    frmWizard.cmdDoNext.Enabled = false;
    frmWizard.cmdDoNext.Visible = false;
}

void Abandon()
{
    Session.link.sCmdQueueText.clear();
    if (IsExitRequested()) return;
    if (Session.link.iCommMode == STATE_SCRIPT) Session.link.iCommMode = STATE_IDLE;
    const std::string at = text::Num(frmWizard.iScriptLine + 1) + " of " + text::Num(CommandCount());
    ShowAllCommsTextUpdate("*** The script was ended ahead of command " + at + ". ***\r\n");
}

void Serve()
{
    struct Serving {
        Serving() { wanted.isServed = true; }
        ~Serving() { wanted = {}; }
    };
    if (wanted.isServed) return;
    const Serving serving;
    while (wanted.wholeScript || wanted.lines > 0) {
        if (!wanted.wholeScript && frmWizard.iScriptLine >= CommandCount()) {
            EndOfLines();
            break;
        }
        wanted.elsewhere = false;
        if (!SendLineOfScript()) {
            Abandon();
            break;
        }
        if (!wanted.elsewhere) StepOn();
    }
    ShowNextLine();
}

void MoveTo(int line)
{
    frmWizard.iScriptLine = static_cast<std::int16_t>(line);
    wanted.lines = 0;
    wanted.elsewhere = true;
}

// --- the buttons -------------------------------------------------------------------------------------------------

void cmdRunScript_Click()
{
    MoveTo(0);
    wanted.wholeScript = true;
    Serve();
}

void cmdDoNext_Click()
{
    ++wanted.lines;
    Serve();
}

/// A script that runs stops behind the command under way, and goes on from there by the click.
void chkPauseBetweenCmds_Click()
{
    const bool pause = frmWizard.chkPauseBetweenCmds.Value == 1;
    frmWizard.cmdDoNext.Enabled = pause;
    frmWizard.cmdDoNext.Visible = pause;
    frmWizard.cmdRunScript.Enabled = !pause;
    frmWizard.cmdRunScript.Visible = !pause;
    if (pause) wanted.wholeScript = false;
    if (!wanted.isServed) ShowNextLine();
}

void cmdOpenScriptFile_Click()
{
    const FileDialog dialog{"Open Command Script File", "Script files (*.TXT, *.CMD)|*.txt;*.cmd|All Files (*.*)|*.*",
                            computer->ProgramDirectory(), ""};
    const std::vector<std::string> chosen = computer->OpenDialog(dialog);
    if (chosen.empty()) return;
    const std::filesystem::path path = PathOf(chosen.front());
    const std::string name = path.filename().string();
    ScriptFile script = ReadScriptFile(path);
    if (!script.problem.empty())
        computer->MsgBox("The script file was not read, or not to its end - " + chosen.front() + "\n\n" +
                             script.problem + "\n\nPlease check the file, then open it again.",
                         Buttons::OK, Icon::Exclamation, "QEL Burnline Assistant - Command Script", Answer::OK);

    // Of a script that runs, no further line goes out.
    wanted.wholeScript = false;
    MoveTo(0);
    if (Session.link.iCommMode == STATE_SCRIPT) {
        Session.link.sCmdQueueText.clear();
        Session.link.iCommMode = STATE_IDLE;
    }
    const std::size_t count = script.commands.size();
    frmWizard.sScriptLines = std::move(script.commands);
    frmWizard.sScriptLines.resize(count + 2);
    frmWizard.lblScriptFile.Caption = name + ": " + std::to_string(count) + (count == 1 ? " command" : " commands");
    frmWizard.chkPauseBetweenCmds.Enabled = true;
    chkPauseBetweenCmds_Click();  // at the end of the script before, its button was taken away
    frmWizard.cmdRunScript.Enabled = true;
    ShowNextLine();
}

}  // namespace

void ConnectScripts()
{
    frmWizard.cmdOpenScriptFile.Click = cmdOpenScriptFile_Click;
    frmWizard.cmdRunScript.Click = cmdRunScript_Click;
    frmWizard.cmdDoNext.Click = cmdDoNext_Click;
    frmWizard.chkPauseBetweenCmds.Click = chkPauseBetweenCmds_Click;
}

void LoadScripts()
{
    frmWizard.sScriptLines.assign(2, "");
    for (Control* control : {&frmWizard.cmdRunScript, &frmWizard.chkPauseBetweenCmds, &frmWizard.cmdDoNext})
        control->Enabled = false;
    frmWizard.cmdDoNext.Visible = false;
    frmWizard.ScriptProgress.Visible = false;
}
