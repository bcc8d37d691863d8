#include "tests/desktop/user/User.h"

#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QGenericPlugin>
#include <QJsonDocument>
#include <QKeySequence>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QWindow>
#include <QtTest/QTest>

#include "tests/desktop/user/Dark.h"
#include "tests/desktop/user/Sight.h"

namespace {

QJsonObject Problem(const QString& words) { return {{"problem", words}}; }

/// Behind the answer: what a click starts may not come back before the next commands are due.
template <class Act>
QJsonObject Later(Act act)
{
    QMetaObject::invokeMethod(qApp, act, Qt::QueuedConnection);
    return {};
}

void ScrollTo(QWidget& widget)
{
    for (QWidget* parent = widget.parentWidget(); parent; parent = parent->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(parent)) area->ensureWidgetVisible(&widget);
}

/// Space unfolds the list, the keys go down to the entry, Return takes it: the program hears of one choice.
void ChooseByKeys(QComboBox& box, int entry)
{
    QWindow* window = box.window()->windowHandle();
    window->requestActivate();
    box.setFocus();
    QTest::keyClick(window, Qt::Key_Space);
    const QWidget* list = QApplication::activePopupWidget();
    if (!list) return;
    QTest::keyClick(list->windowHandle(), Qt::Key_Home);
    for (int at = 0; at < entry; ++at) QTest::keyClick(list->windowHandle(), Qt::Key_Down);
    QTest::keyClick(list->windowHandle(), Qt::Key_Return);
}

/// Tabs that have no room hide behind arrows, but the arrow keys find them.
void ChooseByKeys(QTabWidget& tabs, int entry)
{
    QWindow* window = tabs.window()->windowHandle();
    window->requestActivate();
    tabs.tabBar()->setFocus();
    for (int left = tabs.currentIndex(); left > entry; --left) QTest::keyClick(window, Qt::Key_Left);
    for (int left = tabs.currentIndex(); left < entry; ++left) QTest::keyClick(window, Qt::Key_Right);
}

}  // namespace

User::User() : commands_(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&commands_, &QSocketNotifier::activated, this, &User::ReadCommands);
    qApp->installEventFilter(this);
}

bool User::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) ++paints_[watched->objectName()];
    return false;
}

void User::ReadCommands()
{
    char bytes[4096];
    const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
    if (count <= 0) return commands_.setEnabled(false);
    partial_.append(bytes, count);
    for (qsizetype end; (end = partial_.indexOf('\n')) >= 0;) {
        const QString line = QString::fromUtf8(partial_.left(end));
        partial_.remove(0, end + 1);
        const QJsonObject answer = Obey(line.section(u' ', 0, 0), line.section(u' ', 1));
        const QByteArray words = QJsonDocument(answer).toJson(QJsonDocument::Compact) + '\n';
        if (write(STDOUT_FILENO, words.constData(), static_cast<std::size_t>(words.size())) != words.size()) return;
    }
}

QJsonObject User::Obey(const QString& command, const QString& rest)
{
    if (command == u"see") {
        if (const QWidget* widget = FindWidget(rest)) return Seen(*widget);
        if (const QAction* action = FindAction(rest)) return Seen(*action);
        return Problem(rest + " isn't there");
    }
    if (command == u"click") return Click(rest);
    if (command == u"choose") return Choose(rest.section(u' ', 0, 0), rest.section(u' ', 1));
    if (command == u"type") return Type(rest);
    if (command == u"key") return PressKey(rest);
    if (command == u"paints") return {{"text", QString::number(paints_.value(rest))}};
    if (command == u"focus") {
        QWidget* widget = FindWidget(rest);
        if (!widget || !widget->isVisible() || !widget->isEnabled()) return Problem(rest + " takes no keys");
        widget->setFocus();
        return {};
    }
    QWidget* window = FindWidget("frmWizard");
    if (command != u"close" || !window) return Problem("not understood: " + command);
    return Later([window] { window->close(); });
}

QJsonObject User::Click(const QString& name)
{
    QWidget* widget = FindWidget(name);
    if (auto* menu = qobject_cast<QMenu*>(widget)) return ClickAction(*menu->menuAction());
    if (!widget) {
        QAction* action = FindAction(name);
        return action ? ClickAction(*action) : Problem(name + " isn't there");
    }
    if (!widget->isVisible() || !widget->isEnabled()) return Problem(name + " is hidden or disabled");
    ScrollTo(*widget);
    // The box and ring of an option stand at its left; its caption need not fill it.
    const bool option = widget->inherits("QRadioButton") || widget->inherits("QCheckBox");
    return ClickAt(*widget, option ? QPoint(10, widget->height() / 2) : widget->rect().center());
}

QJsonObject User::Choose(const QString& name, const QString& entry)
{
    QWidget* widget = FindWidget(name);
    if (!widget || !widget->isVisible() || !widget->isEnabled()) return Problem(name + " can't be chosen from");
    const int at = static_cast<int>(EntriesOf(*widget).indexOf(entry));
    if (at < 0) return Problem(name + " has no entry " + entry);
    ScrollTo(*widget);
    if (auto* tabs = qobject_cast<QTabWidget*>(widget)) return Later([tabs, at] { ChooseByKeys(*tabs, at); });
    if (auto* list = qobject_cast<QListWidget*>(widget)) {
        list->scrollToItem(list->item(at));
        return ClickAt(*list->viewport(), list->visualItemRect(list->item(at)).center());
    }
    auto* box = qobject_cast<QComboBox*>(widget);
    if (!box) return Problem(name + " has no entries");
    return Later([box, at] { ChooseByKeys(*box, at); });
}

/// In the menu bar, or in a menu that is open.
QJsonObject User::ClickAction(QAction& action)
{
    for (QObject* object : action.associatedObjects()) {
        auto* menu = qobject_cast<QMenu*>(object);
        auto* bar = qobject_cast<QMenuBar*>(object);
        if (!action.isVisible() || !action.isEnabled()) return Problem(action.text() + " is hidden or disabled");
        if (menu && menu->isVisible()) return ClickAt(*menu, menu->actionGeometry(&action).center());
        if (bar && bar->isVisible()) return ClickAt(*bar, bar->actionGeometry(&action).center());
    }
    return Problem("the menu of " + action.text() + " isn't open");
}

QJsonObject User::ClickAt(QWidget& widget, QPoint at)
{
    QWidget* window = widget.window();
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog && dialog != window && !QApplication::activePopupWidget())
        return Problem(widget.objectName() + " stands behind a dialog");
    const QPoint inWindow = widget.mapTo(window, at);
    const QWidget* hit = window->childAt(inWindow);
    if (hit && hit != &widget && !widget.isAncestorOf(hit))
        return Problem(widget.objectName() + " is covered by " + hit->objectName());
    // To the window, not to the widget: the toolkit itself decides who is under the mouse and who may be clicked.
    QWindow* handle = window->windowHandle();
    // The button comes up before the next command is read; what it starts may not come back before that is due.
    commands_.setEnabled(false);
    return Later([this, handle, inWindow] {
        // What a window manager does; a menu leaves the keyboard to the window below it.
        if (!QApplication::activePopupWidget()) handle->requestActivate();
        QTest::mousePress(handle, Qt::LeftButton, {}, inWindow);
        commands_.setEnabled(true);
        QTest::mouseRelease(handle, Qt::LeftButton, {}, inWindow);
    });
}

QJsonObject User::Type(const QString& text)
{
    QWindow* window = QGuiApplication::focusWindow();
    if (!window) return Problem("no window has the keyboard");
    // Each key is a turn of the event loop, in which the next command must not overtake the letters that are left.
    commands_.setEnabled(false);
    return Later([this, window, text] {
        for (const QChar letter : text) QTest::keyClick(window, letter.toLatin1());
        commands_.setEnabled(true);
    });
}

QJsonObject User::PressKey(const QString& name)
{
    QWindow* window = QGuiApplication::focusWindow();
    const QKeySequence keys(name);
    if (!window) return Problem("no window has the keyboard");
    if (keys.isEmpty()) return Problem("no such key: " + name);
    return Later([window, pressed = keys[0]] { QTest::keyClick(window, pressed.key(), pressed.keyboardModifiers()); });
}

/// The toolkit makes one when the program starts and keeps it to the end.
class UserPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "user.json")

public:
    QObject* create(const QString&, const QString& wish) override
    {
        if (wish == u"dark") DarkenPalette();
        return new User;
    }
};

#include "User.moc"
