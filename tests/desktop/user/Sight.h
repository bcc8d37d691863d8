#pragma once
// What a user sees: widgets and menu entries by the names of their controls.

#include <QAction>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QWidget>

/// A caption as it is read aloud.
QString Plain(QString caption);

/// The shown widget of that name, or "msgBox/Retry" and "fileDialog/Open" for a button of what is open; null when there
/// is none.
QWidget* FindWidget(const QString& name);
QAction* FindAction(const QString& name);

/// The entries of a combo box or list, the captions of tabs.
QStringList EntriesOf(const QWidget& widget);

QJsonObject Seen(const QWidget& widget);
QJsonObject Seen(const QAction& action);
