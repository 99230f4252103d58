#include "engine/RawLines.h"

#include "engine/ByteOrderMark.h"
#include "engine/ByteScan.h"
#include "engine/CandidateWalk.h"
#include "engine/JapaneseCodecFacts.h"
#include "engine/LineMatcher.h"
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

RawLines::Text RawLines::surveyed(const char *bytes, qint64 size, int codeSet)
{
    Text text = {bytes, size, codeSet, 1, codeSet == CodeSet::Utf16Be, true, false};
    if (isUtf16(codeSet)) {
        text.unitSize = 2;
        text.loneCarriageReturn = LoneCarriageReturn::isIn(bytes, size, 2, text.bigEndian);
        return text;
    }
    const SearchKernels::ByteSurvey survey =
        SearchKernels::best().survey(reinterpret_cast<const uchar *>(bytes), size);
    text.highBytes = survey.highByte;
    text.loneCarriageReturn = survey.loneCarriageReturn;
    return text;
}

std::optional<QStringList> RawLines::search(const char *content, qint64 size, int codeSet)
{
    ByteOrderMark::skip(&content, &size, &codeSet);
    if (!isKnown(codeSet))
        return std::nullopt;
    const Text text = surveyed(content, size, codeSet);
    if (const ByteSearch *const literals = m_plan.prefilter().lineSearch(codeSet, text.highBytes)) {
        if (text.loneCarriageReturn)
            return std::nullopt;
        return visitLines(
            text, [&](qint64 from) { return literals->indexIn(text.bytes, text.size, from); });
    }
    const LineAutomaton &automaton = m_plan.automaton();
    if (!automaton.isUsable() || !canRead(text))
        return std::nullopt;
    return visitLines(
        text, [&](qint64 from) { return automaton.nextInBytes(text.bytes, text.size, from); });
}

/// Whether the automaton sees in the bytes what it would see in the text.
bool RawLines::canRead(const Text &text) const
{
    if (text.codeSet == CodeSet::Utf8)
        return !text.highBytes || !markSearch().isIn(text.bytes, text.size);
    return text.unitSize == 1 && !text.highBytes
        && JapaneseCodecFacts::keepsSteadyAscii(text.codeSet)
        && ByteScan::asciiOf(text.bytes, text.size) == ByteScan::Ascii::AllSteady;
}

template <typename Next>
std::optional<QStringList> RawLines::visitLines(const Text &text, const Next &next)
{
    const qint64 first = next(0);
    if (first < 0)
        return QStringList();
    if (!m_decoder.begin(text.bytes, text.size, text.codeSet))
        return std::nullopt;
    m_matcher.begin();
    RawLineCursor cursor(text.bytes, text.size, text.unitSize, text.bigEndian);
    const bool done = walkCandidates(
        m_matcher, cursor, [&](qint64 from) { return from == 0 ? first : next(from); },
        [&](LineRole role) { return visit(cursor, role == LineRole::Candidate); });
    QStringList hits = m_matcher.takeHits();
    if (!done)
        return std::nullopt;
    return hits;
}

bool RawLines::visit(const RawLineCursor &cursor, bool candidate)
{
    if (!m_decoder.decode(cursor.line(), cursor.length(), &m_line))
        return false;
    const LineAutomaton &automaton = m_plan.automaton();
    if (candidate && automaton.isUsable() && automaton.next(m_line, 0) < 0)
        return true; // as if it were none
    m_matcher.visit(cursor.number(), m_line);
    if (m_matcher.pendingLine() == cursor.number())
        m_line.swap(m_pendingLine);
    return true;
}
