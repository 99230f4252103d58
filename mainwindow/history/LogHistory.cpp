#include "mainwindow/history/LogHistory.h"

#include "mainwindow/history/FirstName.h"
#include "mainwindow/history/ResultLogFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <algorithm>

namespace {

/// No search is so short that more of them end in one second.
constexpr int kMostCopies = 99;

struct Listed {
    QString name;
    qint64 changed; // milliseconds
};

bool isNewer(const Listed &a, const Listed &b)
{
    return a.changed != b.changed ? a.changed > b.changed : a.name > b.name;
}

/// What a log is written to until it is whole: a name that no log has, and that
/// nobody else makes.
QString temporaryName(const QString &name)
{
    return name + QStringLiteral(".saving-%1").arg(QRandomGenerator::system()->generate64(), 0, 16);
}

/// Also one that is itself replaced in two steps.
bool isTemporary(const QString &name)
{
    static const QRegularExpression names(
        QStringLiteral("^\\d{8}-\\d{6}\\.log\\.saving-[0-9a-f]+(\\.[A-Za-z]{6})?$"));
    return names.match(name).hasMatch();
}

/// No save takes that long; whoever began it has ended without it.
bool isLeftOver(const QFileInfo &temporary, const QDateTime &now)
{
    constexpr qint64 kLongestSaveSeconds = 3600;
    return qAbs(temporary.lastModified().secsTo(now)) > kLongestSaveSeconds;
}

/// The logs; what saves have left behind is deleted.
QVector<Listed> newestFirst(const QString &folder)
{
    QVector<Listed> files;
    // Times are asked for once a file, not at every comparison.
    const QFileInfoList infos = QDir(folder).entryInfoList(QDir::Files, QDir::NoSort);
    files.reserve(infos.size());
    const QDateTime now = QDateTime::currentDateTime();
    for (const QFileInfo &info : infos) {
        const QString name = info.fileName();
        if (!isTemporary(name))
            files.append({name, info.lastModified().toMSecsSinceEpoch()});
        else if (isLeftOver(info, now))
            QFile::remove(folder + name);
    }
    std::sort(files.begin(), files.end(), isNewer);
    return files;
}

} // namespace

LogHistory::LogHistory(const QString &folder)
    : m_folder(folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/'))
{
}

QString LogHistory::fileName(const QDateTime &time, int copy)
{
    QString name = time.toString(QStringLiteral("yyyyMMdd-hhmmss"));
    if (copy > 1)
        name += QStringLiteral("_%1").arg(copy, 2, 10, QLatin1Char('0'));
    return name + QStringLiteral(".log");
}

QString LogHistory::save(const QDateTime &time, const ResultLog &log) const
{
    if (!QDir().mkpath(m_folder))
        return QString();
    const QString temporary = m_folder + temporaryName(fileName(time));
    if (ResultLogFile::write(temporary, log)) {
        for (int copy = 1; copy <= kMostCopies; ++copy) {
            QString path = m_folder + fileName(time, copy);
            const FirstName::Result result = FirstName::give(temporary, path);
            if (result == FirstName::Result::Given)
                return path;
            if (result == FirstName::Result::Failed)
                break;
        }
    }
    QFile::remove(temporary);
    return QString();
}

void LogHistory::rebuild(int limit)
{
    m_entries.clear();
    m_position = 0;
    const QVector<Listed> files = newestFirst(m_folder);
    for (int i = 0; i < files.size(); ++i) {
        const QString name = files.at(i).name;
        if (i >= limit)
            QFile::remove(m_folder + name);
        else
            m_entries.append({name, ResultLogFile::label(m_folder + name)});
    }
}

QString LogHistory::path(int index) const
{
    if (index < 0 || index >= m_entries.size())
        return QString();
    return m_folder + m_entries.at(index).name;
}

QString LogHistory::goBack()
{
    return canGoBack() ? path(++m_position) : QString();
}

QString LogHistory::goForward()
{
    return canGoForward() ? path(--m_position) : QString();
}
