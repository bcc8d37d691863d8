#pragma once
// What a user sees: widgets and menu entries by the names of their controls.

#include <QAction>
#include <QJsonObject>
#include <QString>
#include <QWidget>

/// The shown widget of that name, or "msgBox/Retry" for a button of the open box; null when there is none.
QWidget* FindWidget(const QString& name);
QAction* FindAction(const QString& name);

QJsonObject Seen(const QWidget& widget);
QJsonObject Seen(const QAction& action);
