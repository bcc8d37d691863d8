#include "desktop/Lamp.h"

#include <QPainter>

Lamp::Lamp(QWidget* parent) : QWidget(parent) { setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

QSize Lamp::sizeHint() const { return QSize(fontMetrics().height(), fontMetrics().height()); }

void Lamp::paintEvent(QPaintEvent*)
{
    const bool lit = objectName() == u"imgEnabled";
    const QColor light = lit ? QColor(0x2f, 0xb3, 0x44) : palette().color(QPalette::Mid);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(light.darker(140));
    painter.setBrush(light);
    const double margin = width() / 8.0;
    painter.drawEllipse(QRectF(rect()).adjusted(margin, margin, -margin, -margin));
}
