#include "settings/LocaleSetup.h"

void LocaleSetup::useUtf8InPlainLocale()
{
}

void LocaleSetup::nameTimeZone()
{
}
