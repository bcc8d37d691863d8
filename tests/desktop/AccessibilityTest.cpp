// The windows without a mouse and without eyes: what takes the keyboard has a name, and Tab gets there.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabWidget>
#include <map>
#include <set>

#include "desktop/Desktop.h"
#include "desktop/FindBar.h"
#include "forms/frmWizard.h"
#include "tests/desktop/ProgramHome.h"

namespace {

/// All windows of the program with every control shown and enabled, whatever the session would say to it.
class AllWindows : public testing::Test {
protected:
    AllWindows()
    {
        qputenv("BURNLINE_HOME", QByteArray::fromStdString(home.Path("").string()));
        desktop = std::make_unique<Desktop>();
        for (Control* control : frmWizard.Self.Controls) {
            control->Visible = true;
            control->Enabled = !control->Name.starts_with("Timer");
            control->Value = 0;
        }
        frmWizard.Self.Visible = true;
        Await([this] { return window().isActiveWindow() && window().isVisible(); });
        window().findChild<FindBar*>("findBar")->Open();
    }
    ~AllWindows() override { frmWizard.Self.Visible = false; }

    QMainWindow& window() { return desktop->Window(); }

    static void Await(const std::function<bool()>& holds)
    {
        QElapsedTimer waited;
        waited.start();
        while (!holds() && waited.elapsed() < 10000) computer->DoEvents();
        ASSERT_TRUE(holds());
    }

    /// Each step and each tab of the diagnostics in turn, by its caption.
    void ForEachPage(const std::function<void(const std::string& page)>& look)
    {
        auto* steps = window().findChild<QStackedWidget*>("steps");
        auto* tabs = window().findChild<QTabWidget*>("SSTab1");
        for (int step = 0; step < steps->count(); ++step) {
            steps->setCurrentIndex(step);
            for (int tab = 0; tab < (step == 0 ? tabs->count() : 1); ++tab) {
                tabs->setCurrentIndex(tab);
                QApplication::processEvents();
                look(steps->currentWidget()->objectName().toStdString() +
                     (step == 0 ? ", " + tabs->tabText(tab).toStdString() : ""));
            }
        }
    }

    const ProgramHome home;
    std::unique_ptr<Desktop> desktop;
};

std::string Called(const QWidget& widget)
{
    return widget.objectName().toStdString() + " (" + widget.metaObject()->className() + ")";
}

std::vector<QWidget*> KeyboardTakers(const QWidget& window)
{
    std::vector<QWidget*> takers;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool inWindow = widget->window() == &window && !widget->focusProxy();
        if (inWindow && widget->isVisible() && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus)
            takers.push_back(widget);
    }
    return takers;
}

void PressTab(QWidget& widget)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
}

std::set<QWidget*> ReachedByTab(QWidget& window)
{
    constexpr int plenty = 200;
    std::set<QWidget*> reached;
    if (QWidget* focus = window.focusWidget()) focus->clearFocus();
    PressTab(window);
    for (int presses = 0; presses < plenty && window.focusWidget(); ++presses) {
        if (!reached.insert(window.focusWidget()).second) break;
        PressTab(*window.focusWidget());
    }
    return reached;
}

void ExpectNamedAndReached(QWidget& window, const std::string& page)
{
    const std::set<QWidget*> reached = ReachedByTab(window);
    for (QWidget* widget : KeyboardTakers(window)) {
        // The title of the frame around it, which the toolkit would take, names too many.
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << page << ": no name: " << Called(*widget);
        // Within a group of options the arrow keys walk.
        const bool stop = widget->focusPolicy() & Qt::TabFocus || !qobject_cast<QRadioButton*>(widget);
        EXPECT_TRUE(!stop || reached.contains(widget)) << page << ": not reached by Tab: " << Called(*widget);
    }
    EXPECT_GE(reached.size(), 2U) << page;
}

TEST_F(AllWindows, name_everything_that_takes_the_keyboard_and_let_tab_get_there)
{
    ForEachPage([this](const std::string& page) { ExpectNamedAndReached(window(), page); });
    int dialogs = 0;
    for (QWidget* top : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QDialog*>(top);
        if (!dialog || dialog->objectName().isEmpty()) continue;
        ++dialogs;
        dialog->show();
        dialog->activateWindow();
        Await([dialog] { return dialog->isActiveWindow(); });
        ExpectNamedAndReached(*dialog, dialog->objectName().toStdString());
        dialog->hide();
    }
    EXPECT_GT(dialogs, 0);
}

TEST_F(AllWindows, walk_by_tab_from_the_tabs_through_what_stands_on_them_to_the_navigation)
{
    // A group of options is one stop; the arrow keys walk within it.
    const char* const order[] = {
        "txtLat",          "optNorth",  "txtLongitude_0",  "optEast_0", "cmdUpdateGPS", "cboSatListWithLongitude",
        "txtSatLongitude", "optEast_1", "cmdCalcAzElSkew", "cmdNav_2"};
    window().findChild<QStackedWidget*>("steps")->setCurrentIndex(0);
    auto* tabs = window().findChild<QTabWidget*>("SSTab1");
    tabs->setCurrentIndex(2);
    QApplication::processEvents();
    window().findChild<QWidget*>(order[0])->setFocus();
    for (const char* name : order) {
        ASSERT_TRUE(window().focusWidget());
        EXPECT_EQ(window().focusWidget()->objectName().toStdString(), name);
        PressTab(*window().focusWidget());
    }
}

TEST_F(AllWindows, show_the_diagnostics_unscrolled_on_a_laptop_and_easy_to_hit)
{
    frmWizard.lblScriptFile.Caption = "A script with a name.TXT";
    frmWizard.lblScriptLine.Caption = "Next: line 17 of 10000: SATINSTALL,DSS_101,NONE";
    window().resize(1350, 735);  // what a screen of 1366 x 768 has room for
    auto* text = window().findChild<QWidget*>("Text1");
    auto* steps = window().findChild<QStackedWidget*>("steps");
    auto* tabs = window().findChild<QTabWidget*>("SSTab1");
    ForEachPage([&](const std::string& page) {
        if (steps->currentIndex() != 0) return;
        Await([] { return !frmWizard.lblScriptLine.Changed; });
        QApplication::sendPostedEvents();
        for (const QScrollArea* area :
             {qobject_cast<QScrollArea*>(tabs->currentWidget()), qobject_cast<QScrollArea*>(steps->currentWidget())}) {
            EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << page;
            EXPECT_EQ(area->verticalScrollBar()->maximum(), 0) << page;
        }
        for (const auto* button : tabs->currentWidget()->findChildren<QPushButton*>())
            EXPECT_GE(button->height(), 36) << page << ": " << Called(*button);
        EXPECT_GE(text->width(), text->fontMetrics().averageCharWidth() * 50) << page;
    });
    for (const char* name : {"cmdUp", "cmdDown", "cmdLeft", "cmdRight"}) {
        const auto* button = window().findChild<QPushButton*>(name);
        EXPECT_TRUE(button->width() >= 64 && button->height() >= 48) << name;
    }
}

/// The letter that is underlined in a text; empty when there is none.
QString LetterOf(const QString& text)
{
    const QKeySequence mnemonic = QKeySequence::mnemonic(text);
    return mnemonic.toString();
}

QString TextOf(const QWidget& widget)
{
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) return group->title();
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label && label->buddy() ? label->text() : QString();
}

TEST_F(AllWindows, give_every_button_of_the_diagnostics_a_letter_that_nothing_else_beside_it_has)
{
    std::map<QString, std::string> outside;
    for (const QAction* menu : window().menuBar()->actions()) outside[LetterOf(menu->text())] = "the menu";
    for (const char* letter : {"Alt+B", "Alt+F", "Alt+N"}) outside[letter] = "the navigation";

    auto* steps = window().findChild<QStackedWidget*>("steps");
    ForEachPage([&](const std::string& page) {
        if (steps->currentIndex() != 0) return;
        std::map<QString, std::string> taken = outside;
        for (const QWidget* widget : window().findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->parentWidget()->objectName() == "picNav") continue;
            const QString letter = LetterOf(TextOf(*widget));
            const bool button = qobject_cast<const QPushButton*>(widget) && steps->isAncestorOf(widget);
            EXPECT_FALSE(button && letter.isEmpty()) << page << ": no letter: " << Called(*widget);
            if (letter.isEmpty()) continue;
            const auto [held, first] = taken.emplace(letter, Called(*widget));
            EXPECT_TRUE(first) << page << ": " << letter.toStdString() << " of " << Called(*widget)
                               << " is also the one of " << held->second;
        }
    });
}

}  // namespace
