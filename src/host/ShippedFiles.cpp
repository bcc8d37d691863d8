#include "host/ShippedFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

QString FindShipped(const QString& name)
{
    const QString own = QCoreApplication::applicationDirPath() + u'/';
    for (const QString& place : {own + name, own + u"../share/burnline/"_qs + name})
        if (QFileInfo::exists(place)) return QDir::cleanPath(place);
    return own + name;
}
