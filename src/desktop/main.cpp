#include <QApplication>

#include "desktop/Desktop.h"

int main(int argc, char** argv)
{
    QApplication::setStyle(u"Fusion"_qs);  // the same on every desktop; the colours are the system's
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Burnline"_qs);
    QApplication::setApplicationDisplayName(u"Burnline Assistant"_qs);
    QApplication::setApplicationVersion(QStringLiteral(BURNLINE_REVISION));
    // Main decides when the program ends, not the last window.
    QApplication::setQuitOnLastWindowClosed(false);
    Desktop().Run();
}
