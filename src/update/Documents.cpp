// What there is to read: the help at the step at hand, the release notes, the updates log.

#include "forms/frmShowRelNotes.h"
#include "forms/frmWizard.h"
#include "platform/Computer.h"
#include "platform/ProgramFiles.h"
#include "update/Update.h"

namespace {

void ShowDocument(const std::string& caption, const std::string& file)
{
    frmShowRelNotes.Self.Caption = caption;
    frmShowRelNotes.WebBrowser1.Text = ProgramFile(file).string();
    // The same document may have grown since it was shown last.
    frmShowRelNotes.WebBrowser1.Changed = true;
    ++FormsRevision;
    frmShowRelNotes.Self.Visible = true;
}

}  // namespace

void cmdViewRelNotes_Click() { ShowDocument("Burnline - Release Notes", "BurnlineRelNotes.htm"); }

void mnuUpdate_ItemViewUpdatesLog_Click() { ShowDocument("Burnline - Update log", "BNLUPDATES.HTM"); }

void mnuHelp_ItemHelp_Click()
{
    frmWizard.bHelpOpened = true;
    computer->ShowHelp((frmWizard.iCurrentStep + 1) * 10 + 1000, "");
    computer->DoEvents();
}
