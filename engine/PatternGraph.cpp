#include "engine/PatternGraph.h"

#include "engine/CaseFolding.h"

#include <QRegExp>

#include <algorithm>

namespace {

constexpr int kMaxDepth = 100;

bool isLetterOrDigit(ushort unit)
{
    return (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'z')
        || (unit >= 'A' && unit <= 'Z');
}

bool isDigitOf(int base, ushort unit)
{
    if (unit >= '0' && unit <= '9')
        return unit - '0' < base;
    return base == 16 && ((unit >= 'a' && unit <= 'f') || (unit >= 'A' && unit <= 'F'));
}

} // namespace

PatternGraph::PatternGraph(const QString &pattern, Qt::CaseSensitivity sensitivity)
    : m_pattern(pattern), m_sensitivity(sensitivity)
{
    m_whole = expression();
    // Ignoring case, QRegExp makes two characters of U+0130.
    const bool twofold = sensitivity == Qt::CaseInsensitive && pattern.contains(QChar(0x130));
    if (!atEnd() || twofold)
        m_failed = true;
}

ushort PatternGraph::take()
{
    if (atEnd()) {
        m_failed = true;
        return 0;
    }
    return m_pattern.at(m_at++).unicode();
}

bool PatternGraph::takeIf(ushort unit)
{
    if (atEnd() || current() != unit)
        return false;
    ++m_at;
    return true;
}

int PatternGraph::takeNumber(int fallback)
{
    constexpr int kEnough = 10000;
    if (!isDigitOf(10, current()))
        return fallback;
    int value = 0;
    while (isDigitOf(10, current()))
        value = std::min(value * 10 + take() - '0', kEnough);
    return value;
}

void PatternGraph::takeDigits(int maxCount, int base)
{
    for (int i = 0; i < maxCount && isDigitOf(base, current()); ++i)
        take();
}

PatternGraph::Part PatternGraph::expression()
{
    Part all = term();
    while (!m_failed && takeIf('|')) {
        const Part other = term();
        const Part either = {newState(), newState()};
        connect(either.start, all.start);
        connect(either.start, other.start);
        connect(all.end, either.end);
        connect(other.end, either.end);
        all = either;
    }
    return all;
}

PatternGraph::Part PatternGraph::term()
{
    Part all = nothing();
    while (!m_failed && !atEnd() && current() != '|' && current() != ')')
        all = joined(all, factor());
    return all;
}

/// A copy of what a count repeats is read anew from the pattern.
PatternGraph::Part PatternGraph::factor()
{
    const int from = m_at;
    const Part first = atom();
    return repeated(first, from, count());
}

PatternGraph::Count PatternGraph::count()
{
    if (takeIf('*'))
        return {0, -1};
    if (takeIf('+'))
        return {1, -1};
    if (takeIf('?'))
        return {0, 1};
    return takeIf('{') ? braces() : Count();
}

// "{n}", "{n,}", "{n,m}" and, with 0 for what is missing, "{}" and "{,m}".
PatternGraph::Count PatternGraph::braces()
{
    Count count;
    count.least = takeNumber(0);
    count.most = count.least;
    if (takeIf(','))
        count.most = takeNumber(-1);
    if (take() != '}' || (count.most >= 0 && count.most < count.least))
        m_failed = true;
    return count;
}

PatternGraph::Part PatternGraph::repeated(const Part &first, int from, const Count &count)
{
    if (count.most == 0)
        return nothing();
    const int behind = m_at;
    const bool endless = count.most < 0 || count.most > kMostCopies;
    const int least = std::min(count.least, kMostCopies);
    const int copies = std::max(endless ? least : count.most, 1);
    Part all = first;
    Part last = first;
    std::vector<int> mayEnd;
    for (int copy = 1; !m_failed; ++copy) {
        if (copy > least)
            mayEnd.push_back(last.start);
        if (copy == copies)
            break;
        m_at = from;
        last = atom();
        all = joined(all, last);
    }
    m_at = behind;
    for (const int state : mayEnd)
        connect(state, all.end);
    if (endless)
        connect(last.end, last.start);
    return all;
}

PatternGraph::Part PatternGraph::atom()
{
    const int from = m_at;
    switch (const ushort unit = take()) {
    case '^':
        return nothing();
    case '$':
        return lineEnd();
    case '.':
        return oneOf(Symbols().set());
    case '(':
        return group();
    case '[':
        return characterClass(from);
    case '\\':
        return escape(from);
    case '*':
    case '+':
    case '?':
    case '{':
    case '}':
    case ']':
    case ')':
        m_failed = true;
        return nothing();
    default:
        return single(from, mayMatchHigh(unit));
    }
}

PatternGraph::Part PatternGraph::group()
{
    bool lookahead = false;
    if (takeIf('?')) {
        const ushort kind = take();
        lookahead = kind == '=' || kind == '!';
        if (!lookahead && kind != ':')
            m_failed = true;
    }
    if (++m_depth > kMaxDepth)
        m_failed = true;
    const Part inside = expression();
    --m_depth;
    if (take() != ')')
        m_failed = true;
    return lookahead ? nothing() : inside;
}

// The first character after "[" or "[^" is a member even if it is "]".
PatternGraph::Part PatternGraph::characterClass(int from)
{
    bool high = takeIf('^');
    do {
        const ushort unit = take();
        high = high || unit == '\\' || mayMatchHigh(unit);
        if (unit == '\\')
            take();
    } while (!m_failed && current() != ']');
    take();
    return single(from, high);
}

PatternGraph::Part PatternGraph::escape(int from)
{
    const ushort unit = take();
    switch (unit) {
    case 'b':
    case 'B':
        return nothing();
    case '0':
        takeDigits(3, 8);
        break;
    case 'x':
        takeDigits(4, 16);
        break;
    default:
        break;
    }
    if (unit >= '1' && unit <= '9') {
        takeNumber(0);
        return anyText();
    }
    return single(from, isLetterOrDigit(unit) || mayMatchHigh(unit));
}

int PatternGraph::newState()
{
    if (m_states.size() >= size_t(kMostStates))
        m_failed = true; // the graph is of no use any more, but stays whole
    m_states.emplace_back();
    return int(m_states.size()) - 1;
}

PatternGraph::Part PatternGraph::nothing()
{
    const int state = newState();
    return {state, state};
}

PatternGraph::Part PatternGraph::lineEnd()
{
    const Part part = {newState(), newState()};
    m_states[size_t(part.start)].atLineEnd = part.end;
    return part;
}

PatternGraph::Part PatternGraph::oneOf(const Symbols &symbols)
{
    const Part part = {newState(), newState()};
    State &start = m_states[size_t(part.start)];
    start.target = part.end;
    start.symbols = symbols;
    return part;
}

PatternGraph::Part PatternGraph::anyText()
{
    const Part part = oneOf(Symbols().set());
    connect(part.end, part.start);
    connect(part.start, part.end);
    return part;
}

/// What stands in the pattern from there up to here, which matches one
/// character.
PatternGraph::Part PatternGraph::single(int from, bool high)
{
    if (m_failed)
        return nothing();
    Symbols symbols = asciiOf(m_pattern.mid(from, m_at - from));
    symbols.set(size_t(kHigh), high || mayMatchHigh(symbols));
    return oneOf(symbols);
}

/// Whether one of them may stand for a character beyond ASCII: a range of a class
/// names few of its members.
bool PatternGraph::mayMatchHigh(const Symbols &symbols) const
{
    for (ushort unit = 0; unit < kHigh; ++unit) {
        if (symbols.test(unit) && mayMatchHigh(unit))
            return true;
    }
    return false;
}

PatternGraph::Part PatternGraph::joined(const Part &first, const Part &second)
{
    connect(first.end, second.start);
    return {first.start, second.end};
}

PatternGraph::Symbols PatternGraph::asciiOf(const QString &text)
{
    const auto known = m_asked.constFind(text);
    if (known != m_asked.constEnd())
        return m_states[size_t(*known)].symbols;
    const QRegExp expression(text, m_sensitivity);
    Symbols symbols;
    for (int unit = 0; unit < kHigh; ++unit)
        symbols.set(size_t(unit), expression.exactMatch(QString(QChar(unit))));
    m_asked.insert(text, int(m_states.size())); // the state that oneOf() is about to make
    return symbols;
}

/// Whether the character of the pattern may stand for one beyond ASCII.
bool PatternGraph::mayMatchHigh(ushort character) const
{
    if (character >= kHigh)
        return true;
    if (m_sensitivity == Qt::CaseSensitive)
        return false;
    const QVector<uint> same = CaseFolding::variants(character);
    // QRegExp puts the text into lower case, which makes an "i" of U+0130.
    return same.constLast() >= uint(kHigh) || character == 'i' || character == 'I';
}
