#include "desktop/FormDialog.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

namespace {

/// What a list, a text or a page would take if nothing of it were scrolled away.
QSize Content(const QAbstractScrollArea& area)
{
    if (const auto* page = qobject_cast<const QScrollArea*>(&area)) return page->widget()->sizeHint();
    if (const auto* list = qobject_cast<const QListWidget*>(&area))
        return {0, list->count() * (list->sizeHintForRow(0) + 2 * list->spacing()) + list->spacing()};
    const auto* box = qobject_cast<const QPlainTextEdit*>(&area);
    return {0, box ? (box->blockCount() + 1) * box->fontMetrics().lineSpacing() : 0};
}

/// A scroll area asks for a modest size by itself, however much it holds.
QSize HiddenByScrolling(const QDialog& dialog)
{
    QSize hidden;
    for (const QAbstractScrollArea* area : dialog.findChildren<QAbstractScrollArea*>()) {
        const int bar = area->verticalScrollBar()->sizeHint().width();
        const QSize frame(2 * area->frameWidth(), 2 * area->frameWidth());
        hidden = hidden.expandedTo(Content(*area) + frame + QSize(bar, 0) - area->sizeHint());
    }
    return hidden;
}

QSize FitToScreen(const QDialog& dialog)
{
    const int letter = dialog.fontMetrics().height();
    const QSize room = dialog.screen()->availableGeometry().size() - QSize(2 * letter, 4 * letter);  // for its frame
    QSize size = dialog.sizeHint() + HiddenByScrolling(dialog);
    // Less width makes its labels higher.
    if (dialog.hasHeightForWidth()) size.setHeight(std::max(size.height(), dialog.heightForWidth(size.width())));
    return size.boundedTo(room);
}

}  // namespace

void FormDialog::setVisible(bool visible)
{
    if (visible && !isVisible()) {
        ensurePolished();
        resize(FitToScreen(*this));
    }
    QDialog::setVisible(visible);
}
