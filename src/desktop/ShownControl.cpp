#include "desktop/ShownControl.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextCursor>
#include <algorithm>

#include "desktop/Looks.h"
#include "desktop/PageView.h"

namespace {

/// A caption without the mark of its key.
QString Spoken(QString caption) { return caption.remove(u'&'); }

/// The caption with the mark of its key, where the form was drawn with one: its property "accelerator" is the piece of
/// the caption that the key's letter begins.
QString Keyed(const QWidget& widget, QString caption)
{
    const QString piece = widget.property("accelerator").toString();
    const qsizetype at = piece.isEmpty() ? -1 : caption.indexOf(piece);
    return at < 0 ? caption : caption.insert(at, u'&');
}

/// Options that exclude each other can't all be cleared by the toolkit's own rules, but a form can.
void SetChecked(QAbstractButton& button, bool checked)
{
    QButtonGroup* group = checked ? nullptr : button.group();
    if (group) group->setExclusive(false);
    button.setChecked(checked);
    if (group) group->setExclusive(true);
}

/// Check boxes don't wrap their captions.
QString Folded(const QString& caption)
{
    constexpr int longest = 44;
    QString folded;
    int length = 0;
    for (const QString& word : caption.split(u' ')) {
        if (length > 0) folded += length + word.size() > longest ? u'\n' : u' ';
        length =
            length + word.size() > longest ? static_cast<int>(word.size()) : length + static_cast<int>(word.size()) + 1;
        folded += word;
    }
    return folded;
}

QFont DrawnFont(const QWidget& widget)
{
    QFont font = widget.font();
    if (qobject_cast<const QPlainTextEdit*>(&widget)) font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QVariant scale = widget.property("fontScale");
    if (scale.isValid()) font.setPointSizeF(font.pointSizeF() * scale.toDouble());
    return font;
}

/// The buttons that lead on stand out while they can be pressed; on dark palettes the style draws options so dark that
/// they can't be found.
QPalette DrawnPalette(const QWidget& widget)
{
    const QPalette given = widget.palette();
    QPalette drawn;  // says only what differs, the rest stays the desktop's
    const QColor window = given.color(QPalette::Window), ink = given.color(QPalette::WindowText);
    const bool option = qobject_cast<const QRadioButton*>(&widget) || qobject_cast<const QCheckBox*>(&widget);
    if (option && window.lightness() < ink.lightness()) drawn.setColor(QPalette::Base, Mixed(ink, window, 0.25));
    if (!widget.property("leadsOn").toBool()) return drawn;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const QColor light = given.color(QPalette::Active, QPalette::Highlight);
        drawn.setColor(group, QPalette::Button, light);
        drawn.setColor(group, QPalette::ButtonText, ReadableOn(light));
    }
    return drawn;
}

}  // namespace

ShownControl::ShownControl(Control& shown, QWidget& widget)
    : control(shown), widget_(&widget), font_(DrawnFont(widget)), name_(widget.accessibleName())
{
    if (const auto* box = qobject_cast<QPlainTextEdit*>(&widget)) readOnly_ = box->isReadOnly();
    if (const auto* line = qobject_cast<QLineEdit*>(&widget)) readOnly_ = line->isReadOnly();
}

ShownControl::ShownControl(Control& shown, QAction& action) : control(shown), action_(&action) {}

void ShownControl::Apply()
{
    if (action_) ApplyAction();
    if (widget_) ApplyWidget(*widget_);
}

void ShownControl::ApplyAction()
{
    const QSignalBlocker quiet(action_);
    action_->setText(Words(control.Caption()));
    action_->setEnabled(control.Enabled);
    action_->setVisible(control.Visible);
    action_->setToolTip(Words(control.ToolTipText()));
    if (action_->isCheckable()) action_->setChecked(control.Value == 1);
}

void ShownControl::ApplyWidget(QWidget& widget)
{
    const QSignalBlocker quiet(&widget);
    if (auto* menu = qobject_cast<QMenu*>(&widget)) return ApplyMenu(*menu);
    ApplyContent(widget);
    ApplyFont(widget);
    ApplyColors(widget);
    widget.setToolTip(Words(control.ToolTipText()));
    widget.setEnabled(control.Enabled);
    ApplyVisible(widget);
}

void ShownControl::ApplyContent(QWidget& widget)
{
    if (auto* label = qobject_cast<QLabel*>(&widget)) return ApplyLabel(*label);
    if (auto* button = qobject_cast<QAbstractButton*>(&widget)) return ApplyButton(*button);
    if (auto* choice = qobject_cast<QComboBox*>(&widget)) return ApplyChoice(*choice);
    if (auto* list = qobject_cast<QListWidget*>(&widget)) return ApplyList(*list);
    if (auto* table = qobject_cast<QTableWidget*>(&widget)) return ApplyTable(*table);
    if (auto* line = qobject_cast<QLineEdit*>(&widget)) return ApplyLine(*line);
    if (auto* box = qobject_cast<QPlainTextEdit*>(&widget)) return ApplyText(*box);
    if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) return ApplyTabs(*tabs);
    if (auto* page = qobject_cast<PageView*>(&widget)) return page->ShowPage(Words(control.Text()));
    if (auto* box = qobject_cast<QGroupBox*>(&widget)) box->setTitle(Keyed(*box, Words(control.Caption())));
    if (auto* bar = qobject_cast<QProgressBar*>(&widget)) bar->setValue(control.Value);
}

void ShownControl::ApplyLabel(QLabel& label)
{
    QString words = Words(control.Caption()).remove(u'\r');
    const bool speaksForItself = name_ == u"Caption" || name_ == u"Heading";
    label.setAccessibleName(speaksForItself ? words : name_ + u": "_qs + words);
    if (label.buddy()) words.replace(u"&"_qs, u"&&"_qs);
    label.setText(Keyed(label, words));
}

void ShownControl::ApplyButton(QAbstractButton& button)
{
    const QString caption = Words(control.Caption());
    button.setText(Keyed(button, qobject_cast<QCheckBox*>(&button) ? Folded(caption) : caption));
    if (!caption.isEmpty()) button.setAccessibleName(Spoken(caption));
    if (button.isCheckable()) SetChecked(button, control.Value == 1);
}

void ShownControl::ApplyTabs(QTabWidget& tabs)
{
    const std::vector<std::string>& captions = control.List;
    const int count = std::min(tabs.count(), static_cast<int>(captions.size()));
    for (int tab = 0; tab < count; ++tab) tabs.setTabText(tab, Words(captions[static_cast<std::size_t>(tab)]));
    tabs.setCurrentIndex(control.ListIndex);
}

void ShownControl::ApplyChoice(QComboBox& choice)
{
    if (shownList_ != control.List()) {
        shownList_ = control.List();
        choice.clear();
        for (const std::string& entry : shownList_) choice.addItem(Words(entry));
    }
    choice.setCurrentIndex(control.ListIndex);
}

void ShownControl::ApplyList(QListWidget& list)
{
    if (shownList_ != control.List()) {
        shownList_ = control.List();
        list.clear();
        for (const std::string& entry : shownList_) list.addItem(Words(entry));
    }
    const int chosen = list.selectedItems().isEmpty() ? -1 : list.row(list.selectedItems().front());
    if (chosen == control.ListIndex) return;
    list.setCurrentRow(control.ListIndex);
    if (control.ListIndex == -1) list.clearSelection();
}

/// The first and the last column are as wide as what they hold, those between share the rest; what is too long for them
/// goes on in a second line.
void ShownControl::ApplyTable(QTableWidget& table)
{
    constexpr int mostRowsInView = 7;
    if (shownList_ == control.List()) return;
    shownList_ = control.List();
    const QStringList headings = shownList_.empty() ? QStringList() : Words(shownList_.front()).split(u'\t');
    const auto columns = static_cast<int>(headings.size());
    table.clear();
    table.setColumnCount(columns);
    table.setRowCount(std::max(0, static_cast<int>(shownList_.size()) - 1));
    table.setHorizontalHeaderLabels(headings);
    table.verticalHeader()->hide();
    for (int row = 0; row < table.rowCount(); ++row) {
        const QStringList cells = Words(shownList_[static_cast<std::size_t>(row) + 1]).split(u'\t');
        QFont font = table.font();
        font.setBold(cells.last() == u"no");
        for (int column = 0; column < std::min(columns, static_cast<int>(cells.size())); ++column) {
            auto* item = new QTableWidgetItem(cells[column]);
            item->setFont(font);
            table.setItem(row, column, item);
        }
    }
    for (int column = 0; column < columns; ++column)
        table.horizontalHeader()->setSectionResizeMode(
            column, column == 0 || column == columns - 1 ? QHeaderView::ResizeToContents : QHeaderView::Stretch);
    table.verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    const int line = table.fontMetrics().height() * 3 / 2;
    const int height = std::min(line * (std::min(table.rowCount(), mostRowsInView) + 2), table.window()->height() / 3);
    table.setFixedHeight(std::max(height, line * 3));  // the step above it keeps most of the window
}

void ShownControl::ApplyLine(QLineEdit& line)
{
    const QString words = Words(control.Text());
    if (line.text() != words) line.setText(words);
    line.setReadOnly(readOnly_ || control.Locked);
}

void ShownControl::ApplyText(QPlainTextEdit& box)
{
    box.setReadOnly(readOnly_ || control.Locked);
    std::string_view text = control.Text();
    if (text.ends_with('\r')) text.remove_suffix(1);  // the other half of this line end is still to come
    if (text == shownText_) return;
    if (text.starts_with(shownText_)) {
        AppendLines(box, Lines(text.substr(shownText_.size())));
    } else {
        box.setPlainText(Lines(text));
        box.moveCursor(QTextCursor::End);
    }
    shownText_ = text;
}

void AppendLines(QPlainTextEdit& box, const QString& lines)
{
    const QTextCursor users = box.textCursor();
    const int anchor = users.anchor(), position = users.position();
    const int scrolled = box.verticalScrollBar()->value();
    const bool follow = !users.hasSelection() && scrolled >= box.verticalScrollBar()->maximum();

    QTextCursor end(box.document());
    end.movePosition(QTextCursor::End);
    end.insertText(lines);

    if (follow) {
        box.moveCursor(QTextCursor::End);
        box.verticalScrollBar()->setValue(box.verticalScrollBar()->maximum());
        return;
    }
    QTextCursor restored(box.document());
    restored.setPosition(anchor);
    restored.setPosition(position, QTextCursor::KeepAnchor);
    box.setTextCursor(restored);
    box.verticalScrollBar()->setValue(scrolled);
}

void ShownControl::ApplyMenu(QMenu& menu)
{
    menu.setTitle(Words(control.Caption()));
    menu.menuAction()->setEnabled(control.Enabled);
    menu.menuAction()->setVisible(control.Visible);
}

void ShownControl::ApplyVisible(QWidget& widget)
{
    auto* stack = qobject_cast<QStackedWidget*>(widget.parentWidget());
    if (stack) {
        // The step that comes is told to be visible; the one that goes needs no word of its own.
        const bool comes = control.Visible && stack->currentWidget() != &widget;
        if (comes) stack->setCurrentWidget(&widget);
        return;
    }
    const bool emptyLabel = qobject_cast<QLabel*>(&widget) && control.Caption().empty();
    widget.setVisible(control.Visible && !emptyLabel);
}

void ShownControl::ApplyFont(QWidget& widget)
{
    constexpr double enlargement = 1.25;
    QFont font = font_;
    if (control.Bold) font.setBold(true);
    if (control.Enlarged) font.setPointSizeF(font.pointSizeF() * enlargement);
    if (font != widget.font()) widget.setFont(font);
}

void ShownControl::ApplyColors(QWidget& widget)
{
    if (control.BackColor == Standard && control.ForeColor == Standard) {
        widget.setPalette(QPalette());  // what was drawn before must not show through
        widget.setPalette(DrawnPalette(widget));
        widget.setAutoFillBackground(false);
        return;
    }
    constexpr double tint = 0.45, readable = 3;
    const bool button = qobject_cast<QPushButton*>(&widget), label = qobject_cast<QLabel*>(&widget);
    const QPalette::ColorRole ground = button ? QPalette::Button : label ? QPalette::Window : QPalette::Base;
    const QPalette::ColorRole ink = button ? QPalette::ButtonText : label ? QPalette::WindowText : QPalette::Text;

    QPalette palette;
    QColor back = control.BackColor == Standard ? palette.color(ground) : ToColor(control.BackColor);
    if (button) back = Mixed(back, palette.color(ground), tint);  // a button is to be seen, not to glare
    QColor fore = control.ForeColor == Standard ? ReadableOn(back) : ToColor(control.ForeColor);
    // A text colour alone may meet a palette on which it can't be seen.
    if (control.BackColor == Standard && Contrast(back, fore) < readable) back = ReadableOn(fore);
    if (Contrast(back, fore) < readable) fore = ReadableOn(back);
    palette.setColor(ground, back);
    palette.setColor(ink, fore);
    widget.setPalette(palette);
    widget.setAutoFillBackground(label);
}
