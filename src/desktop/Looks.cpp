#include "desktop/Looks.h"

#include <QStringDecoder>
#include <algorithm>
#include <cmath>

QString Words(std::string_view text)
{
    QStringDecoder decode(QStringDecoder::Utf8);
    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
    QString words = decode(bytes);
    return decode.hasError() ? QString::fromLatin1(bytes) : words;
}

QString Lines(std::string_view text)
{
    QString lines = Words(text);
    lines.replace(u"\r\n"_qs, u"\n"_qs);
    for (QChar& letter : lines) {
        if (letter == u'\r') letter = u'\n';
        const bool control = letter < u' ' && letter != u'\n' && letter != u'\t';
        if (control) letter = u'·';
    }
    return lines;
}

QColor ToColor(Color color) { return QColor::fromRgb(static_cast<QRgb>(color)); }

namespace {

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color)
{
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

}  // namespace

double Contrast(const QColor& a, const QColor& b)
{
    const double first = Luminance(a), second = Luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor ReadableOn(const QColor& back)
{
    return Contrast(back, Qt::black) >= Contrast(back, Qt::white) ? Qt::black : Qt::white;
}

QColor Mixed(const QColor& color, const QColor& ground, double share)
{
    const auto mix = [share](float a, float b) { return static_cast<float>(share * a + (1 - share) * b); };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}
