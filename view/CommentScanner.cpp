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

int CommentScanner::nextSingleLine(Line &line, int from) const
{
    const bool isAhead = line.nextSingleLine == -1 || line.nextSingleLine >= from;
    if (!isAhead)
        line.nextSingleLine = m_markers.singleLine.indexIn(line.text, from);
    return line.nextSingleLine;
}

TextSpan CommentScanner::find(const QRegExp &marker, Line &line, int from,
                              StringLiterals::Context context) const
{
    const int match = m_literals.indexOutside(marker, line.text, from, context);
    if (match < 0)
        return kNone;
    const TextSpan span = {match, match + marker.matchedLength()};
    if (m_markers.singleLine.isEmpty())
        return span;
    // What looks like a marker may still stand in a literal.
    int comment = nextSingleLine(line, from);
    if (comment >= 0 && comment < match)
        comment = m_literals.indexOutside(m_markers.singleLine, line.text, from, context);
    return comment >= 0 && comment < match ? kNone : span;
}

TextSpan CommentScanner::findStart(Line &line, int from) const
{
    return find(m_markers.multiLineStart, line, from, StringLiterals::Context::Code);
}

TextSpan CommentScanner::findEnd(Line &line, int from) const
{
    return find(m_markers.multiLineEnd, line, from, StringLiterals::Context::Comment);
}

std::vector<TextSpan> CommentScanner::blockComments(const QString &text, OpenComments &open) const
{
    Line line{text};
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
    Line line{text};
    if (m_markers.singleLine.isEmpty())
        return -1;
    for (const TextSpan &gap : gapsBetween(blocks, text.size())) {
        const int next = nextSingleLine(line, gap.start);
        if (next < 0)
            return -1;
        if (next >= gap.end)
            continue;
        const int start = m_literals.indexOutside(m_markers.singleLine, text, gap.start);
        if (start >= 0 && start < gap.end)
            return start;
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
