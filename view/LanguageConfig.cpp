#include "view/LanguageConfig.h"

#include "settings/AppSettings.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>

namespace {

QString pathOf(const QString &languageName)
{
    QString directory = AppSettings::instance().applicationDirectory();
    if (directory.isEmpty())
        directory = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    return directory + QStringLiteral("list/") + languageName + QStringLiteral(".lst");
}

LanguageConfig::Definition readDefinition(const QFileInfo &info)
{
    QFile file(info.filePath());
    if (info.size() > LanguageConfig::kLargestFileBytes || !file.open(QIODevice::ReadOnly))
        return nullptr;
    QTextStream stream(&file);
    auto definition = std::make_shared<LanguageDefinition>(LanguageFile::parse(stream.readAll()));
    definition->lastModified = info.lastModified();
    return definition;
}

} // namespace

LanguageConfig &LanguageConfig::instance()
{
    static LanguageConfig config;
    return config;
}

QString LanguageConfig::languageOf(const QString &suffix)
{
    const AppSettings &settings = AppSettings::instance();
    const int count = std::min(settings.langlist.size(), settings.langlistValues.size());
    for (int i = 0; i < count; ++i) {
        if (settings.langlistValues.at(i).split(QLatin1Char('/')).contains(suffix))
            return settings.langlist.at(i);
    }
    return QString();
}

QString LanguageConfig::suffixOf(const QString &path)
{
    const int slash =
        std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    const QString name = path.mid(slash + 1);
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot >= 0)
        return name.mid(dot + 1);
    return languageOf(name).isEmpty() ? QString() : name;
}

LanguageConfig::Definition LanguageConfig::definition(const QString &suffix,
                                                      const QString &languageName)
{
    const QString name = languageName.isEmpty() ? languageOf(suffix) : languageName;
    if (name.isEmpty())
        return nullptr;
    const QFileInfo info(pathOf(name));
    // Only a regular file: opening a FIFO would wait for somebody to write.
    if (!info.isFile())
        return nullptr;
    const int known = m_names.indexOf(name);
    if (known >= 0) {
        const Definition &cached = m_definitions[static_cast<std::size_t>(known)];
        if (cached->lastModified >= info.lastModified())
            return cached;
        drop(known);
    }
    Definition fresh = readDefinition(info);
    if (fresh) {
        m_names.append(name);
        m_definitions.push_back(fresh);
    }
    return fresh;
}

void LanguageConfig::drop(int index)
{
    m_names.removeAt(index);
    m_definitions.erase(m_definitions.begin() + index);
}
