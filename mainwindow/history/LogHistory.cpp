#include "mainwindow/history/LogHistory.h"

#include "mainwindow/history/ResultLogFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

/// No search is so short that more of them end in one second.
constexpr int kMostCopies = 99;

enum class Claim { Taken, Exists, Failed };

/// Makes the file, which must not be there yet.
Claim claim(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return Claim::Taken;
    const QFileInfo info(path);
    return info.exists() || info.isSymLink() ? Claim::Exists : Claim::Failed;
}

struct Listed {
    QString name;
    qint64 changed; // milliseconds
};

bool isNewer(const Listed &a, const Listed &b)
{
    return a.changed != b.changed ? a.changed > b.changed : a.name > b.name;
}

/// The name that a save claims, empty until its log is whole, and the file that the
/// log is written to until then. One that nobody writes any more is like any other.
bool isBeingSaved(const QFileInfo &file, const QDateTime &now)
{
    constexpr qint64 kLongestPauseSeconds = 10;
    static const QRegularExpression names(
        QStringLiteral("^\\d{8}-\\d{6}(_\\d\\d)?\\.log(\\.[A-Za-z]{6})?$"));
    const QRegularExpressionMatch match = names.match(file.fileName());
    const bool isTemporary = !match.captured(2).isEmpty();
    return match.hasMatch() && (isTemporary || file.size() == 0)
        && qAbs(file.lastModified().secsTo(now)) < kLongestPauseSeconds;
}

QVector<Listed> newestFirst(const QString &folder)
{
    QVector<Listed> files;
    // Times are asked for once a file, not at every comparison.
    const QFileInfoList infos = QDir(folder).entryInfoList(QDir::Files, QDir::NoSort);
    files.reserve(infos.size());
    const QDateTime now = QDateTime::currentDateTime();
    for (const QFileInfo &info : infos) {
        if (!isBeingSaved(info, now))
            files.append({info.fileName(), info.lastModified().toMSecsSinceEpoch()});
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
    for (int copy = 1; copy <= kMostCopies; ++copy) {
        QString path = m_folder + fileName(time, copy);
        const Claim claimed = claim(path);
        if (claimed == Claim::Exists)
            continue;
        if (claimed == Claim::Taken && ResultLogFile::write(path, log))
            return path;
        if (claimed == Claim::Taken)
            QFile::remove(path);
        break;
    }
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
