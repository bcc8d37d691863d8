#pragma once
// Message boxes and file dialogs. All are modal and return when the user has answered.

#include <QStringList>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "platform/Computer.h"

Answer AskUser(QWidget* parent, const std::string& words, Buttons buttons, Icon icon, const std::string& title,
               Answer standard);
std::vector<std::string> AskForFiles(QWidget* parent, const FileDialog& dialog);
std::optional<std::string> AskWhereToSave(QWidget* parent, const FileDialog& dialog);

/// "Log Files (*.LOG)|*.log|All Files (*.*)|*.*" as the toolkit's filters, upper and lower case alike.
QStringList NameFilters(const std::string& filter);
