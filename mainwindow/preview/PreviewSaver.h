#pragma once

#include "mainwindow/preview/PreviewFile.h"

#include <QString>

/// Saves a file that was edited in the preview. The order:
///
///  1. The new content is written to a new file beside the old one (its name
///     and ".saving") and is safe on the disk.
///  2. An old file that is not empty gets the name + ".bak"; an earlier backup
///     is deleted before. Where the file system can give a file two names, the
///     old file keeps its own name too until the next step.
///  3. The new file takes the name, with the old one's attributes.
///
/// When a step fails, the old file is back under its name, or whole under the
/// backup's, which the message then says. A process that ends between two steps
/// leaves the old or the new file whole under its name, or, where a file has
/// one name only, both whole under the other two. A symbolic link stays a link;
/// the file that it ends at is saved and gets the backup beside it.
///
/// Nothing here asks. The four questions tell the window beforehand what to
/// ask. Any thread; not two saves of one file at a time.
namespace PreviewSaver {

struct Outcome {
    enum class Result {
        Nothing, ///< no name: nothing was done
        Saved,
        RenameFailed, ///< nothing was changed; message is for a critical box
        WriteFailed
    };
    Result result = Result::Nothing;
    /// For the status bar, or for the critical box; empty for Nothing.
    QString message;
};

/// text: the document's, lines separated by line feeds (see
/// PreviewText::fromDocument()). After Saved, file holds text and what there is to
/// know of the new file; otherwise it is as it was. A file that is not readable
/// is not written over.
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
