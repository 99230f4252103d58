#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// What a search found in one file.
struct FileResult {
    QString path;
    QStringList hits; ///< hit strings, in line order; empty: only the name counts

    /// Splits entries of the spool's result queue (heads that begin with "::",
    /// each followed by its hit strings) by file. The queue must have been taken
    /// whole, so that entries begins with a head and ends with a file's last hit.
    /// The strings of a list that is given away are not copied.
    static QVector<FileResult> split(QStringList entries);
};
