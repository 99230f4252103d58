#include "settings/LocaleSetup.h"

#include <QByteArray>
#include <QTimeZone>

#include <clocale>
#include <cstring>

namespace {

constexpr char kUtf8Locale[] = "C.UTF-8";

bool isPlain(const char *locale)
{
    return std::strcmp(locale, "C") == 0 || std::strcmp(locale, "POSIX") == 0;
}

} // namespace

void LocaleSetup::useUtf8InPlainLocale()
{
    const bool usable = std::setlocale(LC_ALL, "") != nullptr;
    if (usable && !isPlain(std::setlocale(LC_CTYPE, nullptr)))
        return;
    // Not there either: the locale stays as it was found.
    if (!std::setlocale(LC_CTYPE, kUtf8Locale))
        return;
    // LC_ALL outranks the others; an unusable name in any of them would make
    // the application object refuse the whole environment.
    if (!usable || !qEnvironmentVariableIsEmpty("LC_ALL"))
        qputenv("LC_ALL", QByteArray(kUtf8Locale));
    else
        qputenv("LC_CTYPE", QByteArray(kUtf8Locale));
    std::setlocale(LC_ALL, "");
}

void LocaleSetup::nameTimeZone()
{
    if (qEnvironmentVariableIsSet("TZ"))
        return;
    const QByteArray zone = QTimeZone::systemTimeZoneId();
    // That is also what the toolkit says when it does not know.
    if (zone != "UTC")
        qputenv("TZ", zone);
}
