#include "settings/AppSettings.h"

#include "settings/IniFile.h"
#include "settings/KeywordHistory.h"
#include "settings/SettingsTable.h"
#include "settings/WindowSize.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <optional>
#include <utility>

AppSettings &AppSettings::instance()
{
    static AppSettings settings;
    return settings;
}

AppSettings::AppSettings() = default;
AppSettings::~AppSettings() = default;

namespace {

QString settingsPath(const QString &appDir)
{
    return appDir + QStringLiteral("sarvik.ini");
}

QString editorsPath(const QString &appDir)
{
    return appDir + QStringLiteral("sarvedit.ini");
}

/// The languages that the program comes with.
QString shippedLanguagesPath(const QString &appDir)
{
    return appDir + QStringLiteral("list/langlist.ini");
}

IniFile utf8File(const QString &path)
{
    return IniFile(path, IniDocument::Form::Utf8);
}

} // namespace

void AppSettings::load(const QString &appDir)
{
    m_applicationDirectory = appDir;
    std::optional<IniDocument> found = utf8File(settingsPath(appDir)).tryRead();
    m_mayBeSaved = found.has_value();
    const IniDocument file = std::move(found).value_or(IniDocument(IniDocument::Form::Utf8));
    SettingsTable::read(*this, file);
    size = WindowSize::clamped(size, WindowSize::desktop());
    // Columns are counted modulo this.
    tabcolm = std::max(tabcolm, 1);
    word = false;
    inputFontCopy = inputFont;
    langlist.clear();
    langlistValues.clear();
    addLanguages(file);
    addLanguages(utf8File(shippedLanguagesPath(appDir)).read());

    // The companion editor's colours are everybody's.
    m_coloursAreEditors = QFileInfo(editorsPath(appDir)).isFile();
    const QString colours = m_coloursAreEditors ? editorsPath(appDir) : settingsPath(appDir);
    SettingsTable::readColours(*this, utf8File(colours).read());
    markercolor = QColor(Qt::darkYellow);
    m_merge = SettingsMerge(SettingsTable::written(*this), file);

    keywordHistory = std::make_unique<KeywordHistory>(searchHistorymax, appDir);
    keywordHistory->load();
}

void AppSettings::addLanguages(const IniDocument &file)
{
    const QString group = QStringLiteral("langlist");
    const QSet<QString> known(langlist.cbegin(), langlist.cend());
    const QStringList languages = file.childKeys(group);
    for (const QString &language : languages) {
        if (known.contains(language))
            continue;
        langlist.append(language);
        langlistValues.append(file.text(group + QLatin1Char('/') + language));
    }
}

bool AppSettings::save(const QString &appDir)
{
    if (keywordHistory)
        keywordHistory->save();
    if (!m_mayBeSaved)
        return false;
    const bool sameFile = appDir == m_applicationDirectory;
    const SettingsMerge before = sameFile ? m_merge : SettingsMerge();
    SettingsMerge after;
    const auto edit = [&](IniDocument &file) {
        after = before.write(SettingsTable::written(*this), file);
    };
    const bool saved = utf8File(settingsPath(appDir)).update(edit, IniFile::Backup::Daily);
    if (saved && sameFile)
        m_merge = after;
    return saved;
}
