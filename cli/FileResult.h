#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// What a search found in one file.
struct FileResult {
    using Visitor = std::function<void(const FileResult &file)>;

    QString path;
    QStringList hits; ///< hit strings, in line order; empty: only the name counts

    /// Visits the files that entries of the spool's result queue (heads that begin
    /// with "::", each followed by its hit strings) tell of, in their order. The
    /// queue must have been taken whole, so that entries begins with a head and
    /// ends with a file's last hit. The strings of a list that is given away are
    /// not copied, and those of a file are gone before the next one's are looked
    /// at: there may be more of them than fit into the processor's cache.
    static void visitEach(QStringList entries, const Visitor &visit);
};
