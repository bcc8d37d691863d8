#pragma once
// One control of a form and the widget or menu entry that shows it.

#include <QAction>
#include <QFont>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <string>

#include "forms/Control.h"

class QAbstractButton;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QTableWidget;
class QTabWidget;

class ShownControl {
public:
    ShownControl(Control& control, QWidget& widget);
    ShownControl(Control& control, QAction& action);

    /// Brings the widget up to what the control says.
    void Apply();

    Control& control;

private:
    void ApplyAction();
    void ApplyWidget(QWidget& widget);
    void ApplyContent(QWidget& widget);
    void ApplyLabel(QLabel& label);
    void ApplyButton(QAbstractButton& button);
    void ApplyTabs(QTabWidget& tabs);
    void ApplyChoice(QComboBox& choice);
    void ApplyList(QListWidget& list);
    void ApplyTable(QTableWidget& table);
    void ApplyLine(QLineEdit& line);
    void ApplyText(QPlainTextEdit& box);
    void ApplyMenu(QMenu& menu);
    void ApplyVisible(QWidget& widget);
    void ApplyFont(QWidget& widget);
    void ApplyColors(QWidget& widget);

    QPointer<QWidget> widget_;
    QPointer<QAction> action_;
    QFont font_;                          // as the form was drawn, neither Bold nor Enlarged
    QString name_;                        // what a screen reader says ahead of a label's text
    bool readOnly_ = false;               // as the form was drawn, not Locked
    std::string shownText_;               // of a box of many lines
    std::vector<std::string> shownList_;  // of a combo or list box, or a table
};

/// Appends to a box of many lines. The end stays in view unless the user has scrolled up or marked something.
void AppendLines(QPlainTextEdit& box, const QString& lines);
