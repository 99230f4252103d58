#include "settings/ApplicationDirectory.h"

#include <QCoreApplication>

QString ApplicationDirectory::path()
{
    return withSlash(QCoreApplication::applicationDirPath());
}

QString ApplicationDirectory::withSlash(const QString &directory)
{
    const QLatin1Char slash('/');
    return directory.endsWith(slash) ? directory : directory + slash;
}
