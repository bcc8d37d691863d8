// The three dialogs that ask for the antenna model, and the one that offers the satellite library. All are modal, and
// none can be left without an answer.

#include "wizard/ModelChooser.h"

#include "forms/frmCheckAntennas.h"
#include "forms/frmCheckJarlForGLTV.h"
#include "platform/Computer.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

namespace {

CheckAntennasForm& FormOf(ModelList list)
{
    switch (list) {
    case ModelList::RF6: return frmCheckAntennasForRF6;
    case ModelList::RF6A: return frmCheckAntennasForRF6A;
    case ModelList::RF: break;
    }
    return frmCheckAntennasForRF;
}

void OptionClicked(CheckAntennasForm& form, ControlArray& otherList)
{
    ClearOptions(otherList);
    form.chkNoneOfThese.Value = 0;
    form.cmdOK.Enabled = true;
}

/// Makes an option for each model up to the first one without a name. Those of a longer list from before are hidden.
void ShowModels(CheckAntennasForm& form, bool marine)
{
    ControlArray& options = marine ? form.optMarine : form.optLM;
    ControlArray& otherList = marine ? form.optLM : form.optMarine;
    const auto source = marine ? form.Lists.marine : form.Lists.landMobile;
    int shown = 0;
    if (source != nullptr) {
        for (const CompatEntry& entry : (*Session.config).*source) {
            if (entry.AntennaModel.empty()) break;
            if (shown == options.size()) options.Load("");
            Control& option = options[shown++];
            option.Caption = entry.AntennaModel;
            option.Tag = text::Trim(entry.FlashFileName);
            option.Visible = true;
            option.Click = [&form, &otherList] { OptionClicked(form, otherList); };
        }
    }
    ClearOptions(options);
    for (int index = shown; index < options.size(); ++index) options[index].Visible = false;
    (marine ? form.frameMarine : form.frameLM).Visible = shown > 0;
}

void NoneOfTheseClicked(CheckAntennasForm& form)
{
    const bool ticked = form.chkNoneOfThese.Value == 1;
    form.cmdOK.Enabled = ticked;
    if (!ticked) return;
    ClearOptions(form.optLM);
    ClearOptions(form.optMarine);
}

std::string FileOfSelected(ControlArray& options)
{
    for (Control& option : options)
        if (option.Value == 1) return option.Tag;
    return {};
}

void ModelChosen(CheckAntennasForm& form)
{
    form.sChosenFile.clear();
    if (form.chkNoneOfThese.Value != 1) {
        form.sChosenFile = FileOfSelected(form.optLM);
        if (form.sChosenFile.empty()) form.sChosenFile = FileOfSelected(form.optMarine);
    }
    form.Self.Visible = false;
}

}  // namespace

void ConnectModelChoosers()
{
    for (CheckAntennasForm* form : {&frmCheckAntennasForRF, &frmCheckAntennasForRF6, &frmCheckAntennasForRF6A}) {
        form->chkNoneOfThese.Click = [form] { NoneOfTheseClicked(*form); };
        form->cmdOK.Click = [form] { ModelChosen(*form); };
    }
    CheckJarlForm& jarl = frmCheckJarlForGLTV;
    for (int index = 0; index < jarl.optGLTV.size(); ++index)
        jarl.optGLTV[index].Click = [] { frmCheckJarlForGLTV.cmdOK.Enabled = true; };
    jarl.cmdOK.Click = [] { frmCheckJarlForGLTV.Self.Visible = false; };
}

std::string AskForModel(ModelList list)
{
    CheckAntennasForm& form = FormOf(list);
    ShowModels(form, false);
    ShowModels(form, true);
    form.chkNoneOfThese.Value = 0;
    form.cmdOK.Enabled = false;
    form.sChosenFile.clear();
    computer->ShowModal(form.Self);
    return form.sChosenFile;
}

bool AskForLibraryUpgrade()
{
    ClearOptions(frmCheckJarlForGLTV.optGLTV);
    frmCheckJarlForGLTV.cmdOK.Enabled = false;
    computer->ShowModal(frmCheckJarlForGLTV.Self);
    return frmCheckJarlForGLTV.optGLTV[0].Value == 1;
}
