#include "desktop/DesktopComputer.h"

#include <QNetworkInformation>
#include <QNetworkInterface>
#include <algorithm>

#include "desktop/Dialogs.h"
#include "desktop/Looks.h"
#include "forms/frmWizard.h"
#include "session/Wizard.h"

namespace {

bool IsOutward(const QNetworkInterface& link)
{
    const auto flags = link.flags();
    const bool up = flags.testFlag(QNetworkInterface::IsUp) && flags.testFlag(QNetworkInterface::IsRunning);
    return up && !flags.testFlag(QNetworkInterface::IsLoopBack) && !link.addressEntries().isEmpty();
}

/// A form that is in front of all others; however that ends, the window behind can be used again.
struct Modal {
    Modal(Form& shown, QWidget& its, Binder& painter) : form(shown), window(its), binder(painter)
    {
        window.setWindowModality(Qt::ApplicationModal);
        form.Visible = true;
    }
    ~Modal()
    {
        form.Visible = false;
        binder.Paint();
        window.setWindowModality(Qt::NonModal);
    }
    Form& form;
    QWidget& window;
    Binder& binder;
};

}  // namespace

DesktopComputer::DesktopComputer(const std::string& directory, Binder& binder, CaughtFailure& caught, Ports& ports,
                                 SerialLink& link)
    : HostComputer(directory, caught, ports, link), binder_(binder)
{
}

QWidget* DesktopComputer::PrepareDialog()
{
    PrepareQuestion();
    QWidget* window = binder_.WindowOf(frmWizard.Self);
    return window && window->isVisible() ? window : nullptr;
}

Answer DesktopComputer::MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title,
                               Answer standard)
{
    return AskUser(PrepareDialog(), words, buttons, icon, title, standard);
}

void DesktopComputer::ShowModal(Form& form)
{
    PrepareDialog();
    QWidget* window = binder_.WindowOf(form);
    if (!window) return;
    const Modal modal(form, *window, binder_);
    while (form.Visible && !IsExitRequested()) WaitForUser();
}

std::vector<std::string> DesktopComputer::OpenDialog(const FileDialog& dialog)
{
    return AskForFiles(PrepareDialog(), dialog);
}

std::optional<std::string> DesktopComputer::SaveDialog(const FileDialog& dialog)
{
    return AskWhereToSave(PrepareDialog(), dialog);
}

void DesktopComputer::ShowHelp(int topic, const std::string& section)
{
    if (!help_) help_ = std::make_unique<HelpWindow>(HelpWindow::FindFolder(Words(ProgramDirectory())));
    help_->ShowTopic(topic, Words(section));
}

void DesktopComputer::CloseHelp() { help_.reset(); }

bool DesktopComputer::InternetConnected()
{
    // Where the system tells of its networks it knows best; elsewhere a network with an address is taken for a way out.
    using Information = QNetworkInformation;
    const bool told = Information::loadBackendByFeatures(Information::Feature::Reachability);
    if (told && Information::instance()->reachability() == Information::Reachability::Disconnected) return false;
    const auto links = QNetworkInterface::allInterfaces();
    return std::any_of(links.begin(), links.end(), IsOutward);
}
