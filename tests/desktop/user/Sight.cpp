#include "tests/desktop/user/Sight.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTabWidget>
#include <QTableWidget>

namespace {

QWidget* ButtonOf(QWidget* box, const QString& caption)
{
    if (!box) return nullptr;
    for (QAbstractButton* button : box->findChildren<QAbstractButton*>())
        if (Plain(button->text()) == caption) return button;
    return nullptr;
}

QString TextOf(const QWidget& widget)
{
    if (const auto* box = qobject_cast<const QMessageBox*>(&widget)) return box->text();
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return Plain(button->text());
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) return line->text();
    if (const auto* box = qobject_cast<const QPlainTextEdit*>(&widget)) return box->toPlainText();
    if (const auto* choice = qobject_cast<const QComboBox*>(&widget)) return choice->currentText();
    if (const auto* bar = qobject_cast<const QProgressBar*>(&widget)) return QString::number(bar->value());
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget)) return Plain(tabs->tabText(tabs->currentIndex()));
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) return Plain(group->title());
    if (const auto* list = qobject_cast<const QListWidget*>(&widget))
        return list->currentItem() ? list->currentItem()->text() : QString();
    return widget.windowTitle();
}

}  // namespace

QString Plain(QString caption) { return caption.remove(u'&'); }

QStringList EntriesOf(const QWidget& widget)
{
    QStringList entries;
    if (const auto* choice = qobject_cast<const QComboBox*>(&widget))
        for (int at = 0; at < choice->count(); ++at) entries << choice->itemText(at);
    if (const auto* list = qobject_cast<const QListWidget*>(&widget))
        for (int at = 0; at < list->count(); ++at) entries << list->item(at)->text();
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget))
        for (int at = 0; at < tabs->count(); ++at) entries << Plain(tabs->tabText(at));
    if (const auto* table = qobject_cast<const QTableWidget*>(&widget))
        for (int at = 0; at < table->rowCount() * table->columnCount(); ++at)
            entries << table->item(at / table->columnCount(), at % table->columnCount())->text();
    return entries;
}

QWidget* FindWidget(const QString& name)
{
    // A box over a box has the same name; the one that is open counts.
    QWidget* dialog = QApplication::activeModalWidget();
    if (name.startsWith(u"msgBox/")) return ButtonOf(dialog, name.mid(7));
    if (name.startsWith(u"fileDialog/")) return ButtonOf(FindWidget("fileDialog"), name.mid(11));
    if (name == u"msgBox") return qobject_cast<QMessageBox*>(dialog);
    if (const qsizetype slash = name.indexOf(u'/'); slash > 0) {
        const QWidget* window = FindWidget(name.left(slash));
        return window ? window->findChild<QWidget*>(name.mid(slash + 1)) : nullptr;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name) return window;
        if (auto* widget = window->findChild<QWidget*>(name)) return widget;
    }
    return nullptr;
}

QAction* FindAction(const QString& name)
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* action = window->findChild<QAction*>(name)) return action;
    return nullptr;
}

QJsonObject Seen(const QWidget& widget)
{
    if (const auto* menu = qobject_cast<const QMenu*>(&widget)) return Seen(*menu->menuAction());
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    return {{"visible", widget.isVisible()},
            {"enabled", widget.isEnabled()},
            {"text", TextOf(widget)},
            {"tip", widget.toolTip()},
            {"entries", EntriesOf(widget).join(u'\n')},
            {"checked", button && button->isChecked()}};
}

QJsonObject Seen(const QAction& action)
{
    return {{"visible", action.isVisible()},
            {"enabled", action.isEnabled()},
            {"text", Plain(action.text())},
            {"tip", action.toolTip()},
            {"checked", action.isChecked()}};
}
