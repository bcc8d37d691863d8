#include "desktop/Desktop.h"

#include <QApplication>
#include <QIcon>

#include "desktop/ui_frmSelectFlashFileDialog.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmWizard.h"
#include "frame/StartUp.h"
#include "frame/Wizard.h"

Desktop::Desktop()
    : directory_(FindProgramDirectory()),
      ports_(directory_),
      port_([this](int port) { return ports_.DeviceOf(port); }),
      binder_(caught_),
      computer_(directory_, binder_, caught_, ports_, port_),
      window_(binder_, caught_),
      flashFileDialog_(&window_)
{
    Q_INIT_RESOURCE(burnline);
    QApplication::setWindowIcon(QIcon(u":/burnline.png"_qs));
    Ui::frmSelectFlashFileDialog().setupUi(&flashFileDialog_);
    binder_.Attach(frmWizard.Self, window_);
    binder_.Attach(frmSelectFlashFileDialog.Self, flashFileDialog_);
    computer = &computer_;
    MSComm1 = &port_;
}

Desktop::~Desktop()
{
    computer = nullptr;
    MSComm1 = nullptr;
}

void Desktop::Run()
{
    if (Main() == MainEnd::Stranded) StayUntilClosed();
    binder_.Paint();
    flashFileDialog_.hide();
    window_.hide();
}

/// The port was lost for good: the window shows what was, and closing it is the only way on.
void Desktop::StayUntilClosed()
{
    binder_.Paint();
    while (!IsExitRequested() && window_.isVisible()) Guarded("Main", [this] { computer_.WaitForUser(); });
}
