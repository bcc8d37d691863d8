// Which satellites the antenna tracks: a pair from a fixed list, a pick from the antenna's own lists, or a USER
// satellite that is described to it.

#include <cstdint>
#include <string>
#include <vector>

#include "diagnostics/Diagnostics.h"
#include "diagnostics/Rooms.h"
#include "display/Display.h"
#include "forms/frmWizard.h"
#include "link/SerialPortIO.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

struct Pair {
    const char* name;
    const char* line;
};

constexpr Pair predefinedPairs[] = {
    {"DirecTV 101 only.", "SATINSTALL,DSS_101,NONE"},
    {"DirecTV 101 and 119.", "SATINSTALL,DSS_101,DSS_119"},
    {"Dish 119 only.", "SATINSTALL,ECHO_119,NONE"},
    {"Dish 119 and 110.", "SATINSTALL,ECHO_119,ECHO_110"},
};

const std::string ListA = "SATLISTA";
const std::string ListB = "SATLISTB";
const std::string ThreeSatellites = "TRISAT";

// --- asking for a list -------------------------------------------------------------------------------------------

void AskForList(const std::string& command, CommMode mode)
{
    constexpr int patience = 200;  // 20 s
    CommHandler();                 // what the antenna has said until now answers another question
    ClearCommBuffers();
    SendCommandLine(command);
    Session.link.iCommMode = mode;
    Session.link.iWaitTicks = patience;
}

void BackToIdle()
{
    Session.link.iCommMode = STATE_IDLE;
    Session.link.iWaitTicks = 2;
}

void cmdGetSatListA_Click() { AskForList(ListA, STATE_SAT_LIST_A); }

void cmdGetSatListB_Click()
{
    const std::string& first = frmWizard.sInstallSatA;
    if (first.empty()) return;
    if (text::Equal(first, ThreeSatellites))
        ParseSatListB(ThreeSatellites);
    else
        AskForList(ListB + "," + first, STATE_SAT_LIST_B);
}

// --- the answer --------------------------------------------------------------------------------------------------

/// The names behind the commas of an answer; what stands ahead of the first one is the command.
std::vector<std::string> NamesIn(const std::string& reply)
{
    std::vector<std::string> names = text::Split(reply, ",");
    names.erase(names.begin());
    for (std::string& name : names) name = text::Replace(text::Replace(text::Trim(name), "\r", ""), "\n", "");
    return names;
}

void Show(Control& list, std::vector<std::string> names, const std::string& last)
{
    names.push_back(last);
    list.List = names;
    list.Visible = true;
    list.Select(0);
    BackToIdle();
}

/// Where the line of an answer ends; npos while its end is missing, so that its last name may be half a name. A line
/// that ends in a comma goes on in the next one.
std::size_t EndOfAnswer(const std::string& answer)
{
    constexpr const char* lineEnds = "\r\n";
    std::size_t end = answer.find_first_of(lineEnds);
    while (end != std::string::npos && answer[end - 1] == ',')
        end = answer.find_first_of(lineEnds, answer.find_first_not_of(lineEnds, end));
    return end;
}

bool IsAskedForA() { return Session.link.iCommMode == STATE_SAT_LIST_A; }

/// What was heard from the word of the answer on; empty while the word is missing. Other text isn't the answer.
std::string AnswerHeard()
{
    return text::Mid(Session.link.sCommLine, text::FindLast(Session.link.sCommLine, IsAskedForA() ? ListA : ListB));
}

void Parse(const std::string& answer)
{
    if (IsAskedForA())
        ParseSatListA(answer);
    else
        ParseSatListB(answer);
}

// --- what is picked and sent -------------------------------------------------------------------------------------

void cboPredefinedSats_Click()
{
    const int index = frmWizard.cboPredefinedSats.ListIndex;
    if (index != -1) frmWizard.sSatInstallLine = predefinedPairs[index].line;
}

void Pick(const Control& list, std::string& picked)
{
    const int index = list.ListIndex;
    if (index != -1) picked = list.List().at(static_cast<std::size_t>(index));
}

void cmdSatInstall_Click()
{
    WizardForm& form = frmWizard;
    // A pick from the antenna's lists wins over a pre-defined pair.
    if (!form.sInstallSatA.empty() && !form.sInstallSatB.empty())
        form.sSatInstallLine = "SATINSTALL," + form.sInstallSatA + "," + form.sInstallSatB;
    if (!form.sSatInstallLine.empty()) SendAfterHalt(form.sSatInstallLine);
    // A second click sends nothing until something is picked again.
    form.sSatInstallLine.clear();
    form.sInstallSatA.clear();
    form.sInstallSatB.clear();
}

/// The field of the option that is selected, with its comma; empty when none is.
std::string FieldOf(const Control& option, const std::string& field) { return option.Value == 1 ? field : ""; }

/// A choice that wasn't made is left out and the line is shorter; the antenna judges it.
void cmdConfigUSERSat_Click()
{
    WizardForm& form = frmWizard;
    const std::string longitude = form.txtLongitude[1].Text;
    if (longitude.empty()) return;
    std::string line = "SATCONFIG,";
    line += FieldOf(form.optUSERSats[0], "USER1,") + FieldOf(form.optUSERSats[1], "USER2,");
    line += text::Trim(longitude) + ",";
    line += FieldOf(form.optEast[2], "E,") + FieldOf(form.optWest[2], "W,");
    for (int type = 0; type < form.optDecodeType.size(); ++type)
        line += FieldOf(form.optDecodeType[type], text::Num(type + 1) + ",");
    line += FieldOf(form.optLNBPolarization[0], "C") + FieldOf(form.optLNBPolarization[1], "L");
    SendAfterHalt(line);
}

}  // namespace

void ParseSatListA(const std::string& reply)
{
    if (reply.size() <= ListA.size()) return;
    const std::vector<std::string> names = NamesIn(reply);
    if (names.size() < 2) return;
    Show(frmWizard.cboSatA, names, ThreeSatellites);
}

void ParseSatListB(const std::string& reply)
{
    const bool isForThree = text::Equal(reply, ThreeSatellites);
    if (reply.size() <= ListB.size() && !isForThree) return;
    Control& list = frmWizard.cboSatB;
    list.List = {};
    list.ListIndex = -1;
    frmWizard.sInstallSatB.clear();  // it was a pick from the list that is gone
    if (isForThree) {
        list.List = {"DSS", "EWB", "EUR", "SCN"};
        list.Visible = true;
        BackToIdle();
        return;
    }
    // A single name is no choice; the list stays empty and a longer answer may follow.
    const std::vector<std::string> names = NamesIn(reply);
    if (names.size() >= 2) Show(list, names, "NONE");
}

void OnSatListReply(const std::string& chunk)
{
    constexpr std::int16_t quiet = 10;
    Session.link.sCommLine += chunk;  // sCommBuffer holds the piece too; adding all of it would count pieces twice
    const std::string answer = AnswerHeard();
    const std::size_t end = EndOfAnswer(answer);
    if (end != std::string::npos)
        Parse(answer.substr(0, end));
    else if (text::Count(answer, ',') >= 2)
        Session.link.iWaitTicks = quiet;  // an answer without a line end is over when nothing follows
}

void EndSatListWait()
{
    const bool isA = IsAskedForA();
    const std::string answer = AnswerHeard();
    Parse(answer);
    if (Session.link.iCommMode == STATE_IDLE) return;
    if (!isA && text::Count(answer, ',') == 1)
        ShowAllCommsTextUpdate(
            "*** The antenna has no choice of satellites for 'B'. Pick another satellite for 'A' or "
            "a pre-defined pair. ***\r\n");
    else
        ShowAllCommsTextUpdate(std::string("*** No list of satellites came from the antenna. Check its power and its "
                                           "cable, then click Get List for '") +
                               (isA ? "A" : "B") + "' again. ***\r\n");
    BackToIdle();
}

void ConnectSatInstall()
{
    frmWizard.cboPredefinedSats.Click = cboPredefinedSats_Click;
    frmWizard.cmdGetSatListA.Click = cmdGetSatListA_Click;
    frmWizard.cmdGetSatListB.Click = cmdGetSatListB_Click;
    frmWizard.cboSatA.Click = [] { Pick(frmWizard.cboSatA, frmWizard.sInstallSatA); };
    frmWizard.cboSatB.Click = [] { Pick(frmWizard.cboSatB, frmWizard.sInstallSatB); };
    frmWizard.cmdSatInstall.Click = cmdSatInstall_Click;
    frmWizard.cmdConfigUSERSat.Click = cmdConfigUSERSat_Click;
}

void LoadSatInstall()
{
    std::vector<std::string> names;
    for (const Pair& pair : predefinedPairs) names.push_back(pair.name);
    frmWizard.cboPredefinedSats.List = names;
    frmWizard.cboPredefinedSats.Select(0);
    frmWizard.cboSatA.Visible = false;
    frmWizard.cboSatB.Visible = false;
}
