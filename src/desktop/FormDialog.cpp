#include "desktop/FormDialog.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

namespace {

/// A scroll area asks for a modest size by itself, however much it holds.
QSize HiddenByScrolling(const QDialog& dialog)
{
    QSize hidden;
    for (const QScrollArea* area : dialog.findChildren<QScrollArea*>()) {
        const int bar = area->verticalScrollBar()->sizeHint().width();
        const QSize whole = area->widget()->sizeHint() + QSize(bar + 2 * area->frameWidth(), 2 * area->frameWidth());
        hidden = hidden.expandedTo(whole - area->sizeHint());
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
