#include "settings/AppSettings.h"

#include "settings/KeywordHistory.h"
#include "settings/SettingsTable.h"
#include "settings/WindowSize.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>

#include <algorithm>

AppSettings &AppSettings::instance()
{
    static AppSettings settings;
    return settings;
}

AppSettings::AppSettings() = default;
AppSettings::~AppSettings() = default;

namespace {

QSize desktopSize()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->virtualSize() : QSize();
}

SettingsTable::Reader readerOf(const QSettings &file)
{
    return [&file](const QString &key, const QVariant &value) {
        return file.value(key, value);
    };
}

} // namespace

void AppSettings::load(const QString &appDir)
{
    m_applicationDirectory = appDir;
    const QString path = appDir + QStringLiteral("sarvik.ini");
    QSettings file(path, QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    SettingsTable::read(*this, readerOf(file));
    size = WindowSize::clamped(size, desktopSize());
    tabcolm = std::max(tabcolm, 1);
    word = false;
    inputFontCopy = inputFont;

    langlist.clear();
    langlistValues.clear();
    file.beginGroup(QStringLiteral("langlist"));
    langlist = file.childKeys();
    for (const QString &language : qAsConst(langlist))
        langlistValues.append(file.value(language).toString());
    file.endGroup();

    const QString editorsPath = appDir + QStringLiteral("sarvedit.ini");
    QSettings colours(QFileInfo::exists(editorsPath) ? editorsPath : path, QSettings::IniFormat);
    colours.setIniCodec("UTF-8");
    SettingsTable::readColours(*this, readerOf(colours));
    markercolor = QColor(Qt::darkYellow);

    keywordHistory = std::make_unique<KeywordHistory>(searchHistorymax, appDir);
    keywordHistory->load();
}
