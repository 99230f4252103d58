#include "settings/IniFile.h"

#include "settings/DailyBackup.h"
#include "settings/Retry.h"
#include "settings/SaveSteps.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

#include <optional>

using SaveSteps::mayTake;
using SaveSteps::Step;

namespace {

int &longestWait()
{
    static int milliseconds = IniFile::kLongestWaitMilliseconds;
    return milliseconds;
}

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
    if (!info.isFile() || info.size() > IniFile::kLargestFileBytes
        || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return content;
}

} // namespace

void IniFile::setLongestWait(int milliseconds)
{
    longestWait() = milliseconds;
}

IniFile::IniFile(const QString &path, IniDocument::Form form) : m_path(path), m_form(form)
{
}

std::optional<IniDocument> IniFile::tryRead() const
{
    const auto content = Retry::whileHeld([this] { return contentOf(m_path); });
    return content ? std::make_optional<IniDocument>(*content, m_form) : std::nullopt;
}

IniDocument IniFile::read() const
{
    return tryRead().value_or(IniDocument(m_form));
}

bool IniFile::update(const Edit &edit, Backup backup) const
{
    const QString target = targetOf(m_path);
    if (target.isEmpty())
        return false;
    QLockFile lock(target + QStringLiteral(".lock"));
    // Shorter than the wait, so that a lock which nobody gives back is had.
    lock.setStaleLockTime(longestWait() * 3 / 4);
    const bool locked = mayTake(Step::TakeLock) && lock.tryLock(longestWait());

    const std::optional<QByteArray> old =
        mayTake(Step::ReadOld) ? Retry::whileHeld([&] { return contentOf(target); }) : std::nullopt;
    if (!old)
        return false;
    IniDocument document(*old, m_form);
    edit(document);
    const QByteArray content = document.toBytes();
    const bool withBackup = locked && backup == Backup::Daily;
    Replacement replacement = Replacement::NotWritten;
    // What cannot even be written to the folder will not be a moment later.
    Retry::whileHeld([&] {
        replacement = replace(target, content, withBackup);
        return replacement != Replacement::NotReplaced;
    });
    return mayTake(Step::Finished) && replacement == Replacement::Done;
}

IniFile::Replacement IniFile::replace(const QString &target, const QByteArray &content,
                                      bool withBackup) const
{
    QSaveFile file(target);
    if (!mayTake(Step::WriteNew) || !file.open(QIODevice::WriteOnly)
        || file.write(content) != content.size() || !file.flush())
        return Replacement::NotWritten;
    if (withBackup)
        DailyBackup::makeDailyBackup(m_path);
    const bool replaced = mayTake(Step::ReplaceOld) && file.commit();
    return replaced ? Replacement::Done : Replacement::NotReplaced;
}
