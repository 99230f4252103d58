#include "engine/RawLines.h"

#include "engine/ByteOrderMark.h"
#include "engine/ByteScan.h"
#include "engine/JapaneseCodecFacts.h"
#include "engine/LoneCarriageReturn.h"
#include "engine/RawLineCursor.h"
#include "engine/SearchPlan.h"

namespace {

const ByteSearch &markSearch()
{
    static const ByteSearch search({BytePattern::exact("\xEF\xBB\xBF")});
    return search;
}

bool isUtf16(int codeSet)
{
    return codeSet == CodeSet::Utf16Be || codeSet == CodeSet::Utf16Le;
}

bool isKnown(int codeSet)
{
    return codeSet == CodeSet::Utf8 || codeSet == CodeSet::ShiftJis || codeSet == CodeSet::EucJp
        || isUtf16(codeSet);
}

} // namespace

RawLines::RawLines(const SearchPlan &plan, LineMatcher &matcher) : m_plan(plan), m_matcher(matcher)
{
}

std::optional<QStringList> RawLines::search(PieceSource &pieces, int codeSet)
{
    const char *content = pieces.content();
    qint64 size = pieces.size();
    ByteOrderMark::skip(&content, &size, &codeSet);
    if (!isKnown(codeSet))
        return std::nullopt;
    begin(codeSet);
    const bool done = searchPieces(pieces, content - pieces.content());
    QStringList hits = m_matcher.takeHits();
    if (!done)
        return std::nullopt;
    return hits;
}

void RawLines::begin(int codeSet)
{
    m_codeSet = codeSet;
    m_unitSize = isUtf16(codeSet) ? 2 : 1;
    m_bigEndian = codeSet == CodeSet::Utf16Be;
    m_nextNumber = 1;
    m_matcher.begin();
}

bool RawLines::searchPieces(PieceSource &pieces, qint64 markSize)
{
    for (;;) {
        const char *const bytes = pieces.content() + markSize;
        const qint64 size = pieces.size() - markSize;
        if (pieces.atEnd())
            return searchText(surveyed(bytes, size));
        const qint64 length = lastLineFeed(bytes, size);
        if (length < 0) {
            pieces.advance(0);
            continue;
        }
        if (!searchText(surveyed(bytes, length)))
            return false;
        const RawLineCursor firstLine(bytes, length, m_unitSize, m_bigEndian, m_nextNumber);
        m_nextNumber = firstLine.lastNumber() + 1;
        pieces.advance(markSize + length + m_unitSize);
        markSize = 0;
    }
}

/// Where the last line feed begins; -1 if there is none.
qint64 RawLines::lastLineFeed(const char *bytes, qint64 size) const
{
    const int lowAt = m_bigEndian ? 1 : 0;
    for (qint64 at = size - size % m_unitSize - m_unitSize; at >= 0; at -= m_unitSize) {
        if (m_unitSize == 1 ? bytes[at] == '\n'
                            : bytes[at + lowAt] == '\n' && bytes[at + 1 - lowAt] == 0)
            return at;
    }
    return -1;
}

RawLines::Text RawLines::surveyed(const char *bytes, qint64 size) const
{
    if (m_unitSize == 2)
        return {bytes, size, true, LoneCarriageReturn::isIn(bytes, size, 2, m_bigEndian)};
    const SearchKernels::ByteSurvey survey =
        SearchKernels::best().survey(reinterpret_cast<const uchar *>(bytes), size);
    return {bytes, size, survey.highByte, survey.loneCarriageReturn};
}

bool RawLines::searchText(const Text &text)
{
    if (const ByteSearch *const literals =
            m_plan.prefilter().lineSearch(m_codeSet, text.highBytes)) {
        return !text.loneCarriageReturn && visitLines(text, [&](qint64 from) {
            return literals->indexIn(text.bytes, text.size, from);
        });
    }
    const LineAutomaton &automaton = m_plan.automaton();
    const bool isUsable = text.highBytes ? automaton.isUsableInBytes() : automaton.isUsable();
    return isUsable && canRead(text) && visitLines(text, [&](qint64 from) {
               return text.highBytes ? automaton.nextInBytes(text.bytes, text.size, from)
                                     : automaton.nextInAscii(text.bytes, text.size, from);
           });
}

/// Whether the automaton sees in the bytes what it would see in the text.
bool RawLines::canRead(const Text &text) const
{
    if (m_codeSet == CodeSet::Utf8)
        return !text.highBytes || !markSearch().isIn(text.bytes, text.size);
    return m_unitSize == 1 && !text.highBytes && JapaneseCodecFacts::keepsSteadyAscii(m_codeSet)
        && ByteScan::asciiOf(text.bytes, text.size) == ByteScan::Ascii::AllSteady;
}

template <typename Next> bool RawLines::visitLines(const Text &text, const Next &next)
{
    m_decoderIsReady = false;
    RawLineCursor cursor(text.bytes, text.size, m_unitSize, m_bigEndian, m_nextNumber);
    return walkCandidates(m_matcher, cursor, next,
                          [&](LineRole role) { return visit(text, cursor, role); });
}

bool RawLines::visit(const Text &text, const RawLineCursor &cursor, LineRole role)
{
    m_decoderIsReady = m_decoderIsReady || m_decoder.begin(text.bytes, text.size, m_codeSet);
    if (!m_decoderIsReady || !m_decoder.decode(cursor.line(), cursor.length(), &m_line))
        return false;
    const LineAutomaton &automaton = m_plan.automaton();
    if (role == LineRole::Candidate && automaton.isUsable() && automaton.next(m_line, 0) < 0)
        return true; // as if it were none
    m_matcher.visit(cursor.number(), m_line);
    if (m_matcher.pendingLine() == cursor.number())
        m_line.swap(m_pendingLine);
    return true;
}
