#pragma once

#include "mainwindow/preview/PreviewFile.h"
#include "tests/support/ScratchFolder.h"

#include <QDir>

/// For tests of a save: files as the preview reads them, and what lies beside them.
namespace SavedFiles {

inline PreviewFile load(const QString &path)
{
    return PreviewFile::load(path, DetectionSettings(), [](const QString &, const QString &) {});
}

inline QStringList filesIn(const ScratchFolder &folder)
{
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

} // namespace SavedFiles
