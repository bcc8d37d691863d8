#pragma once
// A user inside the real program. The toolkit loads it as a plugin of its own (QT_QPA_GENERIC_PLUGINS=user); it reads
// commands from standard input, one a line, and answers each with one line of JSON on standard output.
//
// NAME is a control's, or WINDOW/NAME where several windows have one of that name.
//   see NAME          what the widget, menu entry or message box (msgBox) shows
//   click NAME        the mouse, on the middle of the widget; msgBox/Retry is the box's button "Retry", and
//                     fileDialog/Open one of the dialog that asks for a file
//   choose NAME ENTRY the keyboard on a combo box or on tabs, the mouse on an entry of a list
//   focus NAME        the keyboard goes there
//   type TEXT         keys, in the window that has the keyboard
//   key NAME          one key or combination: Return, Alt+N
//   close             the window's close button
//   paints NAME       how often the widget was painted so far
//
// QT_QPA_GENERIC_PLUGINS=user:dark gives the program the colours of a dark desktop.
//
// The answer holds "problem" when the user can't do that: the widget is hidden, disabled, covered, or behind a dialog.

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QSocketNotifier>

class QAction;

class User : public QObject {
public:
    User();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ReadCommands();
    QJsonObject Obey(const QString& command, const QString& rest);
    QJsonObject Click(const QString& name);
    QJsonObject Choose(const QString& name, const QString& entry);
    QJsonObject ClickAction(QAction& action);
    QJsonObject ClickAt(QWidget& widget, QPoint at);
    QJsonObject Type(const QString& text);
    QJsonObject PressKey(const QString& name);

    QSocketNotifier commands_;
    QByteArray partial_;
    QHash<QString, int> paints_;
};
