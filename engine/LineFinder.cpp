#include "engine/LineFinder.h"

#include <QStringView>

#include <algorithm>

namespace {

/// Shorter lines are searched as a whole: no pattern takes long for them.
constexpr int kShortLine = 256;
/// Tried in one look, each of which may see all that is in sight.
constexpr int kPlacesOfALook = 16;
/// A longer line goes by pieces also for a pattern that repeats nothing.
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

/// As QRegExp decides where "\b" matches.
bool isWordAt(const QString &line, int at)
{
    if (at < 0 || at >= line.size())
        return false;
    const QChar c = line.at(at);
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
}

QString withoutCopy(const QString &line, int from, int to)
{
    return QString::fromRawData(line.constData() + from, to - from);
}

} // namespace

LineFinder::LineFinder(const QRegExp &pattern, int sight)
    : m_pattern(pattern)
    , m_sight(sight)
    , m_repeats(repeats(pattern.pattern()))
    , m_hasEnd(pattern.pattern().contains(QLatin1Char('$')))
    , m_asksBefore(pattern.pattern().contains(QLatin1String("\\b"), Qt::CaseInsensitive))
{
}

bool LineFinder::goesByPlaces(const QString &line) const
{
    return m_repeats && line.size() > kShortLine;
}

/// Whether no match begins at or behind from and ends at or before to.
bool LineFinder::isRuledOut(const QString &line, int from, int to)
{
    if (m_pattern.patternSyntax() != QRegExp::RegExp)
        return false;
    if (!m_automaton)
        m_automaton.emplace(m_pattern.pattern(), m_pattern.caseSensitivity());
    if (!m_automaton->isUsable())
        return false;
    to = std::min(to, line.size());
    const QStringView seen = QStringView(line).mid(from, to - from);
    // It passes over carriage returns.
    return !seen.contains(QLatin1Char('\r')) && m_automaton->next(seen, 0) < 0;
}

/// Of the match that begins exactly there; 0 without one. Adds what was seen to units.
int LineFinder::lengthAt(const QString &line, int start, int *units) const
{
    const bool isBehindWord = isWordAt(line, start - 1);
    if (m_beginsAtBoundary && isBehindWord == isWordAt(line, start))
        return 0;
    const int seenEnd = std::min(start + m_sight, line.size());
    *units += seenEnd - start;
    // A search backward tries its place alone, and what is before it in the text. The
    // start of the text is to "\b" what a character of no word is.
    const int first = m_asksBefore && isBehindWord ? start - 1 : start;
    const QString seen = withoutCopy(line, first, seenEnd);
    const auto caret = start > 0 ? QRegExp::CaretWontMatch : QRegExp::CaretAtZero;
    if (m_pattern.lastIndexIn(seen, start - first, caret) != start - first)
        return 0;
    const int length = m_pattern.matchedLength();
    const bool isCut = start + length == seenEnd && seenEnd < line.size();
    return isCut && m_hasEnd ? 0 : length;
}

LineFinder::Look LineFinder::lookForward(const QString &line, int from, int limit)
{
    limit = std::min(limit, line.size());
    if (from >= limit || !m_pattern.isValid() || m_pattern.isEmpty())
        return {{}, limit};
    if (!goesByPlaces(line))
        return wholeForward(line, from, limit);
    const int end = std::min((from / kPiece + 1) * kPiece, limit);
    if (isRuledOut(line, from, end + m_sight))
        return {{}, end};
    for (int units = 0; from < end && units < kPlacesOfALook * m_sight; ++from) {
        const int length = lengthAt(line, from, &units);
        if (length > 0)
            return {{from, length}, from + length};
    }
    return {{}, from};
}

LineFinder::Look LineFinder::lookBackward(const QString &line, int from, int end)
{
    from = std::min(from, line.size());
    if (from <= 0 || !m_pattern.isValid() || m_pattern.isEmpty())
        return {};
    if (!goesByPlaces(line))
        return wholeBackward(line, from, end);
    const int first = (from - 1) / kPiece * kPiece;
    if (isRuledOut(line, first, from + m_sight))
        return {{}, first};
    for (int units = 0; from > first && units < kPlacesOfALook * m_sight;) {
        const int length = lengthAt(line, --from, &units);
        if (length > 0 && from + length <= end)
            return {{from, length}, from};
    }
    return {{}, from};
}

LineFinder::Look LineFinder::wholeForward(const QString &line, int from, int limit) const
{
    const bool byPieces = line.size() > kLongLine;
    const int end = byPieces ? std::min((from / kPiece + 1) * kPiece, limit) : limit;
    // One unit more than a match has, for what asks how it goes on.
    const int beyond = m_pattern.pattern().size() + 1;
    const int seenEnd = byPieces ? std::min(end + beyond, line.size()) : line.size();
    // From the line's start, where "^" matches.
    const QString seen = withoutCopy(line, 0, seenEnd);
    while (from < end) {
        const int start = m_pattern.indexIn(seen, from);
        if (start < 0 || start >= end)
            break;
        const int length = m_pattern.matchedLength();
        if (length > 0)
            return {{start, length}, start + length};
        from = start + 1;
    }
    return {{}, end};
}

LineFinder::Look LineFinder::wholeBackward(const QString &line, int from, int end) const
{
    const int first = line.size() > kLongLine ? (from - 1) / kPiece * kPiece : 0;
    // With the unit before it, for what asks for that; a search backward goes on to the
    // start of its text.
    const int seenStart = std::max(first - 1, 0);
    const QString seen = withoutCopy(line, seenStart, line.size());
    const auto caret = seenStart > 0 ? QRegExp::CaretWontMatch : QRegExp::CaretAtZero;
    while (from > first) {
        const int found = m_pattern.lastIndexIn(seen, from - 1 - seenStart, caret);
        from = seenStart + found;
        if (found < 0 || from < first)
            break;
        const int length = m_pattern.matchedLength();
        if (length > 0 && from + length <= end)
            return {{from, length}, from};
    }
    return {{}, first};
}
