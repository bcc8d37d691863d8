#include "tests/desktop/user/Dark.h"

#include <QApplication>
#include <QPalette>

void DarkenPalette()
{
    const QColor ground(0x2b, 0x2b, 0x2b), page(0x1e, 0x1e, 0x1e), ink(0xee, 0xee, 0xee), quiet(0x80, 0x80, 0x80);
    QPalette dark(ink, ground.lighter(130), ground.lighter(160), ground.darker(160), ground.darker(120), ink, Qt::white,
                  page, ground);
    dark.setColor(QPalette::Highlight, QColor(0x3d, 0x8b, 0xd9));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::ToolTipBase, page);
    dark.setColor(QPalette::ToolTipText, ink);
    dark.setColor(QPalette::PlaceholderText, quiet);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, quiet);
    QApplication::setPalette(dark);
}
