#include "desktop/Dialogs.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

#include "desktop/Looks.h"

namespace {

QMessageBox::StandardButtons SetOf(Buttons buttons)
{
    switch (buttons) {
    case Buttons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::RetryCancel: return QMessageBox::Retry | QMessageBox::Cancel;
    case Buttons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::OK: break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton ButtonOf(Answer answer)
{
    switch (answer) {
    case Answer::Cancel: return QMessageBox::Cancel;
    case Answer::Retry: return QMessageBox::Retry;
    case Answer::Yes: return QMessageBox::Yes;
    case Answer::No: return QMessageBox::No;
    case Answer::OK: break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon IconOf(Icon icon)
{
    switch (icon) {
    case Icon::Critical: return QMessageBox::Critical;
    case Icon::Exclamation: return QMessageBox::Warning;
    case Icon::Information: return QMessageBox::Information;
    case Icon::Question: return QMessageBox::Question;
    case Icon::None: break;
    }
    return QMessageBox::NoIcon;
}

Answer AnswerOf(int button, Buttons buttons)
{
    switch (button) {
    case QMessageBox::Cancel: return Answer::Cancel;
    case QMessageBox::Retry: return Answer::Retry;
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    default: break;
    }
    return buttons == Buttons::YesNo ? Answer::No : Answer::OK;
}

void SetUp(QFileDialog& chooser, const FileDialog& dialog)
{
    chooser.setObjectName(u"fileDialog"_qs);
    chooser.setWindowTitle(Words(dialog.title));
    chooser.setDirectory(Words(dialog.directory));
    chooser.setNameFilters(NameFilters(dialog.filter));
    chooser.setOption(QFileDialog::HideNameFilterDetails);
    if (!dialog.name.empty()) chooser.selectFile(Words(dialog.name));
}

}  // namespace

Answer AskUser(QWidget* parent, const std::string& words, Buttons buttons, Icon icon, const std::string& title,
               Answer standard)
{
    QMessageBox box(parent);
    box.setObjectName(u"msgBox"_qs);
    box.setWindowTitle(Words(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(Words(words).remove(u'\r').trimmed());
    box.setIcon(IconOf(icon));
    box.setStandardButtons(SetOf(buttons));
    box.setDefaultButton(ButtonOf(standard));
    return AnswerOf(box.exec(), buttons);
}

QStringList NameFilters(const std::string& filter)
{
    QStringList filters;
    const QStringList parts = Words(filter).split(u'|');
    for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
        QStringList patterns;
        for (const QString& pattern : parts[at + 1].split(u';', Qt::SkipEmptyParts)) {
            const QString wanted = pattern.trimmed() == u"*.*" ? u"*"_qs : pattern.trimmed();
            patterns << wanted.toLower() << wanted.toUpper();
        }
        patterns.removeDuplicates();
        filters << parts[at] + u" ("_qs + patterns.join(u' ') + u')';
    }
    return filters;
}

std::vector<std::string> AskForFiles(QWidget* parent, const FileDialog& dialog)
{
    QFileDialog chooser(parent);
    SetUp(chooser, dialog);
    chooser.setAcceptMode(QFileDialog::AcceptOpen);
    chooser.setFileMode(dialog.many ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    std::vector<std::string> chosen;
    if (chooser.exec() != QDialog::Accepted) return chosen;
    for (const QString& path : chooser.selectedFiles()) chosen.push_back(path.toStdString());
    return chosen;
}

std::optional<std::string> AskWhereToSave(QWidget* parent, const FileDialog& dialog)
{
    QFileDialog chooser(parent);
    SetUp(chooser, dialog);
    chooser.setAcceptMode(QFileDialog::AcceptSave);
    chooser.setFileMode(QFileDialog::AnyFile);
    chooser.setOption(QFileDialog::DontConfirmOverwrite);  // the core asks in its own words
    if (chooser.exec() != QDialog::Accepted || chooser.selectedFiles().isEmpty()) return std::nullopt;
    return chooser.selectedFiles().front().toStdString();
}
