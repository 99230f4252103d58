#pragma once

#include "engine/CodeSet.h"

#include <QString>
#include <QStringList>

/// What a search found in one file.
struct FileResult {
    QString path;
    int codeSet = CodeSet::Default; ///< in which the file was read
    QStringList hits; ///< hit strings, in line order; empty: only the name counts
};
