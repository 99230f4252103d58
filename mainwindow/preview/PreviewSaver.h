#pragma once

#include "mainwindow/preview/PreviewFile.h"

#include <QString>

/// Saves a file that was edited in the preview. The order:
///
///  1. The new content is written to a new file beside the old one (its name
///     and ".saving") and is safe on the disk.
///  2. An old file that is not empty gets the name + ".bak" too, in place of an
///     earlier backup; where it can have one name only, a copy of it does, with its
///     attributes and time. Either has the name and ".bak.saving" before.
///  3. The new file takes the name, with the old one's attributes.
///
/// The old file keeps its name until the last step: when a step fails, or the
/// process ends between two, the old or the new file stands whole under its name,
/// and the old one under the backup's besides once it is replaced. On Windows an end
/// just before the last step may leave a file that could only be read without this
/// attribute. A symbolic link stays a link; the file that it ends at is saved and gets the backup
/// beside it.
///
/// Nothing here asks. The four questions tell the window beforehand what to
/// ask. Any thread; of several saves of one file at a time, also by other processes of
/// this program, one waits for the other and then finds the file changed.
namespace PreviewSaver {

struct Outcome {
    enum class Result {
        Nothing, ///< no name: nothing was done
        Saved,
        Changed, ///< not the file that was agreed on; it was left as it is
        RenameFailed, ///< nothing was changed; message is for a critical box
        WriteFailed
    };
    Result result = Result::Nothing;
    /// For the status bar, or for the critical box; empty for Nothing and Changed.
    QString message;
};

/// text: the document's, lines separated by line feeds (see
/// PreviewText::fromDocument()). After Saved, file holds text and what there is to
/// know of the new file; otherwise it is as it was. A file that is not readable
/// is not written over, nor one that is there and not as agreed, by then or when it would be
/// replaced.
Outcome save(PreviewFile *file, const QString &text, const NativeFile::Stamp &agreed);

/// Replaces the file as it is now.
Outcome save(PreviewFile *file, const QString &text);

/// Another program has changed or replaced the file since it was read or saved.
/// Not for a file that is gone: then nothing is written over.
bool changedOnDisk(const PreviewFile &file);

/// The file is there, and as it was when it was read or saved.
bool isAsShown(const PreviewFile &file);

/// A save would change bytes that nobody edited. Costs nothing.
bool changesUntouchedBytes(const PreviewFile &file);

/// The file's code set cannot hold all of text, or the memory is too small to
/// find out. Costs about as much as reading the file.
bool losesCharacters(const PreviewFile &file, const QString &text);

} // namespace PreviewSaver
