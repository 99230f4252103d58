#include "view/FileLineSearch.h"

#include "view/ResultLine.h"

#include <QTextDocument>

#include <algorithm>

namespace {

bool endsUpwardSearch(const QTextBlock &block)
{
    // Not the block's text: on the way up from a hit, thousands would be copied.
    const int start = block.position();
    const QTextDocument &document = *block.document();
    const QChar first = document.characterAt(start);
    const bool hit = first == QLatin1Char(' ');
    return !hit && ResultLine::endsUpwardSearch(first, document.characterAt(start + 1));
}

} // namespace

FileLineSearch::FileLineSearch(const QTextDocument &document)
    : m_document(document)
    , m_connection(QObject::connect(&document, &QTextDocument::contentsChange, &document,
                                    [this](int position, int, int) { forgetFrom(position); }))
{
}

FileLineSearch::~FileLineSearch()
{
    QObject::disconnect(m_connection);
}

QTextBlock FileLineSearch::headOf(const QTextBlock &block)
{
    const int asked = block.blockNumber();
    QTextBlock head = block;
    int number = asked;
    while (number > 0 && !isKnown(number) && !endsUpwardSearch(head)) {
        head = head.previous();
        --number;
    }
    if (isKnown(number)) {
        m_last = std::max(m_last, asked);
        return m_document.findBlockByNumber(m_head);
    }
    m_head = number;
    m_last = asked;
    return head;
}

void FileLineSearch::forgetFrom(int position)
{
    const QTextBlock changed = m_document.findBlock(position);
    m_last = changed.isValid() ? std::min(m_last, changed.blockNumber() - 1) : -1;
}
