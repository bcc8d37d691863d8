#include "desktop/DiagnosticsPage.h"

#include <QBoxLayout>
#include <QShortcut>
#include <QTabBar>
#include <algorithm>
#include <functional>

#include "desktop/ui_DiagnosticsPage.h"
#include "forms/frmWizard.h"

DiagnosticsPage::DiagnosticsPage(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::DiagnosticsPage>())
{
    ui_->setupUi(this);
    ui_->SSTab1->tabBar()->setAccessibleName(ui_->SSTab1->accessibleName());
    GiveTabsKeys();
    MakeEasyToHit();
}

DiagnosticsPage::~DiagnosticsPage() = default;

/// The letters are needed for what stands on the tabs: Alt+1 to Alt+6 bring them to the front, Ctrl+PageUp and
/// Ctrl+PageDown the ones beside, from anywhere in the window.
void DiagnosticsPage::GiveTabsKeys()
{
    QTabWidget* tabs = ui_->SSTab1;
    const int count = tabs->count();
    const auto give = [this](const QKeySequence& keys, const std::function<void()>& act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    for (int tab = 0; tab < count; ++tab)
        give(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + tab)),
             [tabs, tab] { tabs->setCurrentIndex(tab); });
    const auto turn = [tabs, count](int by) { tabs->setCurrentIndex((tabs->currentIndex() + by + count) % count); };
    give(QKeySequence(Qt::CTRL | Qt::Key_PageDown), [turn] { turn(1); });
    give(QKeySequence(Qt::CTRL | Qt::Key_PageUp), [turn] { turn(-1); });
}

/// On a roof one presses with cold fingers.
void DiagnosticsPage::MakeEasyToHit()
{
    constexpr int buttonHeight = 36, otherHeight = 30;
    for (auto* widget : findChildren<QPushButton*>())
        widget->setMinimumHeight(std::max(widget->minimumHeight(), buttonHeight));
    for (auto* widget : findChildren<QRadioButton*>()) widget->setMinimumHeight(otherHeight);
    for (auto* widget : findChildren<QCheckBox*>()) widget->setMinimumHeight(otherHeight);
    for (auto* widget : findChildren<QLineEdit*>()) widget->setMinimumHeight(otherHeight);
    for (auto* widget : findChildren<QComboBox*>()) widget->setMinimumHeight(otherHeight);
}

void DiagnosticsPage::resizeEvent(QResizeEvent* event)
{
    constexpr int lettersForColumns = 36;
    const bool wide = width() >= fontMetrics().height() * lettersForColumns;
    for (auto* layout : findChildren<QBoxLayout*>())
        if (layout->objectName().startsWith(u"columns"))
            layout->setDirection(wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QWidget::resizeEvent(event);
}

void DiagnosticsPage::ShowAngles()
{
    const Dial::Angles angles{frmWizard.dAzimuth, frmWizard.dElevation, frmWizard.dSkew};
    ui_->dial->Show(frmWizard.bAnglesKnown ? std::optional(angles) : std::nullopt);
}
