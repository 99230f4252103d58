// Makes a file with a Japanese name in the folder that it is given, in a
// process that starts as the program does; tells the locale's variables and the time zone.

#include "settings/LocaleSetup.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char *argv[])
{
    LocaleSetup::useUtf8InPlainLocale();
    LocaleSetup::nameTimeZone();
    QCoreApplication application(argc, argv);
    QFile file(QCoreApplication::arguments().at(1) + QStringLiteral("検索.txt"));
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG", "TZ"})
        std::printf("%s=%s\n", name, qgetenv(name).constData());
    return 0;
}
