#include "mainwindow/preview/PreviewSaver.h"

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
    explicit Replacement(const PreviewFile &file)
        : m_target(NativeFile::targetOf(file.path))
        , m_old(NativeFile::stampOf(m_target))
        , m_attributes(file.attributes)
    {
    }

    Outcome run(const QByteArray &content)
    {
        if (m_old.exists && !m_old.regular)
            return writeFailed();
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
        NativeFile::setAttributes(m_new, m_attributes);
        if (mayTake(Step::ReplaceOld) && NativeFile::rename(m_new, m_target)) {
            mayTake(Step::Finished);
            return {Outcome::Result::Saved, kSaved};
        }
        NativeFile::remove(m_new);
        return takeBackBackup() ? writeFailed() : oldFileIsBackup();
    }

private:
    enum class Backup { None, SecondName, Moved };

    QString backupName() const { return m_target + QStringLiteral(".bak"); }
    bool needsBackup() const { return m_old.exists && m_old.size > 0; }

    /// Under the first name that is free: one that is taken may hold what an
    /// earlier save, cut short, left of somebody's text.
    Written writeNew(const QByteArray &content)
    {
        constexpr int kMostNames = 100;
        if (!mayTake(Step::WriteNew))
            return Written::Failed;
        for (int i = 1; i <= kMostNames; ++i) {
            m_new =
                m_target + QStringLiteral(".saving") + (i == 1 ? QString() : QString::number(i));
            if (!NativeFile::stampOf(m_new).exists)
                return NativeFile::writeNew(m_new, content, m_target);
        }
        return Written::NotCreated;
    }

    bool placeBackup()
    {
        const QString backup = backupName();
        const Stamp former = NativeFile::stampOf(backup);
        if (former.exists) {
            if (!mayTake(Step::DropBackup))
                return false;
            NativeFile::clearAttributes(backup);
            if (!NativeFile::remove(backup))
                return false;
        }
        if (!mayTake(Step::PlaceBackup))
            return false;
        if (NativeFile::link(m_target, backup))
            m_backup = Backup::SecondName;
        else if (NativeFile::rename(m_target, backup))
            m_backup = Backup::Moved;
        return m_backup != Backup::None;
    }

    /// True when the old file has its name again.
    bool takeBackBackup() const
    {
        if (m_backup == Backup::SecondName) {
            // Two names of one file are no backup of each other.
            if (NativeFile::stampOf(m_target) == NativeFile::stampOf(backupName()))
                NativeFile::remove(backupName());
            return true;
        }
        return m_backup == Backup::None || NativeFile::rename(backupName(), m_target);
    }

    Outcome renameFailed() const
    {
        const QString text =
            QStringLiteral(" %1\n　　　　　　↓　　　　　\n %2\nリネーム失敗しました。");
        return {Outcome::Result::RenameFailed, text.arg(m_target, backupName())};
    }
    static Outcome writeFailed() { return {Outcome::Result::WriteFailed, kFailed}; }
    Outcome oldFileIsBackup() const
    {
        return {Outcome::Result::WriteFailed,
                kFailed + QStringLiteral("\n元のファイル: ") + backupName()};
    }

    const QString m_target;
    const Stamp m_old;
    const quint32 m_attributes;
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
    if (file->path.isEmpty())
        return {};
    if (!file->readable)
        return {Outcome::Result::WriteFailed, kFailed};
    const std::optional<Encoded> encoded = tryEncode(text, file->form);
    if (!encoded)
        return {Outcome::Result::WriteFailed, kFailed};
    Outcome outcome = Replacement(*file).run(encoded->bytes);
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
