#include "settings/ApplicationDirectory.h"

#include <QCoreApplication>
#include <QTemporaryFile>

QString ApplicationDirectory::path()
{
    return withSlash(QCoreApplication::applicationDirPath());
}

QString ApplicationDirectory::withSlash(const QString &directory)
{
    const QLatin1Char slash('/');
    return directory.endsWith(slash) ? directory : directory + slash;
}

bool ApplicationDirectory::canBeWritten(const QString &directory)
{
    QTemporaryFile file(withSlash(directory) + QStringLiteral("sarvik-XXXXXX.tmp"));
    return file.open();
}
