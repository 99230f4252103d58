#include "settings/StarterSettings.h"

#include "settings/IniFile.h"

#include <QFileInfo>

#include <utility>

void StarterSettings::provide(const QString &appDir)
{
    const QString settings = appDir + QStringLiteral("sarvik.ini");
    const QFileInfo made(settings);
    const QFileInfo starter(appDir + QStringLiteral("sarvik-starter.ini"));
    // A link that leads nowhere is somebody's settings, too: on a drive that is away.
    if (made.isSymLink() || made.exists() || !starter.isFile())
        return;
    constexpr IniDocument::Form kForm = IniDocument::Form::Utf8;
    std::optional<IniDocument> content = IniFile(starter.filePath(), kForm).tryRead();
    if (!content)
        return;
    IniFile(settings, kForm).update([&](IniDocument &document) {
        // Another instance may have come first; what it has saved since stays.
        if (!QFileInfo::exists(settings))
            document = std::move(*content);
    });
}
