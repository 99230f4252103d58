#pragma once

#include "engine/FileCodeSet.h"
#include "mainwindow/preview/NativeFile.h"
#include "mainwindow/preview/PreviewText.h"

#include <QString>

/// A file as the preview shows it, and what must be known to save it.
struct PreviewFile {
    /// Larger files are not shown; bytes. Their text would not fit into the
    /// memory several times over, as a text view needs it.
    static constexpr qint64 kLargest = 256 << 20;

    QString path;
    /// What the preview shows: the file's text, or "%1プレビューできません。" with
    /// the path for a file that is not shown.
    QString text;
    /// The file is shown. Otherwise there is nothing that could be saved, and
    /// the preview should not be editable.
    bool readable = false;
    /// Index into the list of code sets as detection returned it; negative when
    /// it refused the file.
    int codeSet = 0;
    /// Of a readable file: as detected, but with the line ends that it has.
    PreviewText::Form form;
    quint32 attributes = NativeFile::kNoAttributes; ///< of a readable file
    /// Of the file before it was read, so that a change while it was read
    /// counts as one made after that.
    NativeFile::Stamp stamp;
    /// Saving the text unedited gives the same bytes. If not (another code set
    /// than was detected, broken characters, line feeds with and without a carriage
    /// return), a save changes
    /// what nobody touched, and the user is to be asked.
    bool survives = false;

    /// Reads the file. Never waits for a FIFO or a device; a file that cannot
    /// be read, is binary, larger than largest (bytes) or too large for the
    /// memory, is not readable. Any thread; the box is called on
    /// that thread.
    static PreviewFile load(const QString &path, const DetectionSettings &settings,
                            const AutoDetectionBox &box, qint64 largest = kLargest);
};
