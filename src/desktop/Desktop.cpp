#include "desktop/Desktop.h"

#include <QApplication>
#include <QIcon>

#include "desktop/Looks.h"
#include "desktop/ui_frmCheckAntennasForRF.h"
#include "desktop/ui_frmCheckAntennasForRF6.h"
#include "desktop/ui_frmCheckAntennasForRF6A.h"
#include "desktop/ui_frmCheckJarlForGLTV.h"
#include "desktop/ui_frmPickAntennaDialog.h"
#include "desktop/ui_frmSelectFlashFileDialog.h"
#include "desktop/ui_frmShowPostFlashCmds.h"
#include "desktop/ui_frmShowRelNotes.h"
#include "forms/frmCheckAntennas.h"
#include "forms/frmCheckJarlForGLTV.h"
#include "forms/frmPickAntennaDialog.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmShowPostFlashCmds.h"
#include "forms/frmShowRelNotes.h"
#include "forms/frmWizard.h"
#include "loop/StartUp.h"
#include "session/Wizard.h"

Desktop::Desktop()
    : directory_(FindProgramDirectory()),
      ports_(MakePorts(directory_)),
      link_(MakeSerialLink([this](int port) { return ports_->DeviceOf(port); })),
      binder_(caught_),
      computer_(directory_, binder_, caught_, *ports_, *link_),
      window_(binder_, caught_),
      updater_(Words(directory_), QCoreApplication::applicationFilePath())
{
    Q_INIT_RESOURCE(burnline);
    QApplication::setWindowIcon(QIcon(u":/burnline.png"_qs));
    binder_.Attach(frmWizard.Self, window_);
    AddDialog<Ui::frmSelectFlashFileDialog>(frmSelectFlashFileDialog.Self);
    AddDialog<Ui::frmPickAntennaDialog>(frmPickAntennaDialog.Self);
    AddDialog<Ui::frmCheckAntennasForRF>(frmCheckAntennasForRF.Self);
    AddDialog<Ui::frmCheckAntennasForRF6>(frmCheckAntennasForRF6.Self);
    AddDialog<Ui::frmCheckAntennasForRF6A>(frmCheckAntennasForRF6A.Self);
    AddDialog<Ui::frmCheckJarlForGLTV>(frmCheckJarlForGLTV.Self);
    AddDialog<Ui::frmShowPostFlashCmds>(frmShowPostFlashCmds.Self);
    AddDialog<Ui::frmShowRelNotes>(frmShowRelNotes.Self);
    updater_.window = &window_;
    computer = &computer_;
    MSComm1 = &link_->Control();
    updater = &updater_;
}

Desktop::~Desktop()
{
    computer = nullptr;
    MSComm1 = nullptr;
    updater = nullptr;
}

template <class Drawing>
void Desktop::AddDialog(Form& form)
{
    FormDialog& dialog = dialogs_.emplace_back(&window_);
    Drawing().setupUi(&dialog);
    binder_.Attach(form, dialog);
}

void Desktop::Run()
{
    Main();
    binder_.Paint();
    for (FormDialog& dialog : dialogs_) dialog.hide();
    window_.hide();
    updater_.Stop();
    ReplaceProgram();
}

/// A new program couldn't take its place as long as this one ran.
void Desktop::ReplaceProgram()
{
    QString problem;
    if (!updater_.ReplaceAfterEnd(problem)) return;
    successor_ = QCoreApplication::applicationFilePath();
    if (problem.isEmpty()) return;
    const std::string words = "There was an error updating: " + problem.toStdString();
    computer_.MsgBox(words, Buttons::OK, Icon::Exclamation, "QEL Burnline Assistant - Check for Updates", Answer::OK);
}
