#pragma once
// Texts and colours of the core, as the toolkit takes them.

#include <QColor>
#include <QString>
#include <string_view>

#include "forms/Control.h"

/// UTF-8, as file names are; what isn't UTF-8 came from the antenna and is taken byte by byte.
QString Words(std::string_view text);

/// Words for a box of many lines: any line end becomes one new line, other control characters become visible.
QString Lines(std::string_view text);

QColor ToColor(Color color);

/// Black or white, whichever reads better on `back`.
QColor ReadableOn(const QColor& back);

/// Contrast of two colours, from 1 (the same) to 21 (black on white), after the formula of WCAG 2.
double Contrast(const QColor& a, const QColor& b);

/// `share` (0 to 1) of `color`, the rest of `ground`.
QColor Mixed(const QColor& color, const QColor& ground, double share);
