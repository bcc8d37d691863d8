#include "console/Operator.h"

#include <QFileInfo>

#include "forms/frmPickAntennaDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "link/PortAway.h"
#include "persistence/INIUtilities.h"
#include "platform/ProgramFiles.h"
#include "session/Round.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "wizard/frmWizard_Events.h"

namespace {

std::string Lines(const std::string& words) { return text::Replace(words, "\r", ""); }

const std::string& FileInHand() { return Session.plan->stages.front().sFlashFile; }

}  // namespace

Operator::Operator(const Options& options, ConsoleComputer& console, Ports& ports, Voice& voice)
    : options_(options), console_(console), ports_(ports), voice_(voice), supply_(options.powerCycle)
{
}

// --- the hands -------------------------------------------------------------------------------------------------------

void Operator::Leave(int exitCode, const std::string& why)
{
    if (!why.empty()) voice_.Complain("refused", why);
    console_.Leave(exitCode);
    throw Over{};
}

/// What the system asks to be pressed is seen to be pressed.
void Operator::Press(Control& button)
{
    console_.TellForms();
    const std::string caption = text::Replace(button.Caption(), "&", "");
    voice_.Tell("press", "[" + caption + "]", {{"button", QString::fromStdString(button.Name)}});
    button.Click();
}

void Operator::Next()
{
    if (!IsOn(frmWizard.cmdNav[2])) Leave(CodeOfStage(), "");
    Press(frmWizard.cmdNav[2]);
    if (IsExitRequested()) throw Over{};
}

void Operator::Await(const std::function<bool()>& holds)
{
    while (!IsExitRequested() && !holds()) RunRound();
    if (IsExitRequested()) throw Over{};
}

int Operator::CodeOfStage() const
{
    switch (stage_) {
    case Stage::Port: return END_NO_PORT;
    case Stage::Versions: return END_NOT_KNOWN;
    case Stage::File: return END_BAD_FILE;
    case Stage::Restored: return END_DONE;
    case Stage::Flash: break;
    }
    // A later stage of board 21 comes behind one that is written already.
    if (Session.flash.bFlashFileBad) return Session.flash.stage > 0 ? END_FLASH_FAILED : END_BAD_FILE;
    if (Session.flash.iFlashPhase == FLASH_FINISHED) return END_PARAMS_OUT;
    return lastMode_ == STATE_PREFLASH ? END_PARAMS_UNREAD : END_FLASH_FAILED;
}

void Operator::Watch()
{
    if (IsExitRequested()) return;
    if (Session.link.iCommMode != STATE_IDLE) lastMode_ = Session.link.iCommMode;
    if (Session.link.iCommMode == STATE_WAIT_ERASE || Reporter::IsTransfer()) erased_ = true;
    ServePowerSwitch();
    EndIdleWait();
}

/// Nobody is there to end a wait that leads nowhere.
void Operator::EndIdleWait()
{
    constexpr double patienceSeconds = 1800;
    const auto moved = std::tuple{Session.link.iCommMode, Session.attempt.lBytesSent, Session.captured.iPreflashCmdIdx,
                                  Session.restore.iPostflashCmdIdx, IsPortAway()};
    const double now = console_.Seconds();
    if (moved != moved_) {
        moved_ = moved;
        movedAt_ = now;
    }
    if (!console_.IsUnattended() || now - movedAt_ < patienceSeconds) return;
    voice_.Complain("refused", IsPortAway() ? "The port has been away for half an hour."
                                            : "Nothing has come from the antenna for half an hour.");
    console_.Leave(CodeOfStage());
}

// --- the board -------------------------------------------------------------------------------------------------------

void Operator::GoToVersions()
{
    const std::vector<OfferedBoard> boards = AllBoards();
    const OfferedBoard* board = &boards.front();
    std::string why;
    if (!options_.board.empty()) {
        board = FindBoard(boards, options_.board, why);
    } else if (!console_.IsUnattended()) {
        std::vector<std::string> names;
        for (const OfferedBoard& choice : boards) names.push_back(choice.name);
        const int picked = console_.Ask().PickFromList("Board", names, 0);
        if (IsExitRequested()) throw Over{};
        if (picked < 0) Leave(END_CANCELLED, "");
        board = &boards[static_cast<std::size_t>(picked)];
    }
    if (board == nullptr) Leave(END_USAGE, why);
    while (frmWizard.iCurrentStep < STEP_2) Next();
    PressBoard(*board);
    voice_.Tell("board", "Board: " + board->name, {{"type", board->type}});
    Next();  // returns when the versions are there, or it is known that they won't come
    if (!ProgramFileExists("FLASHCFG.TXT")) Leave(END_BAD_FILE, "");
}

void Operator::ChooseConnection()
{
    if (!BoardOf(Session.choice.iBoardType).choosesPort) return;
    console_.TellForms();  // what is new there isn't to follow on the question's line
    int picked = options_.usb ? 1 : 0;
    if (!options_.usb && !console_.IsUnattended())
        picked = console_.Ask().Pick(Lines(frmWizard.lblPortSelect.Caption) + "\n",
                                     {{frmWizard.optSerial.Caption, "r"}, {frmWizard.optUSB.Caption, "u"}}, 0);
    if (IsExitRequested()) throw Over{};
    if (picked < 0) Leave(END_CANCELLED, "");
    (picked == 1 ? frmWizard.optUSB : frmWizard.optSerial).Click();
}

void Operator::PickAntenna()
{
    PickAntennaForm& dialog = frmPickAntennaDialog;
    frmWizard.cmdPickAntenna.Click();
    const std::vector<std::string> names = dialog.lstAntennas.List;
    const int picked = options_.antenna.empty() ? console_.Ask().PickFromList("Antenna", names, -1)
                                                : EntryMeant(options_.antenna, names);
    if (IsExitRequested()) throw Over{};
    if (picked < 0 && options_.antenna.empty()) return dialog.cmdCancel.Click();
    if (picked < 0)
        Leave(END_NOT_KNOWN, "FLASHCFG.TXT has no antenna \"" + options_.antenna +
                                 "\", or more than one; --list-antennas has those that can be picked.");
    dialog.lstAntennas.Select(picked);
    if (!IsOn(dialog.cmdOK)) Leave(END_NOT_KNOWN, "");
    dialog.cmdOK.Click();
}

void Operator::AwaitVersions()
{
    const auto known = [] { return IsOn(frmWizard.cmdNav[2]); };
    const auto given = [] { return IsOn(frmWizard.cmdRetryGetVersions); };
    ChooseConnection();
    for (bool again = true; !known();) {
        Await([&] { return known() || given(); });
        if (known()) break;
        if (!options_.antenna.empty()) {
            PickAntenna();
            continue;
        }
        console_.TellForms();
        int picked = again ? 0 : 2;
        if (!console_.IsUnattended())
            picked = console_.Ask().Pick("",
                                         {{frmWizard.cmdRetryGetVersions.Caption, "r"},
                                          {frmWizard.cmdPickAntenna.Caption, "s"},
                                          {"Cancel", "c"}},
                                         0);
        if (IsExitRequested()) throw Over{};
        again = false;
        if (picked == 0)
            Press(frmWizard.cmdRetryGetVersions);
        else if (picked == 1)
            PickAntenna();
        else
            Leave(END_NOT_KNOWN, "");
    }
    if (options_.task != Task::Identify) return;
    if (!HasVersions(Session.choice.iBoardType)) Leave(END_NOT_KNOWN, "This board doesn't tell its version.");
    console_.TellForms();
    Leave(END_DONE, "");
}

// --- the file --------------------------------------------------------------------------------------------------------

/// A flash file of the caller's own directory comes first, then one of the program's.
void Operator::TakeFile(const std::string& path)
{
    const QFileInfo own(QString::fromStdString(path));
    const std::string file = own.isFile() ? own.absoluteFilePath().toStdString() : path;
    if (!ProgramFileExists(file)) Leave(END_BAD_FILE, "There is no file " + path + ".");
    TakeFlashFile(ProgramFile(file).string());
}

/// The antenna that was named is the one that has answered.
void Operator::CheckAntenna()
{
    const std::string& name = Session.plan->row.AntennaName;
    if (options_.antenna.empty() || text::Holds(name, options_.antenna)) return;
    Leave(END_NOT_KNOWN,
          "This is \"" + name + "\" and not \"" + options_.antenna + "\". Leave out --antenna to flash what is there.");
}

void Operator::ConfirmFlash()
{
    if (console_.IsUnattended()) return;
    if (options_.file.empty()) {
        const std::string file = console_.Ask().AskForText("Flash file", FileInHand());
        if (IsExitRequested()) throw Over{};
        if (file != FileInHand()) TakeFile(file);
    }
    const int picked = console_.Ask().Pick("Start the flash?", {{"Yes", "y"}, {"No", "n"}}, 0);
    if (IsExitRequested()) throw Over{};
    if (picked != 0) Leave(END_CANCELLED, "");
}

void Operator::ChooseFile()
{
    Next();
    if (frmWizard.iCurrentStep != STEP_4) Leave(END_NOT_KNOWN, "");
    CheckAntenna();
    stage_ = Stage::File;
    if (!options_.file.empty()) TakeFile(options_.file);
    console_.TellForms();
    ConfirmFlash();
    if (options_.skipParameters) SkipParameters();
}

// --- the flash -------------------------------------------------------------------------------------------------------

void Operator::Flash()
{
    stage_ = Stage::Flash;
    lastMode_ = Session.plan->bSkipParams ? STATE_WAIT_RESET : STATE_PREFLASH;
    Next();
    if (Session.link.iCommMode == STATE_IDLE) Leave(END_BAD_FILE, "");
    Await([] { return IsOn(frmWizard.cmdNav[2]) || Session.link.iCommMode == STATE_IDLE; });
    if (IsOn(frmWizard.cmdNav[2])) return;
    Leave(lastMode_ == STATE_PREFLASH || erased_ ? CodeOfStage() : END_BAD_FILE, "");
}

void Operator::Restore()
{
    Next();
    if (frmWizard.iCurrentStep == STEP_FINISHED) return;
    Await([] { return IsOn(frmWizard.cmdNav[2]) || Session.link.iCommMode == STATE_IDLE; });
    if (!IsOn(frmWizard.cmdNav[2])) Leave(END_PARAMS_OUT, "");
    Next();
}

void Operator::Finish()
{
    const bool wanted = options_.skipParameters || BoardOf(Session.plan->iBoardType).holdsNoParams;
    const bool back = Session.flash.bSkipParams ? wanted : Session.restore.bAllBack;
    if (frmShowPostFlashCmds.Self.Visible)
        voice_.Tell("commands", Lines(frmShowPostFlashCmds.lblInstructions.Caption) + "\n\n" +
                                    Lines(frmShowPostFlashCmds.txtShowPostFlashCmds.Text));
    if (Session.flash.bSkipParams && supply_.IsThere()) {
        const double since = console_.Seconds();
        Await([&] { return console_.Seconds() - since >= 2; });  // it still stores what came last
        SwitchPower();
        Await([this] { return !supply_.IsSwitching(); });
        TellSupply();
    }
    if (back) stage_ = Stage::Restored;
    Press(frmWizard.cmdNav[3]);
}

void Operator::Work()
{
    if (IsExitRequested()) return;  // the wait that led here has brought the end
    try {
        if (!options_.log.empty()) console_.KeepLog();
        if (IsSettingTrue(SETTING_DRY_RUN))
            Leave(END_USAGE, "DryRunMode is on in Burnline.ini: nothing would be sent to the antenna.");
        AwaitPort();
        GoToVersions();
        AwaitVersions();
        ChooseFile();
        Flash();
        Restore();
        Finish();
    } catch (const Over&) {
        // Why was told when it was decided.
    }
}
