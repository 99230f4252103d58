#include "view/PatternSplit.h"

#include <QRegExp>

#include <algorithm>

namespace {

const QLatin1String kNotFollowedBy("(?!");
const QLatin1String kAnything(".*");

/// Behind the character class that begins at from; -1 when it does not end.
int endOfClass(const QString &pattern, int from)
{
    int at = from + 1;
    if (at < pattern.size() && pattern.at(at) == QLatin1Char('^'))
        ++at;
    // A bracket that comes first stands for itself.
    for (bool isFirst = true; at < pattern.size(); ++at, isFirst = false) {
        if (pattern.at(at) == QLatin1Char('\\'))
            ++at;
        else if (pattern.at(at) == QLatin1Char(']') && !isFirst)
            return at + 1;
    }
    return -1;
}

int endOfGroup(const QString &pattern, int from);

/// Behind the character, escape, class or group that begins at from; -1 when it
/// does not end.
int endOfItem(const QString &pattern, int from)
{
    switch (pattern.at(from).unicode()) {
    case '\\':
        return from + 2 <= pattern.size() ? from + 2 : -1;
    case '[':
        return endOfClass(pattern, from);
    case '(':
        return endOfGroup(pattern, from);
    default:
        return from + 1;
    }
}

int endOfGroup(const QString &pattern, int from)
{
    for (int at = from + 1; at >= 0 && at < pattern.size(); at = endOfItem(pattern, at)) {
        if (pattern.at(at) == QLatin1Char(')'))
            return at + 1;
    }
    return -1;
}

/// What the pattern is a sequence of; empty when something does not end.
QStringList itemsOf(const QString &pattern)
{
    QStringList items;
    for (int at = 0; at < pattern.size();) {
        const int end = endOfItem(pattern, at);
        if (end < 0)
            return QStringList();
        items.append(pattern.mid(at, end - at));
        at = end;
    }
    return items;
}

QStringList alternativesOf(const QStringList &items)
{
    QStringList alternatives = {QString()};
    for (const QString &item : items) {
        if (item == QLatin1String("|"))
            alternatives.append(QString());
        else
            alternatives.last() += item;
    }
    return alternatives;
}

bool asksAround(const QString &pattern)
{
    const QStringList items = itemsOf(pattern);
    return std::any_of(items.begin(), items.end(), [](const QString &item) {
        if (item.startsWith(QLatin1String("(?")))
            return true;
        if (item.startsWith(QLatin1Char('(')))
            return asksAround(item.mid(1, item.size() - 2));
        return item == QLatin1String("^") || item == QLatin1String("\\b")
            || item == QLatin1String("\\B");
    });
}

bool isQuantifier(const QString &item)
{
    return !item.isEmpty() && QStringLiteral("*+?{").contains(item);
}

/// What matches anywhere in a line regardless of what is around it, and not nothing.
bool isSelfContained(const QString &pattern)
{
    const bool isWhole = !pattern.isEmpty() && !isQuantifier(pattern.left(1));
    return isWhole && !asksAround(pattern) && QRegExp(pattern).indexIn(QString()) < 0;
}

/// Adds to forbidden what the look-ahead forbids up to the end of the line, and
/// returns what is left of it.
QString takeForbidden(const QString &lookAhead, QStringList &forbidden)
{
    const int start = kNotFollowedBy.size();
    const QStringList items = itemsOf(lookAhead.mid(start, lookAhead.size() - start - 1));
    QStringList left;
    for (const QString &alternative : alternativesOf(items)) {
        const QString rest = alternative.mid(kAnything.size());
        if (alternative.startsWith(kAnything) && isSelfContained(rest))
            forbidden.append(rest);
        else
            left.append(alternative);
    }
    if (left.isEmpty())
        return QString();
    return kNotFollowedBy + left.join(QLatin1Char('|')) + QLatin1Char(')');
}

/// Whether the pattern begins with the anchor, not repeated.
bool beginsWith(const QString &pattern, QLatin1String anchor)
{
    return pattern.startsWith(anchor) && !isQuantifier(pattern.mid(anchor.size(), 1));
}

/// Whether nothing but look-aheads repeats anything.
bool isBounded(const QString &pattern)
{
    const QStringList items = itemsOf(pattern);
    return std::all_of(items.begin(), items.end(), [](const QString &item) {
        if (item.startsWith(QLatin1String("(?!")) || item.startsWith(QLatin1String("(?=")))
            return true;
        if (item.startsWith(QLatin1Char('(')))
            return isBounded(item.mid(1, item.size() - 2));
        return item == QLatin1String("?") || !isQuantifier(item);
    });
}

QString literalOf(const QString &pattern)
{
    QString literal;
    for (const QString &item : itemsOf(pattern)) {
        const QChar c = item.back();
        const bool isEscaped = item.size() == 2 && item.at(0) == QLatin1Char('\\');
        const bool isSign = c.isPunct() || c.isSymbol();
        if (isEscaped ? !isSign : item.size() > 1 || QStringLiteral("*+?{|^$.()[]\\").contains(c))
            return QString();
        literal.append(c);
    }
    return literal;
}

int limitOf(const QString &pattern)
{
    // Something behind the end of the line: how a definition says that it has no marker.
    if (pattern.size() == 2 && pattern.at(0) == QLatin1Char('$')
        && (pattern.at(1) == QLatin1Char('.') || !literalOf(pattern.mid(1)).isEmpty()))
        return 0;
    return beginsWith(pattern, QLatin1String("^")) ? 1 : PatternSplit::kUnbounded;
}

PatternSplit::Part partOf(const QString &alternative)
{
    PatternSplit::Part part;
    QStringList items = itemsOf(alternative);
    QString lookAheads;
    while (!items.isEmpty() && items.last().startsWith(kNotFollowedBy))
        lookAheads.prepend(takeForbidden(items.takeLast(), part.forbidden));
    // Look-aheads alone match nothing, wherever that is.
    if (items.isEmpty())
        part.forbidden.clear();
    part.marker = part.forbidden.isEmpty() ? alternative : items.join(QString()) + lookAheads;
    part.literal = literalOf(part.marker);
    part.longestMatch = isBounded(part.marker) ? part.marker.size() : PatternSplit::kUnbounded;
    part.limit = limitOf(part.marker);
    part.isAtBoundary = beginsWith(part.marker, QLatin1String("\\b"));
    return part;
}

bool hasBackReference(const QStringList &items)
{
    return items.join(QString()).contains(QRegExp(QStringLiteral("\\\\[1-9]")));
}

} // namespace

std::vector<PatternSplit::Part> PatternSplit::whole(const QString &pattern)
{
    return {{pattern, {}, QString(), kUnbounded, kUnbounded, false}};
}

std::vector<PatternSplit::Part> PatternSplit::parts(const QString &pattern)
{
    const QStringList items = itemsOf(pattern);
    if (items.isEmpty() || hasBackReference(items))
        return whole(pattern);
    std::vector<Part> parts;
    for (const QString &alternative : alternativesOf(items))
        parts.push_back(partOf(alternative));
    return parts;
}
