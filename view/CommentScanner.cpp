#include "view/CommentScanner.h"

#include <algorithm>

namespace {

constexpr TextSpan kNone = {-1, -1};

bool found(const TextSpan &span)
{
    return span.start >= 0;
}

/// What the blocks leave of the first end characters.
std::vector<TextSpan> gapsBetween(const std::vector<TextSpan> &blocks, int end)
{
    std::vector<TextSpan> gaps;
    int from = 0;
    for (const TextSpan &block : blocks) {
        gaps.push_back({from, std::min(block.start, end)});
        from = block.end;
    }
    gaps.push_back({from, end});
    gaps.erase(std::remove_if(gaps.begin(), gaps.end(),
                              [](const TextSpan &gap) { return gap.start >= gap.end; }),
               gaps.end());
    return gaps;
}

} // namespace

CommentScanner::CommentScanner(const CommentMarkers &markers, const StringLiterals &literals)
    : m_markers(markers), m_literals(literals)
{
}

CommentScanner::Line CommentScanner::lineOf(const QString &text) const
{
    return {text,
            {m_markers.singleLine, text},
            {m_markers.multiLineStart, text},
            {m_markers.multiLineEnd, text},
            {},
            false};
}

TextSpan CommentScanner::next(LinePatternWalk &marker, Line &line, int from) const
{
    while (!line.isGivenUp) {
        const LinePatternWalk::Look look = marker.look(from);
        if (look.isDone) {
            const LineFinder::Match &match = look.match;
            return match.isValid() ? TextSpan{match.start, match.start + match.length} : kNone;
        }
        if (!line.timer.isValid())
            line.timer.start();
        line.isGivenUp = line.timer.elapsed() >= m_patienceMilliseconds;
    }
    return kNone;
}

TextSpan CommentScanner::nextOutside(LinePatternWalk &marker, Line &line, int from, int end,
                                     StringLiterals::Context context) const
{
    const auto nextFrom = [&](int place) {
        return next(marker, line, place);
    };
    return m_literals.findOutside(nextFrom, line.text, from, end, context);
}

TextSpan CommentScanner::find(LinePatternWalk &marker, Line &line, int from,
                              StringLiterals::Context context) const
{
    const TextSpan span = nextOutside(marker, line, from, line.text.size(), context);
    if (!found(span))
        return kNone;
    // What looks like a marker may still stand in a literal.
    TextSpan comment = next(line.singleLine, line, from);
    if (found(comment) && comment.start < span.start)
        comment = nextOutside(line.singleLine, line, from, span.start, context);
    return found(comment) && comment.start < span.start ? kNone : span;
}

TextSpan CommentScanner::findStart(Line &line, int from) const
{
    return find(line.multiLineStart, line, from, StringLiterals::Context::Code);
}

TextSpan CommentScanner::findEnd(Line &line, int from) const
{
    return find(line.multiLineEnd, line, from, StringLiterals::Context::Comment);
}

std::vector<TextSpan> CommentScanner::blockComments(const QString &text, OpenComments &open) const
{
    Line line = lineOf(text);
    std::vector<TextSpan> spans;
    const bool continued = !open.isEmpty();
    TextSpan start = findStart(line, 0);
    TextSpan end = findEnd(line, found(start) && !continued ? start.end : 0);
    if (found(start) && !found(end))
        open.open();

    bool inside = continued || found(start);
    int spanStart = continued ? 0 : start.start;
    while (inside) {
        if (!found(end)) {
            spans.push_back({spanStart, text.size()});
            break;
        }
        if (!open.isEmpty())
            open.close();
        int from = end.end;
        if (open.isEmpty()) {
            spans.push_back({spanStart, from});
            start = findStart(line, from);
            inside = found(start);
            if (inside) {
                open.open();
                spanStart = start.start;
                from = start.end;
            }
        }
        if (inside)
            end = findEnd(line, from);
    }
    return spans;
}

int CommentScanner::lineComment(const QString &text, const std::vector<TextSpan> &blocks) const
{
    if (m_markers.singleLine.isEmpty())
        return -1;
    Line line = lineOf(text);
    for (const TextSpan &gap : gapsBetween(blocks, text.size())) {
        const TextSpan ahead = next(line.singleLine, line, gap.start);
        if (!found(ahead))
            return -1;
        if (ahead.start >= gap.end)
            continue;
        const TextSpan marker =
            nextOutside(line.singleLine, line, gap.start, gap.end, StringLiterals::Context::Code);
        if (found(marker))
            return marker.start;
    }
    return -1;
}

std::vector<StringLiteral> CommentScanner::stringLiterals(const QString &text,
                                                          const std::vector<TextSpan> &blocks,
                                                          int end) const
{
    std::vector<StringLiteral> literals;
    for (const TextSpan &gap : gapsBetween(blocks, end)) {
        const std::vector<StringLiteral> more = m_literals.find(text, gap);
        literals.insert(literals.end(), more.begin(), more.end());
    }
    return literals;
}
