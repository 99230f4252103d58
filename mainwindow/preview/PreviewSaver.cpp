#include "mainwindow/preview/PreviewSaver.h"

#include "mainwindow/preview/SaveTurn.h"
#include "settings/SaveSteps.h"

#include <new>
#include <optional>

using NativeFile::Stamp;
using NativeFile::Written;
using PreviewSaver::Outcome;
using SaveSteps::mayTake;
using SaveSteps::Step;

namespace {

const QString kSaved = QStringLiteral("セーブしました");
const QString kFailed = QStringLiteral("セーブ中にエラーが発生しました");

/// One save: the files that take part in it.
class Replacement {
public:
    /// agreed: the old file as it may be replaced.
    Replacement(const PreviewFile &file, const Stamp &agreed)
        : m_target(NativeFile::targetOf(file.path)), m_agreed(agreed), m_attributes(file.attributes)
    {
    }

    Outcome run(const QByteArray &content)
    {
        const SaveTurn turn(m_target);
        m_old = NativeFile::stampOf(m_target);
        if (m_old.exists && !m_old.regular)
            return writeFailed();
        if (hasChanged())
            return changed();
        const Written written = writeNew(content);
        // A folder that takes no new name takes none for the backup either.
        if (written == Written::NotCreated && needsBackup())
            return renameFailed();
        if (written != Written::Yes)
            return writeFailed();
        if (needsBackup() && !placeBackup()) {
            NativeFile::remove(m_new);
            return renameFailed();
        }
        NativeFile::setAttributes(m_new, NativeFile::attributesFor(m_new, m_attributes, m_target));
        Outcome outcome = replaceOld();
        if (outcome.result == Outcome::Result::Saved) {
            mayTake(Step::Finished);
        } else {
            NativeFile::clearAttributes(m_new);
            NativeFile::remove(m_new);
            dropUselessBackup();
        }
        return outcome;
    }

private:
    enum class Backup { None, SecondName, Copy };

    QString backupName() const { return m_target + QStringLiteral(".bak"); }
    bool needsBackup() const { return m_old.exists && m_old.size > 0; }

    /// By somebody who does not wait for the turn, or before it came.
    bool hasChanged() const
    {
        const Stamp now = NativeFile::stampOf(m_target);
        return now.exists && now != m_agreed;
    }

    Written writeNew(const QByteArray &content)
    {
        if (!mayTake(Step::WriteNew))
            return Written::Failed;
        return underFreeName(m_target, &m_new, [&](const QString &name) {
            return NativeFile::writeNew(name, content, m_target);
        });
    }

    /// The first name that is free: one that is taken may hold what an earlier
    /// save, cut short, left of somebody's text.
    template <typename Make>
    static Written underFreeName(const QString &stem, QString *name, Make make)
    {
        constexpr int kMostNames = 100;
        Written written = Written::Taken;
        for (int i = 1; i <= kMostNames && written == Written::Taken; ++i) {
            *name = stem + QStringLiteral(".saving") + (i == 1 ? QString() : QString::number(i));
            written = make(*name);
        }
        return written == Written::Taken ? Written::NotCreated : written;
    }

    /// Under a name of its own, so that an earlier backup gives way to a whole one.
    bool makeBackup(QString *name)
    {
        const auto makeBy = [&](Step step, bool (*make)(const QString &, const QString &)) {
            const auto attempt = [&](const QString &free) {
                if (make(m_target, free))
                    return Written::Yes;
                return NativeFile::isTaken(free) ? Written::Taken : Written::Failed;
            };
            return mayTake(step) && underFreeName(backupName(), name, attempt) == Written::Yes;
        };
        if (makeBy(Step::LinkForBackup, NativeFile::link))
            m_backup = Backup::SecondName;
        else if (makeBy(Step::CopyForBackup, NativeFile::copy))
            m_backup = Backup::Copy;
        return m_backup != Backup::None;
    }

    bool placeBackup()
    {
        QString made;
        if (!makeBackup(&made))
            return false;
        const QString backup = backupName();
        const quint32 attributes = NativeFile::attributesOf(backup);
        if (makeWay(backup) && mayTake(Step::PlaceBackup) && NativeFile::rename(made, backup))
            return true;
        NativeFile::setAttributes(backup, attributes);
        if (m_backup == Backup::Copy)
            NativeFile::clearAttributes(made);
        NativeFile::remove(made);
        m_backup = Backup::None;
        return false;
    }

    /// For the next one, which takes an earlier backup's place.
    bool makeWay(const QString &backup) const
    {
        const Stamp former = NativeFile::stampOf(backup);
        if (!former.exists)
            return true;
        if (!mayTake(Step::DropBackup))
            return false;
        // A second name shares the attributes with the file.
        const bool isSecondName = former == NativeFile::stampOf(m_target)
            && NativeFile::attributesOf(backup) == NativeFile::attributesOf(m_target);
        if (!isSecondName || m_backup == Backup::Copy)
            NativeFile::clearAttributes(backup);
        // Of two names of one file none takes the other's place.
        return !isSecondName || NativeFile::remove(backup);
    }

    Outcome replaceOld() const
    {
        if (!mayTake(Step::ReplaceOld))
            return writeFailed();
        if (hasChanged())
            return changed();
        if (!m_old.exists)
            return takeFreeName();
        if (m_backup == Backup::SecondName)
            return NativeFile::rename(m_new, m_target) ? saved() : writeFailed();
        // On Windows a file that may only be read is not replaced.
        const quint32 attributes = NativeFile::attributesOf(m_target);
        NativeFile::clearAttributes(m_target);
        if (NativeFile::rename(m_new, m_target))
            return saved();
        NativeFile::setAttributes(m_target, attributes);
        return writeFailed();
    }

    /// Where nothing was there is nothing to wait for a turn with.
    Outcome takeFreeName() const
    {
        if (NativeFile::link(m_new, m_target)) {
            NativeFile::remove(m_new);
            return saved();
        }
        if (NativeFile::stampOf(m_target).exists)
            return changed();
        // A link that leads nowhere is nobody's text, but not to be replaced by one.
        const bool isFree = !NativeFile::isTaken(m_target);
        return isFree && NativeFile::rename(m_new, m_target) ? saved() : writeFailed();
    }

    /// What stands in the file anyway, or the same file under another name.
    void dropUselessBackup() const
    {
        const Stamp backup = NativeFile::stampOf(backupName());
        const Stamp now = NativeFile::stampOf(m_target);
        if (m_backup == Backup::None || backup.size != now.size || backup.changed != now.changed)
            return;
        if (m_backup == Backup::Copy)
            NativeFile::clearAttributes(backupName());
        NativeFile::remove(backupName());
    }

    Outcome renameFailed() const
    {
        const QString text =
            QStringLiteral(" %1\n　　　　　　↓　　　　　\n %2\nリネーム失敗しました。");
        return {Outcome::Result::RenameFailed, text.arg(m_target, backupName())};
    }
    static Outcome saved() { return {Outcome::Result::Saved, kSaved}; }
    static Outcome writeFailed() { return {Outcome::Result::WriteFailed, kFailed}; }
    static Outcome changed() { return {Outcome::Result::Changed, QString()}; }

    const QString m_target;
    const Stamp m_agreed;
    const quint32 m_attributes;
    Stamp m_old;
    QString m_new;
    Backup m_backup = Backup::None;
};

struct Encoded {
    QByteArray bytes;
    bool survives = false;
};

/// Everything that takes much memory, before anything is done to the disk;
/// nothing when there is not enough of it.
std::optional<Encoded> tryEncode(const QString &text, const PreviewText::Form &form)
{
    try {
        Encoded encoded;
        encoded.bytes = PreviewText::encode(text, form);
        encoded.survives = PreviewText::survives(encoded.bytes, form);
        return encoded;
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

} // namespace

Outcome PreviewSaver::save(PreviewFile *file, const QString &text)
{
    return save(file, text, NativeFile::stampOf(file->path));
}

Outcome PreviewSaver::save(PreviewFile *file, const QString &text, const Stamp &agreed)
{
    if (file->path.isEmpty())
        return {};
    if (!file->readable)
        return {Outcome::Result::WriteFailed, kFailed};
    const std::optional<Encoded> encoded = tryEncode(text, file->form);
    if (!encoded)
        return {Outcome::Result::WriteFailed, kFailed};
    Outcome outcome = Replacement(*file, agreed).run(encoded->bytes);
    if (outcome.result == Outcome::Result::Saved) {
        file->text = text;
        file->stamp = NativeFile::stampOf(file->path);
        file->survives = encoded->survives;
    }
    return outcome;
}

bool PreviewSaver::changedOnDisk(const PreviewFile &file)
{
    const Stamp now = NativeFile::stampOf(file.path);
    return now.exists && now != file.stamp;
}

bool PreviewSaver::isAsShown(const PreviewFile &file)
{
    const Stamp now = NativeFile::stampOf(file.path);
    return now.exists && now == file.stamp;
}

bool PreviewSaver::changesUntouchedBytes(const PreviewFile &file)
{
    return !file.survives;
}

bool PreviewSaver::losesCharacters(const PreviewFile &file, const QString &text)
{
    try {
        return PreviewText::losesCharacters(text, file.form);
    } catch (const std::bad_alloc &) {
        return true; // nobody knows
    }
}
