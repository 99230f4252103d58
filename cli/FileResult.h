#pragma once

#include <QString>
#include <QStringList>

/// What a search found in one file.
struct FileResult {
    QString path;
    int codeSet = -1; ///< in which the file was read, see CodeSet
    QStringList hits; ///< hit strings, in line order; empty: only the name counts
};
