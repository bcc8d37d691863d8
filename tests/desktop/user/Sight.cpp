#include "tests/desktop/user/Sight.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>

namespace {

/// A caption as it is read aloud.
QString Plain(QString caption) { return caption.remove(u'&'); }

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
    return widget.windowTitle();
}

}  // namespace

QWidget* FindWidget(const QString& name)
{
    // A box over a box has the same name; the one that is open counts.
    QWidget* dialog = QApplication::activeModalWidget();
    if (name.startsWith(u"msgBox/")) return ButtonOf(dialog, name.mid(7));
    if (name == u"msgBox") return qobject_cast<QMessageBox*>(dialog);
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
