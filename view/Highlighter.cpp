#include "view/Highlighter.h"

#include "settings/AppSettings.h"
#include "view/BlockData.h"

#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QTimer>

#include <algorithm>
#include <vector>

namespace {

BlockData *dataOf(const QTextBlock &block)
{
    return static_cast<BlockData *>(block.userData());
}

} // namespace

Highlighter::Highlighter(QTextDocument *document, bool isResultView, Mode mode)
    : QSyntaxHighlighter(static_cast<QObject *>(document))
    , m_syntax(isResultView)
    , m_formats(HighlightColours::formats(AppSettings::instance()))
    , m_mode(mode)
{
    const auto onChange = [this](int position, int, int added) {
        onContentsChange(position, added);
    };
    // Before the platform's own connection: it colours the changed lines, for
    // which what is known of them has to be dropped first.
    connect(document, &QTextDocument::contentsChange, this, onChange);
    setDocument(document);
    if (m_mode == Mode::OnDemand) {
        // Being called for every line, even to do nothing, is what costs.
        disconnect(document, &QTextDocument::contentsChange, this, nullptr);
        connect(document, &QTextDocument::contentsChange, this, onChange);
    }
}

void Highlighter::setLanguage(const QString &suffix, const QString &languageName)
{
    if (m_syntax.hasBlockComments())
        m_chain.clear(*document());
    m_syntax.setLanguage(suffix, languageName);
    m_active = true;
    recolour();
}

void Highlighter::setFind(const QRegExp &pattern)
{
    if (m_syntax.setFind(1, pattern))
        recolour();
}

void Highlighter::setFind(const QRegExp &pattern1, const QRegExp &pattern2)
{
    const bool firstChanged = m_syntax.setFind(1, pattern1);
    if (m_syntax.setFind(2, pattern2) || firstChanged)
        recolour();
}

void Highlighter::reloadColours()
{
    m_formats = HighlightColours::formats(AppSettings::instance());
    recolour();
}

void Highlighter::recolour()
{
    ++m_colouring;
    if (m_mode == Mode::OnDemand)
        emit coloursOutdated();
    else
        rehighlight();
}

void Highlighter::onContentsChange(int position, int added)
{
    if (m_colouringLines)
        return;
    const QTextBlock first = document()->findBlock(position);
    m_chain.cutFrom(first.isValid() ? first.blockNumber() : 0);
    if (m_mode == Mode::Everything)
        return;
    forgetColours(position, position + added);
    if (m_syntax.hasBlockComments())
        emit coloursOutdated();
}

void Highlighter::forgetColours(int position, int end)
{
    const QTextBlock last = document()->findBlock(end);
    const int lines = last.isValid() ? last.blockNumber() + 1 : document()->blockCount();
    QTextBlock block = document()->findBlock(position);
    for (int line = block.blockNumber(); block.isValid() && line < lines;
         ++line, block = block.next()) {
        // A line that was never coloured has nothing to forget: appending a
        // million lines comes through here.
        BlockData *data = dataOf(block);
        if (!data || data->colouring == 0)
            continue;
        data->colouring = 0;
        data->colours.clear();
        // Not for nothing: it has the line laid out anew, which may be a long one.
        if (!block.layout()->formats().isEmpty())
            block.layout()->clearFormats();
    }
}

void Highlighter::highlightBlock(const QString &text)
{
    if (!m_active)
        return;
    if (m_mode == Mode::OnDemand && !m_colouringLines) {
        // The platform has dropped the formats, and the line was not asked for.
        if (BlockData *data = dataOf(currentBlock()))
            data->colouring = 0;
        return;
    }
    colour(currentBlock(), text);
    recolourLaterLines();
}

/// Of the platform's current line, or of one whose colours are kept apart.
void Highlighter::colour(QTextBlock block, const QString &text)
{
    const int line = block.blockNumber();
    HighlightSyntax::Line parts = {text, 0, m_units};
    if (m_syntax.hasBlockComments()) {
        m_chain.extendTo(*document(), m_syntax.comments(), line);
        parts.openBefore = m_chain.depthBefore(line);
        block.setUserState(m_chain.depthAfter(line) == 0 ? -1 : 1);
    } else {
        block.setUserState(-1);
    }

    if (!block.userData())
        block.setUserData(new BlockData);
    BlockData *data = dataOf(block);
    data->colouring = m_colouring;
    data->colouredUnits = m_units;
    data->openBefore = parts.openBefore;
    data->colours.clear();
    const bool apart = isKeptApart(block);
    const auto colourPart = [&](int start, int length, HighlightColour colour) {
        const QTextCharFormat &format = m_formats[static_cast<std::size_t>(colour)];
        if (apart)
            data->colours.append({start, length, format});
        else
            setFormat(start, length, format);
    };
    const TextSpan comment = m_syntax.visitColours(parts, colourPart);
    data->commentStart = comment.start;
    data->commentEnd = comment.end;
}

bool Highlighter::isKeptApart(const QTextBlock &block) const
{
    return m_longLinesApart && block.length() > kLongLine;
}

void Highlighter::recolourLaterLines()
{
    // The platform goes on to the next line when the state has changed, but not
    // when a comment inside a comment has begun or ended.
    const QTextBlock next = currentBlock().next();
    if (m_colouringLines || m_laterLinesScheduled || !next.isValid())
        return;
    const BlockData *data = dataOf(next);
    if (!data || data->openBefore == openBefore(next.blockNumber()))
        return;
    m_laterLinesScheduled = true;
    QTimer::singleShot(0, this, [this]() {
        m_laterLinesScheduled = false;
        colourLines(0, document()->blockCount() - 1);
    });
}

int Highlighter::openBefore(int line) const
{
    return m_syntax.hasBlockComments() ? m_chain.depthBefore(line) : 0;
}

bool Highlighter::isOutdated(const QTextBlock &block, int units) const
{
    const BlockData *data = dataOf(block);
    return !data || data->colouring != m_colouring
        || data->colouredUnits < std::min(units, block.length() - 1)
        || data->openBefore != openBefore(block.blockNumber());
}

void Highlighter::colourLines(int first, int last, int units)
{
    first = std::max(first, 0);
    last = std::min(last, document()->blockCount() - 1);
    if (!m_active || first > last)
        return;
    if (m_syntax.hasBlockComments())
        m_chain.extendTo(*document(), m_syntax.comments(), last);
    std::vector<QTextBlock> outdated;
    QTextBlock block = document()->findBlockByNumber(first);
    for (int line = first; line <= last; ++line, block = block.next()) {
        if (isOutdated(block, units))
            outdated.push_back(block);
    }
    if (outdated.empty())
        return;

    const bool wasModified = document()->isModified();
    const QScopedValueRollback<bool> colouring(m_colouringLines, true);
    const QScopedValueRollback<int> limit(m_units, units);
    const QSignalBlocker silence(document());
    QTextCursor edit(document());
    edit.beginEditBlock();
    qint64 nanosecondsLeft = qint64(m_turnMilliseconds) * 1000 * 1000;
    for (const QTextBlock &line : outdated) {
        const bool isTimeUp = m_mode == Mode::OnDemand && nanosecondsLeft <= 0;
        if ((isTimeUp && line != outdated.front())
            || !knowsFinds(line.text(), units, &nanosecondsLeft)) {
            goOnLater();
            break;
        }
        // The platform keeps a format for each of the line's characters meanwhile.
        if (isKeptApart(line) && line.layout()->formats().isEmpty())
            colour(line, line.text());
        else
            rehighlightBlock(line);
    }
    edit.endEditBlock();
    // Without undo, the end of an edit block counts as a modification.
    document()->setModified(wasModified);
}

/// Only the looking counts: what the rest takes is bounded by what is on screen.
bool Highlighter::knowsFinds(const QString &text, int units, qint64 *nanosecondsLeft) const
{
    if (m_mode == Mode::Everything)
        return true;
    QElapsedTimer timer;
    timer.start();
    const qint64 before = m_syntax.rules().nanosecondsAtOnce();
    const auto spent = [&] {
        return timer.nsecsElapsed() - (m_syntax.rules().nanosecondsAtOnce() - before);
    };
    const auto isTimeUp = [&] {
        return spent() >= *nanosecondsLeft;
    };
    const bool allKnown = m_syntax.rules().lookForMatches(text, units, isTimeUp);
    *nanosecondsLeft -= spent();
    return allKnown;
}

void Highlighter::goOnLater()
{
    if (m_goesOnLater)
        return;
    m_goesOnLater = true;
    QTimer::singleShot(0, this, [this]() {
        m_goesOnLater = false;
        emit coloursOutdated();
    });
}

int Highlighter::commentBlocks()
{
    if (!m_active || !m_syntax.hasBlockComments())
        return 0;
    m_chain.extendTo(*document(), m_syntax.comments(), document()->blockCount() - 1);
    return m_chain.linesInside();
}

QVector<int> Highlighter::openComments(int line)
{
    if (!m_active || !m_syntax.hasBlockComments() || line < 0)
        return QVector<int>();
    line = std::min(line, document()->blockCount() - 1);
    m_chain.extendTo(*document(), m_syntax.comments(), line);
    return m_chain.openAfter(line);
}
