#include "settings/StarterSettings.h"

#include <QFile>
#include <QFileInfo>

void StarterSettings::provide(const QString &appDir)
{
    const QString settings = appDir + QStringLiteral("sarvik.ini");
    // A link that leads nowhere is somebody's settings, too: on a drive that is away.
    if (!QFileInfo(settings).isSymLink())
        QFile::copy(appDir + QStringLiteral("sarvik-starter.ini"), settings);
}
