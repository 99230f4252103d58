#include "engine/LineFinder.h"

#include <QStringView>

#include <algorithm>

namespace {

/// Shorter lines are tried at once: no pattern takes long for them.
constexpr int kShortLine = 256;
/// So long, also a pattern that repeats nothing goes by pieces.
constexpr int kLongLine = 16384;

/// Whether a match may be longer than the pattern. Also true for some of which
/// that is not so, where one of the signs stands for itself.
bool repeats(const QString &pattern)
{
    for (int at = 0; at < pattern.size(); ++at) {
        const ushort unit = pattern.at(at).unicode();
        if (unit == '*' || unit == '+' || unit == '{')
            return true;
        if (unit != '\\' || ++at == pattern.size())
            continue;
        const ushort escaped = pattern.at(at).unicode();
        if (escaped >= '1' && escaped <= '9')
            return true;
    }
    return false;
}

QString withoutCopy(const QString &line, int from, int to)
{
    return QString::fromRawData(line.constData() + from, to - from);
}

} // namespace

LineFinder::LineFinder(const QRegExp &pattern)
    : m_pattern(pattern)
    , m_repeats(repeats(pattern.pattern()))
    , m_hasEnd(pattern.pattern().contains(QLatin1Char('$')))
{
}

LineFinder::Piece LineFinder::pieceAt(const QString &line, int unit) const
{
    const int size = line.size();
    const int wholeLine = m_repeats ? kPiece + kBeyond : kLongLine;
    if (size <= wholeLine)
        return {0, size, size};
    // One unit more shows what "\b" and "$" ask for.
    const int beyond = std::max(kBeyond, m_pattern.pattern().size() + 1);
    const int start = unit / kPiece * kPiece;
    const int end = std::min(start + kPiece, size);
    return {start, end, std::min(end + (m_repeats ? kBeyond : beyond), size)};
}

bool LineFinder::isRuledOut(const QString &line, int from, int to)
{
    if (!m_repeats || to - from <= kShortLine || m_pattern.patternSyntax() != QRegExp::RegExp)
        return false;
    if (!m_automaton)
        m_automaton.emplace(m_pattern.pattern(), m_pattern.caseSensitivity());
    if (!m_automaton->isUsable())
        return false;
    const QStringView seen = QStringView(line).mid(from, to - from);
    // It passes over carriage returns.
    return !seen.contains(QLatin1Char('\r')) && m_automaton->next(seen, 0) < 0;
}

/// Where the piece ends is no end of the line.
bool LineFinder::mayBeCut(const Piece &piece, const Match &match, const QString &line) const
{
    return m_hasEnd && match.start + match.length == piece.seen && piece.seen < line.size();
}

LineFinder::Look LineFinder::lookForward(const QString &line, int from, int limit)
{
    limit = std::min(limit, line.size());
    if (from >= limit || !m_pattern.isValid() || m_pattern.isEmpty())
        return {{}, limit};
    const Piece piece = pieceAt(line, from);
    const int end = std::min(piece.end, limit);
    if (isRuledOut(line, from, piece.seen))
        return {{}, end};
    const QString seen = withoutCopy(line, 0, piece.seen);
    while (from < end) {
        const int found = m_pattern.indexIn(seen, from);
        const Match match{found, m_pattern.matchedLength()};
        if (!match.isValid() || match.start >= end)
            break;
        if (match.length > 0 && !mayBeCut(piece, match, line))
            return {match, match.start + match.length};
        from = match.start + 1;
    }
    return {{}, end};
}

LineFinder::Look LineFinder::lookBackward(const QString &line, int from, int end)
{
    from = std::min(from, line.size());
    if (from <= 0 || !m_pattern.isValid() || m_pattern.isEmpty())
        return {};
    const Piece piece = pieceAt(line, from - 1);
    if (isRuledOut(line, piece.start, piece.seen))
        return {{}, piece.start};
    // It would go back to the start of the text: so that begins at the piece, with
    // the unit before it for what asks for that.
    const int first = std::max(piece.start - 1, 0);
    const QString seen = withoutCopy(line, first, piece.seen);
    const auto caret = first > 0 ? QRegExp::CaretWontMatch : QRegExp::CaretAtZero;
    while (from > piece.start) {
        const int found = m_pattern.lastIndexIn(seen, from - 1 - first, caret);
        const Match match{first + found, m_pattern.matchedLength()};
        if (found < 0 || match.start < piece.start)
            break;
        if (match.length > 0 && match.start + match.length <= end && !mayBeCut(piece, match, line))
            return {match, match.start};
        from = match.start;
    }
    return {{}, piece.start};
}
