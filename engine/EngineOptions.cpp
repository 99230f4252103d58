#include "engine/EngineOptions.h"

#include "settings/AppSettings.h"

#include <algorithm>

qint64 SearchLimits::sizeLimitBytes() const
{
    return qint64(bigsize) * 1048576;
}

SearchLimits SearchLimits::fromSettings(const AppSettings &settings)
{
    SearchLimits limits;
    limits.bigsize = settings.bigsize;
    limits.codechksize = settings.codechksize;
    limits.detectsize = settings.newfileDetectsize;
    limits.tabcolm = std::max(settings.tabcolm, 1);
    limits.excludedFolders = settings.excusiondir;
    limits.excludedFiles = settings.excusionfile;
    return limits;
}
