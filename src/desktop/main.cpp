#include <QApplication>
#include <QProcess>

#include "desktop/Desktop.h"

int main(int argc, char** argv)
{
#ifndef Q_OS_WIN
    // The same on every desktop but Windows, which has its own; the colours are the system's.
    QApplication::setStyle(u"Fusion"_qs);
#endif
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Burnline"_qs);
    QApplication::setApplicationVersion(QStringLiteral(BURNLINE_REVISION));
    QApplication::setDesktopFileName(u"org.burnline.assistant"_qs);  // by which a desktop finds name and icon
    // Main decides when the program ends, not the last window.
    QApplication::setQuitOnLastWindowClosed(false);
    QString successor;
    {
        Desktop desktop;
        desktop.Run();
        successor = desktop.Successor();
    }
    // Behind the end of everything that only one program may hold: the port, the log, the program's directory.
    if (!successor.isEmpty()) QProcess::startDetached(successor, {});
    return 0;
}
