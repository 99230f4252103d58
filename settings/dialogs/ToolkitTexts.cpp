#include "settings/dialogs/ToolkitTexts.h"

#include "settings/ApplicationDirectory.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTranslator>

#include <memory>

QStringList ToolkitTexts::folders()
{
    return {ApplicationDirectory::path() + QStringLiteral("translations"),
            QLibraryInfo::location(QLibraryInfo::TranslationsPath)};
}

bool ToolkitTexts::install(QCoreApplication &application)
{
    return installFrom(folders(), application);
}

bool ToolkitTexts::installFrom(const QStringList &folders, QCoreApplication &application)
{
    auto translator = std::make_unique<QTranslator>(&application);
    for (const QString &folder : folders) {
        const QString file = folder + QStringLiteral("/qtbase_ja.qm");
        // The toolkit would go on to files of similar names, of other languages.
        if (!QFileInfo(file).isFile() || !translator->load(file))
            continue;
        // The application deletes it, and its texts last as long.
        return QCoreApplication::installTranslator(translator.release());
    }
    return false;
}
