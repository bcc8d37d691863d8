#include "desktop/Dial.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>
#include <cmath>

#include "desktop/Looks.h"

namespace {

constexpr int dials = 3;

/// A point on a circle; degrees from the right, counter-clockwise as in school.
QPointF At(const QRectF& disc, double degrees, double share)
{
    const double radians = qDegreesToRadians(degrees), radius = disc.width() / 2 * share;
    return disc.center() + QPointF(std::cos(radians), -std::sin(radians)) * radius;
}

QString InWords(const Dial::Angles& angles)
{
    const auto figure = [](double degrees) { return QString::number(std::abs(degrees), 'f', 1); };
    const QString side = angles.elevation < 0 ? Dial::tr("below") : Dial::tr("above");
    const QString turn = angles.skew < 0 ? Dial::tr("clockwise") : Dial::tr("counter-clockwise");
    return Dial::tr(
               "Azimuth %1 degrees from north over east, elevation %2 degrees %3 the horizon, skew %4 degrees %5 "
               "as seen from behind the dish.")
        .arg(figure(angles.azimuth), figure(angles.elevation), side, figure(angles.skew), turn);
}

void DrawPointer(QPainter& painter, const QPointF& from, const QPointF& to, const QColor& color, double width)
{
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(from, to);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(to, width * 1.3, width * 1.3);
    painter.setBrush(Qt::NoBrush);
}

}  // namespace

Dial::Dial(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleDescription(WordsBelow());
}

void Dial::Show(const std::optional<Angles>& angles)
{
    const bool real =
        angles && std::isfinite(angles->azimuth) && std::isfinite(angles->elevation) && std::isfinite(angles->skew);
    const std::optional<Angles> shown = real ? angles : std::nullopt;
    if (shown == angles_) return;
    angles_ = shown;
    setAccessibleDescription(angles_ ? InWords(*angles_) + u' ' + WordsBelow() : WordsBelow());
    update();
}

QString Dial::WordsBelow() const
{
    if (!angles_) return tr("Enter the antenna's position, choose a satellite, then press Calculate.");
    if (angles_->elevation < 0) return tr("Below the horizon: this satellite can't be seen from here.");
    return tr("Skew as seen from behind the dish.");
}

QSize Dial::sizeHint() const { return QSize(fontMetrics().height() * 22, fontMetrics().height() * 11); }

QSize Dial::minimumSizeHint() const { return QSize(fontMetrics().height() * 15, fontMetrics().height() * 9); }

QColor Dial::Ink(double share) const
{
    return Mixed(palette().color(QPalette::WindowText), palette().color(QPalette::Window), share);
}

void Dial::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double letter = fontMetrics().height(), words = letter * 2.2;
    const double column = width() / static_cast<double>(dials);
    const double across = std::min(column - letter * 1.2, height() - words - letter * 1.6);
    const QString captions[dials] = {tr("Azimuth"), tr("Elevation"), tr("Skew")};
    for (int dial = 0; dial < dials; ++dial) {
        const QRectF disc(column * (dial + 0.5) - across / 2, letter * 1.4, across, across);
        painter.setPen(Ink(angles_ ? 1 : 0.65));
        painter.drawText(QRectF(column * dial, 0, column, letter * 1.2), Qt::AlignCenter, captions[dial]);
        painter.setPen(QPen(Ink(0.4), letter / 12));
        painter.setBrush(palette().color(QPalette::Base));
        painter.drawEllipse(disc);
        painter.setBrush(Qt::NoBrush);
        dial == 0 ? DrawAzimuth(painter, disc) : dial == 1 ? DrawElevation(painter, disc) : DrawSkew(painter, disc);
    }
    const bool hidden = angles_ && angles_->elevation < 0;
    QFont font = this->font();
    font.setBold(hidden);
    painter.setFont(font);
    painter.setPen(Ink(hidden ? 1 : 0.75));
    const QRectF below(0, letter * 1.6 + across, width(), height() - letter * 1.6 - across);
    painter.drawText(below, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, WordsBelow());
}

/// A compass with north at the top.
void Dial::DrawAzimuth(QPainter& painter, const QRectF& disc) const
{
    const double letter = fontMetrics().height();
    painter.setPen(QPen(Ink(0.4), letter / 12));
    for (int degrees = 0; degrees < 360; degrees += 30)
        if (degrees % 90 != 0) painter.drawLine(At(disc, degrees, 0.9), At(disc, degrees, 1));
    const QString directions[] = {tr("N"), tr("E"), tr("S"), tr("W")};
    painter.setPen(Ink(angles_ ? 0.85 : 0.6));
    for (int quarter = 0; quarter < 4; ++quarter) {
        QRectF box(0, 0, letter * 1.2, letter * 1.2);
        box.moveCenter(At(disc, 90 - quarter * 90, 1 - letter * 1.3 / disc.width()));
        painter.drawText(box, Qt::AlignCenter, directions[quarter]);
    }
    if (!angles_) return;
    const QColor light = palette().color(QPalette::Active, QPalette::Highlight);
    DrawPointer(painter, disc.center(), At(disc, 90 - angles_->azimuth, 0.62), light, letter / 5);
}

/// The sky above the ground, seen from the side.
void Dial::DrawElevation(QPainter& painter, const QRectF& disc) const
{
    const double letter = fontMetrics().height();
    painter.setPen(Qt::NoPen);
    painter.setBrush(Ink(0.22));
    constexpr int sixteenths = 16;
    painter.drawChord(disc, 180 * sixteenths, 180 * sixteenths);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Ink(angles_ ? 0.8 : 0.5), letter / 8));
    painter.drawLine(At(disc, 180, 1), At(disc, 0, 1));
    painter.setPen(QPen(Ink(0.4), letter / 12));
    for (const int degrees : {30, 60, 90, 120, 150}) painter.drawLine(At(disc, degrees, 0.9), At(disc, degrees, 1));
    if (!angles_) return;
    const QColor light =
        palette().color(QPalette::Active, angles_->elevation < 0 ? QPalette::WindowText : QPalette::Highlight);
    DrawPointer(painter, disc.center(), At(disc, angles_->elevation, 0.75), light, letter / 5);
}

/// The dish as its installer sees it who stands behind it and looks to the satellite.
void Dial::DrawSkew(QPainter& painter, const QRectF& disc) const
{
    const double letter = fontMetrics().height();
    painter.setPen(QPen(Ink(0.4), letter / 12, Qt::DashLine));
    painter.drawLine(At(disc, 180, 1), At(disc, 0, 1));
    if (!angles_) return;
    const QColor light = palette().color(QPalette::Active, QPalette::Highlight);
    painter.save();
    painter.translate(disc.center());
    painter.rotate(-angles_->skew);
    const double half = disc.width() / 2 * 0.8;
    painter.setPen(QPen(light, letter / 6));
    painter.setBrush(Mixed(light, palette().color(QPalette::Base), 0.25));
    painter.drawEllipse(QPointF(), half, half * 0.62);
    painter.drawLine(QPointF(-half, 0), QPointF(half, 0));
    painter.restore();
}
