#include "desktop/WizardWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QUrl>
#include <algorithm>

#include "desktop/Keys.h"
#include "desktop/Looks.h"
#include "desktop/ui_frmWizard.h"
#include "forms/frmSelectFlashFileDialog.h"
#include "forms/frmWizard.h"
#include "update/Update.h"
#include "wizard/frmWizard_Events.h"

WizardWindow::WizardWindow(Binder& binder, CaughtFailure& caught)
    : binder_(binder), caught_(caught), ui_(std::make_unique<Ui::frmWizard>())
{
    ui_->setupUi(this);
    ui_->splitter->setStretchFactor(0, 3);
    ui_->splitter->setStretchFactor(1, 2);
    portState_.setObjectName(u"portState"_qs);
    portState_.setTextFormat(Qt::PlainText);
    ui_->statusBar->addWidget(&portState_);
    ui_->tableHolder->hide();
    connect(ui_->steps, &QStackedWidget::currentChanged, this, &WizardWindow::ShowStep);
    connect(ui_->mnuCommPort, &QMenu::aboutToShow, this, [this] { binder_.Act(mnuCommPort_Open); });
    ui_->findBar->SearchIn(*ui_->Text1);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, ui_->findBar, &FindBar::Open);
    binder_.Painted = [this] {
        ShowPortState();
        ui_->diagnostics->ShowAngles();
        KeepFocus();
    };
    setAcceptDrops(true);
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, &WizardWindow::NoteFocus);
    FitToScreen();
}

WizardWindow::~WizardWindow()
{
    disconnect(qApp, nullptr, this, nullptr);  // the focus still moves while the widgets go
}

void WizardWindow::FitToScreen()
{
    const int letter = fontMetrics().height();
    const QSize room = screen()->availableGeometry().size() - QSize(letter, letter * 2);  // the frame takes a little
    resize(QSize(letter * 90, letter * 50).boundedTo(room));
    ui_->splitter->setSizes({width() * 3 / 5, width() * 2 / 5});
}

void WizardWindow::resizeEvent(QResizeEvent* event)
{
    constexpr int lettersForNames = 50;
    ui_->road->SetCompact(width() < fontMetrics().height() * lettersForNames);
    QMainWindow::resizeEvent(event);
}

void WizardWindow::ShowStep(int step)
{
    ui_->road->SetStep(step);
    ui_->road->setVisible(step > 0);  // the diagnostics lie beside the road
    ui_->tableHolder->setVisible(step >= ui_->steps->indexOf(ui_->fraStep_7));
    if (auto* page = qobject_cast<QScrollArea*>(ui_->steps->widget(step))) page->verticalScrollBar()->setValue(0);
}

void WizardWindow::ShowPortState()
{
    const Control& state = frmWizard.lblCommPortStatus;
    portState_.setText(Words(state.Caption()).simplified());
    portState_.setToolTip(Words(state.ToolTipText()));
    QFont font = this->font();
    font.setBold(state.Bold);
    portState_.setFont(font);
}

/// A button that is disabled while it has the focus hands it to whatever comes next, the command line for instance.
/// Whoever works with the keyboard finds it on the button that leads on as soon as there is one, and nowhere till then.
void WizardWindow::NoteFocus(QWidget* old, QWidget* now)
{
    if (leadOn_ && now == ui_->centralWidget) return;
    leadOn_ = old && now && old->parentWidget() == ui_->picNav && !old->isEnabled();
}

void WizardWindow::KeepFocus()
{
    if (!leadOn_) return;
    QPushButton* const leadsOn[] = {ui_->cmdNav_2, ui_->cmdNav_3};
    for (QPushButton* button : leadsOn)
        if (button->isEnabled()) return button->setFocus();
    ui_->centralWidget->setFocus();
}

void WizardWindow::closeEvent(QCloseEvent* event)
{
    bool goes = false;
    binder_.Act([&goes] {
        Form_QueryUnload();
        goes = Form_Unload();
    });
    event->setAccepted(goes);
}

/// Files that are dropped on the window are imported, while the menu that does it may be used.
void WizardWindow::dragEnterEvent(QDragEnterEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    const bool files =
        !urls.isEmpty() && std::all_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
    if (files && frmWizard.mnuUpdate.Enabled) event->acceptProposedAction();
}

void WizardWindow::dropEvent(QDropEvent* event)
{
    std::vector<std::string> paths;
    for (const QUrl& url : event->mimeData()->urls()) paths.push_back(url.toLocalFile().toStdString());
    event->setDropAction(Qt::CopyAction);  // whatever was proposed, the files stay where they are
    event->accept();
    // The one that the files come from waits for the end of the drop; boxes come behind it.
    QTimer::singleShot(0, this, [this, paths] {
        binder_.Act([&paths] {
            if (frmWizard.mnuUpdate.Enabled) ImportFiles(paths);  // a drag may take its time
        });
    });
}

bool WizardWindow::eventFilter(QObject* watched, QEvent* event)
{
    // The second press of a double click was meant for the page that the first one has left.
    const bool isNavigation = watched->objectName().startsWith(u"cmdNav_");
    if (event->type() == QEvent::MouseButtonDblClick && isNavigation) return true;
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
    auto* widget = static_cast<QWidget*>(watched);
    QWidget* window = widget->window();
    // The same press goes on to the parents of a widget that doesn't take it; it counts where it arrives first.
    if (widget != (window->focusWidget() ? window->focusWidget() : window)) return false;

    const auto* press = static_cast<QKeyEvent*>(event);
    const int key = KeyCode(press->key());
    if (key == 0) return false;
    const Qt::KeyboardModifiers held = press->modifiers();
    const bool shift = held & Qt::ShiftModifier, ctrl = held & Qt::ControlModifier, alt = held & Qt::AltModifier;
    bool taken = false;
    if (window == this)
        binder_.Act([&] { taken = Form_KeyDown(key, shift, ctrl, alt); });
    else if (window == binder_.WindowOf(frmSelectFlashFileDialog.Self))
        binder_.Act([&] { taken = frmSelectFlashFileDialog_KeyDown(key, shift, ctrl, alt); });
    // Alt+N while Next is off must not become an "n" of the command that goes to the antenna next.
    const bool unusedShortcut = alt && !ctrl && key >= 'A' && key <= 'Z' && qobject_cast<QLineEdit*>(widget);
    return taken || unusedShortcut;
}
