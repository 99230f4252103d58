#include "cli/ProgressLine.h"

#include "cli/Message.h"

namespace {

constexpr int kQuietMilliseconds = 300;

/// The columns a character takes, by the rule of the hit columns: one for
/// ASCII, two for all others, which is never too few.
int width(QChar c)
{
    return c.unicode() < 0x80 ? 1 : 2;
}

int width(const QString &text)
{
    int columns = 0;
    for (const QChar c : text)
        columns += width(c);
    return columns;
}

/// The end of text that fits into columns.
QString tail(const QString &text, int columns)
{
    int start = text.size();
    while (start > 0 && columns >= width(text.at(start - 1))) {
        --start;
        columns -= width(text.at(start));
    }
    if (start > 0 && start < text.size() && text.at(start).isLowSurrogate())
        ++start;
    return text.mid(start);
}

/// A file name must not move the cursor.
QString harmless(QString text)
{
    for (QChar &c : text) {
        if (Message::isUnsafe(c) || c.isSurrogate())
            c = QLatin1Char('?');
    }
    return text;
}

} // namespace

ProgressLine::ProgressLine(const Write &write) : m_write(write)
{
}

bool ProgressLine::isDue(qint64 milliseconds)
{
    return milliseconds >= kQuietMilliseconds;
}

void ProgressLine::show(const State &state, int columns, qint64 milliseconds)
{
    if (!isDue(milliseconds))
        return;
    m_write(removal() + text(state, columns).toUtf8());
    m_shown = true;
}

void ProgressLine::clear()
{
    if (m_shown)
        m_write(removal());
    m_shown = false;
}

QString ProgressLine::text(const State &state, int columns)
{
    const QString counts = QStringLiteral("searched %1, hits %2, queued: folders %3, files %4 ")
                               .arg(state.searched)
                               .arg(state.hits)
                               .arg(state.foldersQueued)
                               .arg(state.filesQueued);
    const int available = columns - 1;
    if (counts.size() >= available)
        return counts.left(qMax(available, 0));
    return counts + tail(harmless(state.currentFile), available - width(counts));
}
