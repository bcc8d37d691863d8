#include "desktop/FindBar.h"

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QTextCursor>
#include <algorithm>
#include <vector>

#include "desktop/Looks.h"

namespace {

/// Where the words begin in the text; upper and lower case are the same.
std::vector<int> HitsOf(const QString& words, const QString& text)
{
    std::vector<int> hits;
    if (words.isEmpty()) return hits;
    for (qsizetype at = 0; (at = text.indexOf(words, at, Qt::CaseInsensitive)) >= 0; at += words.size())
        hits.push_back(static_cast<int>(at));
    return hits;
}

}  // namespace

FindBar::FindBar(QWidget* parent) : QWidget(parent), wanted_(new QLineEdit(this)), result_(new QLabel(this))
{
    wanted_->setObjectName(u"txtFind"_qs);
    wanted_->setAccessibleName(tr("Find in the antenna communications"));
    wanted_->setPlaceholderText(tr("Find"));
    wanted_->setClearButtonEnabled(true);
    result_->setObjectName(u"lblFound"_qs);
    result_->setTextFormat(Qt::PlainText);
    QPushButton* next = MakeButton(u"cmdFindNext"_qs, tr("Ne&xt hit"), tr("Enter"));
    QPushButton* previous = MakeButton(u"cmdFindPrevious"_qs, tr("Pre&vious hit"), tr("Shift+Enter"));
    QPushButton* close = MakeButton(u"cmdFindClose"_qs, tr("Close"), tr("Escape"));

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* line = new QHBoxLayout;
    line->addWidget(wanted_, 1);
    line->addWidget(close);
    rows->addLayout(line);
    auto* steps = new QHBoxLayout;
    steps->addWidget(next);
    steps->addWidget(previous);
    steps->addWidget(result_, 1);
    rows->addLayout(steps);

    connect(next, &QPushButton::clicked, this, [this] { Find(Way::Next); });
    connect(previous, &QPushButton::clicked, this, [this] { Find(Way::Previous); });
    connect(close, &QPushButton::clicked, this, &FindBar::Close);
    connect(wanted_, &QLineEdit::textEdited, this, [this] { Find(Way::Here); });
    for (QWidget* widget : {static_cast<QWidget*>(wanted_), static_cast<QWidget*>(next),
                            static_cast<QWidget*>(previous), static_cast<QWidget*>(close)})
        widget->installEventFilter(this);
    setTabOrder(wanted_, next);
    setTabOrder(next, previous);
    setTabOrder(previous, close);
    hide();
}

QPushButton* FindBar::MakeButton(const QString& name, const QString& caption, const QString& tip)
{
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAccessibleName(QString(caption).remove(u'&'));
    button->setToolTip(tip);
    button->setAutoDefault(false);
    button->setMinimumHeight(36);
    return button;
}

void FindBar::Open()
{
    QWidget* focus = QApplication::focusWidget();
    if (focus && !isAncestorOf(focus)) before_ = focus;
    const QString marked = box_->textCursor().selectedText();
    if (!marked.isEmpty() && !marked.contains(QChar::ParagraphSeparator)) wanted_->setText(marked);
    Tell({});
    show();
    wanted_->selectAll();
    wanted_->setFocus();
}

void FindBar::Close()
{
    hide();
    const bool back = before_ && before_->isVisible() && before_->isEnabled();
    (back ? before_.data() : box_)->setFocus();
}

/// Goes to the next hit behind or ahead of the mark, from the end on to the other end; while the user types, the hit
/// that is marked may grow on its spot.
void FindBar::Find(Way way)
{
    const QString words = wanted_->text();
    const std::vector<int> hits = HitsOf(words, box_->toPlainText());
    const int count = static_cast<int>(hits.size());
    if (count == 0) return Tell(words.isEmpty() ? QString() : tr("Not found"));

    QTextCursor cursor = box_->textCursor();
    const int marked = cursor.selectionStart();
    const int from = way == Way::Next && cursor.hasSelection() ? marked + 1 : marked;
    int hit = static_cast<int>(std::lower_bound(hits.begin(), hits.end(), from) - hits.begin());
    if (way == Way::Previous) hit += count - 1;
    hit %= count;

    cursor.setPosition(hits[static_cast<std::size_t>(hit)]);
    cursor.setPosition(cursor.position() + static_cast<int>(words.size()), QTextCursor::KeepAnchor);
    box_->setTextCursor(cursor);
    box_->ensureCursorVisible();
    Tell(tr("Hit %1 of %2").arg(hit + 1).arg(count));
}

void FindBar::Tell(const QString& words)
{
    result_->setText(words);
    wanted_->setAccessibleDescription(words);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return false;
    const auto* press = static_cast<QKeyEvent*>(event);
    if (press->key() == Qt::Key_Escape) {
        Close();
        return true;
    }
    const bool enter = press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter;
    if (!enter || watched != wanted_) return false;
    Find(press->modifiers() & Qt::ShiftModifier ? Way::Previous : Way::Next);
    return true;
}
