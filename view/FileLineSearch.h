#pragma once

#include <QMetaObject>
#include <QTextBlock>

QT_BEGIN_NAMESPACE
class QTextDocument;
QT_END_NAMESPACE

/// Finds the file line that heads a hit of a result text (see
/// ResultLine::endsUpwardSearch()). What was walked once is remembered: below a file of
/// a million hits, each step of the cursor would go up through all of them.
class FileLineSearch {
public:
    /// The document has to outlive the object.
    explicit FileLineSearch(const QTextDocument &document);
    ~FileLineSearch();
    Q_DISABLE_COPY(FileLineSearch)

    /// block itself or the first one above it at which the search ends; without such a
    /// one the document's first.
    QTextBlock headOf(const QTextBlock &block);

private:
    bool isKnown(int number) const { return number >= m_head && number <= m_last; }
    void forgetFrom(int position);

    const QTextDocument &m_document;
    QMetaObject::Connection m_connection;
    // Numbers of blocks: m_head heads itself and all up to m_last.
    int m_head = 0;
    int m_last = -1;
};
