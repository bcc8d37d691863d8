#include "desktop/Road.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "desktop/Looks.h"

Road::Road(QWidget* parent)
    : QWidget(parent), names_{tr("Welcome"),    tr("Before you begin"), tr("Select software"), tr("Versions"),
                              tr("Flash file"), tr("Update"),           tr("Restart"),         tr("Finished")}
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

void Road::SetStep(int step)
{
    step_ = step;
    const QString here = step >= 1 && step <= names_.size()
                             ? tr("Step %1 of %2: %3").arg(step).arg(names_.size()).arg(names_[step - 1])
                             : tr("Diagnostics");
    setAccessibleDescription(here);
    update();
}

void Road::SetCompact(bool compact)
{
    if (compact == compact_) return;
    compact_ = compact;
    updateGeometry();
}

QSize Road::sizeHint() const
{
    const int letter = fontMetrics().height();
    QFont bold = font();
    bold.setBold(true);
    int widest = 0;
    for (const QString& name : names_) widest = std::max(widest, QFontMetrics(bold).horizontalAdvance(name));
    return QSize(compact_ ? letter * 5 / 2 : letter * 7 / 2 + widest, letter * 5 / 2 * static_cast<int>(names_.size()));
}

QSize Road::minimumSizeHint() const
{
    return QSize(sizeHint().width(), fontMetrics().height() * static_cast<int>(names_.size()));
}

int Road::StationHeight() const
{
    return std::min(height() / static_cast<int>(names_.size()), fontMetrics().height() * 5 / 2);
}

int Road::StationAt(int y) const { return y / std::max(1, StationHeight()); }

void Road::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int station = 0; station < names_.size(); ++station) DrawStation(painter, station);
}

void Road::DrawStation(QPainter& painter, int station) const
{
    const bool done = station + 1 < step_, here = station + 1 == step_;
    const int letter = fontMetrics().height(), tall = StationHeight();
    const double radius = std::min(letter * 0.7, tall * 0.45);
    const QPointF center(letter * 1.25, tall * (station + 0.5));
    const QColor ground = palette().color(QPalette::Window), ink = palette().color(QPalette::WindowText);
    // Behind a box too: on some systems what lights up in a window at work has the colour of the ground in others.
    const QColor light = palette().color(QPalette::Active, QPalette::Highlight);
    const QColor quiet = Mixed(ink, ground, 0.55);

    const double gap = tall / 2.0 - radius;
    if (station > 0) {
        painter.setPen(QPen(here || done ? light : Mixed(ink, ground, 0.3), letter / 8.0));
        painter.drawLine(center - QPointF(0, radius + gap * 2), center - QPointF(0, radius));
    }

    painter.setPen(QPen(here || done ? light : quiet, 1.5));
    painter.setBrush(here ? light : ground);
    painter.drawEllipse(center, radius, radius);

    QFont font = painter.font();
    font.setBold(here);
    painter.setFont(font);
    const QRectF disc(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
    if (done) {
        painter.setPen(QPen(light, letter / 8.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        const QPointF tick[] = {center + QPointF(-0.4, 0.05) * radius, center + QPointF(-0.1, 0.35) * radius,
                                center + QPointF(0.45, -0.35) * radius};
        painter.drawPolyline(tick, 3);
    } else {
        painter.setPen(here ? ReadableOn(light) : quiet);
        painter.drawText(disc, Qt::AlignCenter, QString::number(station + 1));
    }
    if (compact_) return;
    painter.setPen(here ? ink : done ? Mixed(ink, ground, 0.85) : quiet);
    const double left = letter * 2.4;
    painter.drawText(QRectF(left, tall * station, width() - left, tall), Qt::AlignLeft | Qt::AlignVCenter,
                     names_[station]);
}

bool Road::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !compact_) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int station = StationAt(help->pos().y());
    QToolTip::showText(help->globalPos(), station < names_.size() ? names_[station] : QString(), this);
    return true;
}
