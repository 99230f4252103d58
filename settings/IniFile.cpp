#include "settings/IniFile.h"

#include "settings/DailyBackup.h"
#include "settings/SaveSteps.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QThread>

#include <optional>

using SaveSteps::mayTake;
using SaveSteps::Step;

namespace {

/// The file that a chain of symbolic links ends at; empty for links in a circle.
QString targetOf(const QString &path)
{
    constexpr int kMostLinks = 40;
    QString target = path;
    for (int i = 0; i < kMostLinks; ++i) {
        const QFileInfo info(target);
        if (!info.isSymLink())
            return target;
        target = info.symLinkTarget();
    }
    return QString();
}

/// Nothing when there is something at path that is not a readable file; a FIFO,
/// for one, would be waited for without end.
std::optional<QByteArray> contentOf(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QByteArray();
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return content;
}

} // namespace

IniFile::IniFile(const QString &path, IniDocument::Form form) : m_path(path), m_form(form)
{
}

IniDocument IniFile::read() const
{
    return IniDocument(contentOf(m_path).value_or(QByteArray()), m_form);
}

bool IniFile::update(const Edit &edit, Backup backup) const
{
    const QString target = targetOf(m_path);
    if (target.isEmpty())
        return false;
    QLockFile lock(target + QStringLiteral(".lock"));
    // Shorter than the wait, so that a lock which nobody gives back is had.
    lock.setStaleLockTime(kLongestWaitMilliseconds * 3 / 4);
    const bool locked = mayTake(Step::TakeLock) && lock.tryLock(kLongestWaitMilliseconds);

    const std::optional<QByteArray> old = mayTake(Step::ReadOld) ? contentOf(target) : std::nullopt;
    if (!old)
        return false;
    IniDocument document(*old, m_form);
    edit(document);
    const bool replaced = replace(target, document.toBytes(), locked && backup == Backup::Daily);
    return mayTake(Step::Finished) && replaced;
}

/// A file that somebody reads at this instant (another instance, a virus
/// scanner) cannot be replaced on Windows; a moment later it can.
bool IniFile::replace(const QString &target, const QByteArray &content, bool withBackup) const
{
    constexpr int kAttempts = 3;
    constexpr unsigned long kPauseMilliseconds = 30;
    for (int attempt = 1; attempt < kAttempts; ++attempt) {
        if (replaceOnce(target, content, withBackup))
            return true;
        QThread::msleep(kPauseMilliseconds);
    }
    return replaceOnce(target, content, withBackup);
}

bool IniFile::replaceOnce(const QString &target, const QByteArray &content, bool withBackup) const
{
    QSaveFile file(target);
    if (!mayTake(Step::WriteNew) || !file.open(QIODevice::WriteOnly)
        || file.write(content) != content.size() || !file.flush())
        return false;
    if (withBackup)
        DailyBackup::makeDailyBackup(m_path);
    return mayTake(Step::ReplaceOld) && file.commit();
}
