#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

/// The text of a line count, file by file in the order of the walk: a line per
/// file, a subtotal whenever the folder changes, grand totals at the end.
///
/// Both functions return what is to be appended to the output, each entry
/// followed by a line feed; the subtotals hold one of their own, which makes a
/// blank line. One object serves one count and one thread at a time.
class LineCountReport {
public:
    /// Counts are grouped as in locale.
    explicit LineCountReport(const QLocale &locale = QLocale());

    /// filename is the file's whole path, count its number of lines.
    QStringList addFile(const QString &filename, int count);
    /// Ends the count; an aborted one has no last subtotal.
    QStringList finish(bool aborted) const;

    int fileCount() const { return m_files; }
    /// Lines of all files; wider than one file's count, so that no tree is too large.
    qint64 lineCount() const { return m_totalLines; }

private:
    QString subtotal() const;

    QLocale m_locale;
    QString m_lastFolder;
    qint64 m_folderLines = 0;
    qint64 m_totalLines = 0;
    int m_files = 0;
};
