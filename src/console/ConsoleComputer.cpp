#include "console/ConsoleComputer.h"

#include <QFileInfo>

#include "flash/FileTest.h"
#include "forms/frmCheckAntennas.h"
#include "forms/frmCheckJarlForGLTV.h"
#include "forms/frmWizard.h"
#include "session/Wizard.h"
#include "text/Text.h"
#include "wizard/frmWizard_Events.h"

namespace {

struct Button {
    Answer answer;
    Choice choice;
};

std::vector<Button> SetOf(Buttons buttons)
{
    const Button ok{Answer::OK, {"OK", "o"}}, cancel{Answer::Cancel, {"Cancel", "c"}},
        retry{Answer::Retry, {"Retry", "r"}}, yes{Answer::Yes, {"Yes", "y"}}, no{Answer::No, {"No", "n"}};
    switch (buttons) {
    case Buttons::OKCancel: return {ok, cancel};
    case Buttons::RetryCancel: return {retry, cancel};
    case Buttons::YesNo: return {yes, no};
    case Buttons::YesNoCancel: return {yes, no, cancel};
    case Buttons::OK: break;
    }
    return {ok};
}

const char* NameOf(Answer answer)
{
    switch (answer) {
    case Answer::OK: return "OK";
    case Answer::Cancel: return "Cancel";
    case Answer::Retry: return "Retry";
    case Answer::Yes: return "Yes";
    case Answer::No: break;
    }
    return "No";
}

const char* NameOf(Icon icon)
{
    switch (icon) {
    case Icon::Critical: return "critical";
    case Icon::Exclamation: return "warning";
    case Icon::Information: return "information";
    case Icon::Question: return "question";
    case Icon::None: break;
    }
    return "none";
}

/// The first model of a list, shown and not, by its index among the models.
std::vector<Control*> ModelsOf(CheckAntennasForm& form)
{
    std::vector<Control*> models;
    for (ControlArray* list : {&form.optLM, &form.optMarine})
        for (Control& option : *list)
            if (option.Visible && !option.Caption().empty()) models.push_back(&option);
    return models;
}

CheckAntennasForm* ModelFormOf(const Form& form)
{
    for (CheckAntennasForm* model : {&frmCheckAntennasForRF, &frmCheckAntennasForRF6, &frmCheckAntennasForRF6A})
        if (&model->Self == &form) return model;
    return nullptr;
}

}  // namespace

ConsoleComputer::ConsoleComputer(const Options& options, const std::string& directory, CaughtFailure& caught,
                                 Ports& ports, SerialLink& link, Voice& voice)
    : HostComputer(directory, caught, ports, link),
      options_(options),
      caught_(caught),
      voice_(voice),
      reporter_(voice),
      choices_(
          voice, [this] { WaitForUser(); }, [this] { return IsExitRequested() || insists_; })
{
}

void ConsoleComputer::WaitForEvent()
{
    HostComputer::WaitForEvent();
    if (watch) watch();
    if (work) std::exchange(work, nullptr)();
}

bool ConsoleComputer::PrevInstance() { return anotherOneWorks_ = HostComputer::PrevInstance(); }

// --- the end ---------------------------------------------------------------------------------------------------------

void ConsoleComputer::Leave(int exitCode)
{
    settled_ = exitCode;
    leaving_ = true;
    CleanUpForShutdown(1);
}

/// It is the window's close button. Ctrl+C is a person's, who is asked where it matters; pressed at that question it is
/// the answer. Anybody else can't be asked.
void ConsoleComputer::OnEndRequest(EndRequest request)
{
    if (IsExitRequested()) return;
    const bool person = request == EndRequest::Interrupt && InputIsTerminal();
    if (!person) leaving_ = true;
    if (asksToLeave_) {
        insists_ = true;
        return;
    }
    asksToLeave_ = true;
    if (person && Reporter::IsTransfer())
        voice_.Complain("warning", "The antenna is inoperative until it is flashed again, if you end this now.");
    caught_.Run(Form_QueryUnload);
    asksToLeave_ = insists_ = false;
    if (IsExitRequested()) settled_ = request == EndRequest::Interrupt ? END_INTERRUPTED : END_CANCELLED;
}

// --- questions -------------------------------------------------------------------------------------------------------

/// Nobody can be asked: on with it as far as it goes, and no second try that needs a hand.
Answer ConsoleComputer::AnswerUnasked(Buttons buttons, const std::string& title)
{
    constexpr int mostRetries = 2;
    if (title == ODD_FILES_TITLE) return options_.acceptWarnings && !leaving_ ? Answer::Yes : Answer::No;
    switch (buttons) {
    case Buttons::RetryCancel:
        return !leaving_ && !options_.powerCycle.empty() && retries_++ < mostRetries ? Answer::Retry : Answer::Cancel;
    case Buttons::YesNo:
    case Buttons::YesNoCancel: return keepsLog_ ? Answer::Yes : Answer::No;
    case Buttons::OKCancel:
    case Buttons::OK: break;
    }
    return Answer::OK;
}

Answer ConsoleComputer::AskPerson(Buttons buttons, Answer standard, const std::string& title)
{
    const std::vector<Button> set = SetOf(buttons);
    std::vector<Choice> choices;
    int first = 0;
    for (const Button& button : set) {
        if (button.answer == standard) first = static_cast<int>(choices.size());
        choices.push_back(button.choice);
    }
    const int picked = choices_.Pick("", choices, first);
    if (picked >= 0) return set[static_cast<std::size_t>(picked)].answer;
    if (leaving_ || insists_) return AnswerUnasked(buttons, title);
    return set.back().answer;
}

Answer ConsoleComputer::MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title,
                               Answer standard)
{
    PrepareQuestion();
    const bool complaint = icon == Icon::Critical || icon == Icon::Exclamation;
    const QJsonObject fields{{"title", QString::fromStdString(title)}, {"icon", NameOf(icon)}};
    if (complaint)
        voice_.Complain("message", words, fields);
    else
        voice_.Tell("message", words, fields);
    if (buttons == Buttons::OK) return Answer::OK;  // nothing to decide
    const bool accepted = options_.acceptWarnings && title == ODD_FILES_TITLE;
    const bool unasked = leaving_ || accepted || (IsUnattended() && !asksToLeave_);
    const Answer answer = unasked ? AnswerUnasked(buttons, title) : AskPerson(buttons, standard, title);
    voice_.Tell("answer", unasked ? std::string("(") + NameOf(answer) + ")" : "", {{"answer", NameOf(answer)}});
    return answer;
}

void ConsoleComputer::AnswerModel(Form& form)
{
    CheckAntennasForm& dialog = *ModelFormOf(form);
    const std::vector<Control*> models = ModelsOf(dialog);
    std::vector<std::string> names;
    for (const Control* model : models) names.push_back(model->Caption);
    names.push_back(dialog.chkNoneOfThese.Caption);
    const int none = static_cast<int>(models.size());

    int picked = -1;
    if (text::Equal(options_.model, "none"))
        picked = none;
    else if (!options_.model.empty())
        picked = EntryMeant(options_.model, {names.begin(), names.end() - 1});
    else if (!IsUnattended())
        picked = choices_.PickFromList(form.Caption, names, -1);
    if (picked < 0) {
        std::string list;
        for (const std::string& name : names) list += "\n  " + name;
        if (!IsExitRequested()) {
            voice_.Complain(
                "refused",
                "The software of this board depends on the antenna's model. Name it with --model, or \"none\":" + list);
            Leave(IsUnattended() || !options_.model.empty() ? END_NOT_KNOWN : END_CANCELLED);
        }
        return;
    }
    if (picked < none) {
        SelectOption(form, *models[static_cast<std::size_t>(picked)]);
    } else {
        dialog.chkNoneOfThese.Value = 1;
        dialog.chkNoneOfThese.Click();
    }
    voice_.Tell("model", "Antenna model: " + names[static_cast<std::size_t>(picked)]);
    dialog.cmdOK.Click();
}

/// Unasked it stays as it is: other satellite names come with the library.
void ConsoleComputer::AnswerLibrary()
{
    CheckJarlForm& dialog = frmCheckJarlForGLTV;
    constexpr int asItIs = 1;
    int picked = asItIs;
    if (!IsUnattended()) {
        voice_.Tell("message", dialog.lblGLTVPrompt.Caption);
        picked =
            choices_.PickFromList(dialog.Self.Caption, {dialog.optGLTV[0].Caption, dialog.optGLTV[1].Caption}, asItIs);
        if (picked < 0) return IsExitRequested() ? void() : Leave(END_CANCELLED);
    }
    SelectOption(dialog.Self, dialog.optGLTV[picked]);
    voice_.Tell("answer", dialog.optGLTV[picked].Caption);
    dialog.cmdOK.Click();
}

void ConsoleComputer::ShowModal(Form& form)
{
    PrepareQuestion();
    form.Visible = true;
    if (ModelFormOf(form) != nullptr) AnswerModel(form);
    if (&form == &frmCheckJarlForGLTV.Self) AnswerLibrary();
    form.Visible = false;
}

/// Nothing here opens a file by a dialog.
std::vector<std::string> ConsoleComputer::OpenDialog(const FileDialog&) { return {}; }

void ConsoleComputer::KeepLog()
{
    keepsLog_ = true;
    frmWizard.mnuFile_ItemSaveLogFile.Click();
    keepsLog_ = false;
}

std::optional<std::string> ConsoleComputer::SaveDialog(const FileDialog&)
{
    if (std::exchange(logOffered_, true)) return std::nullopt;  // it can't be used, and that was told
    return QFileInfo(QString::fromStdString(options_.log)).absoluteFilePath().toStdString();
}

void ConsoleComputer::ShowHelp(int topic, const std::string& section)
{
    voice_.Tell("help", "See help/" + std::to_string(topic) + ".html" + (section.empty() ? "" : "#" + section) +
                            " beside the program.");
}
