#include "engine/PatternLimits.h"

#include <algorithm>
#include <vector>

namespace {

/// What a part of a pattern becomes when it is compiled.
struct Part {
    qint64 elements = 0;
    qint64 connections = 0;
    qint64 firsts = 0; ///< elements that may begin a match of the part
    qint64 lasts = 0; ///< elements that may end one
    bool mayBeEmpty = true;
};

Part element(qint64 size = 1)
{
    return {size, 0, 1, 1, false};
}

Part position()
{
    return {1, 0, 0, 0, true};
}

Part sequence(const Part &a, const Part &b)
{
    return {a.elements + b.elements, a.connections + b.connections + a.lasts * b.firsts,
            a.firsts + (a.mayBeEmpty ? b.firsts : 0), b.lasts + (b.mayBeEmpty ? a.lasts : 0),
            a.mayBeEmpty && b.mayBeEmpty};
}

Part either(const Part &a, const Part &b)
{
    return {a.elements + b.elements, a.connections + b.connections, a.firsts + b.firsts,
            a.lasts + b.lasts, a.mayBeEmpty || b.mayBeEmpty};
}

struct Repetition {
    qint64 least = 0;
    qint64 most = 0; ///< copies, at least 1
    bool endless = false;
};

Part repeated(const Part &part, const Repetition &times)
{
    const qint64 pairs = part.lasts * part.firsts;
    const qint64 neighbours = part.mayBeEmpty ? times.most * (times.most - 1) / 2 : times.most - 1;
    const qint64 mayEnd = part.mayBeEmpty ? times.most : times.most - times.least + 1;
    Part all;
    all.elements = part.elements * times.most + 1;
    all.connections =
        part.connections * times.most + pairs * (neighbours + (times.endless ? 1 : 0));
    all.firsts = part.firsts * (part.mayBeEmpty ? times.most : 1);
    all.lasts = part.lasts * std::min(mayEnd, times.most);
    all.mayBeEmpty = part.mayBeEmpty || times.least == 0;
    return all;
}

/// Reads a pattern only as far as its size depends on it. It may count too many,
/// not too few.
class PartCounter {
public:
    explicit PartCounter(const QString &pattern) : m_pattern(pattern) { }

    bool isWithinLimits()
    {
        m_groups.assign(1, {});
        while (m_at < m_pattern.size()) {
            take();
            if (m_groups.size() > static_cast<std::size_t>(PatternLimits::kDeepestNesting)
                || exceeds(m_groups.back().all()))
                return false;
        }
        Part total;
        for (const Group &group : m_groups)
            total = sequence(total, group.all());
        return !exceeds(total);
    }

private:
    /// Is read up to some place: alternatives, and of the one being read all parts
    /// but the last, which a repetition may still change.
    struct Group {
        Part alternatives;
        bool hasAlternatives = false;
        Part before;
        Part last;
        bool isLookahead = false;

        Part current() const { return sequence(before, last); }
        Part all() const { return hasAlternatives ? either(alternatives, current()) : current(); }
    };

    static bool exceeds(const Part &part)
    {
        return part.elements > PatternLimits::kMostElements
            || part.connections > PatternLimits::kMostConnections;
    }

    void take()
    {
        switch (m_pattern.at(m_at++).unicode()) {
        case '\\':
            takeEscape();
            break;
        case '[':
            add(element(classSize()));
            break;
        case '(':
            openGroup();
            break;
        case ')':
            closeGroup();
            break;
        case '|':
            endAlternative();
            break;
        case '?':
            repeat({0, 1, false});
            break;
        case '*':
            repeat({0, 1, true});
            break;
        case '+':
            repeat({1, 1, true});
            break;
        case '{':
            repeat(braces());
            break;
        case '^':
        case '$':
            add(position());
            break;
        default:
            add(element());
        }
    }

    void add(const Part &part)
    {
        Group &group = m_groups.back();
        group.before = group.current();
        group.last = part;
    }

    void repeat(const Repetition &times)
    {
        Part &last = m_groups.back().last;
        last = repeated(last, times);
    }

    void takeEscape()
    {
        const QChar c = m_at < m_pattern.size() ? m_pattern.at(m_at++) : QChar();
        add(c == QLatin1Char('b') || c == QLatin1Char('B') ? position() : element());
    }

    void openGroup()
    {
        Group group;
        if (m_pattern.midRef(m_at, 1) == QLatin1String("?")) {
            const QStringRef kind = m_pattern.midRef(m_at + 1, 1);
            group.isLookahead = kind == QLatin1String("=") || kind == QLatin1String("!");
            m_at = std::min(m_at + 2, m_pattern.size());
        }
        m_groups.push_back(group);
    }

    void closeGroup()
    {
        if (m_groups.size() == 1) { // no valid pattern
            add(element());
            return;
        }
        const Group group = m_groups.back();
        m_groups.pop_back();
        Part part = group.all();
        ++part.elements;
        if (group.isLookahead) {
            part.firsts = part.lasts = 0;
            part.mayBeEmpty = true;
        }
        add(part);
    }

    void endAlternative()
    {
        Group &group = m_groups.back();
        group.alternatives = group.all();
        ++group.alternatives.elements;
        group.hasAlternatives = true;
        group.before = Part();
        group.last = Part();
    }

    /// Of the class whose bracket was taken; takes the rest of it. It is one
    /// element, however long, but copied as a whole.
    qint64 classSize()
    {
        constexpr int kUnitsPerElement = 16;
        const int start = m_at;
        if (m_pattern.midRef(m_at, 1) == QLatin1String("^"))
            ++m_at;
        // The first character stands for itself, a bracket too.
        do {
            const bool isEscape = m_pattern.midRef(m_at, 1) == QLatin1String("\\");
            m_at += isEscape ? 2 : 1;
        } while (m_at < m_pattern.size() && m_pattern.at(m_at) != QLatin1Char(']'));
        ++m_at;
        m_at = std::min(m_at, m_pattern.size());
        return 1 + (m_at - start) / kUnitsPerElement;
    }

    /// What is between the braces; takes the closing one too.
    Repetition braces()
    {
        const qint64 least = takeNumber();
        qint64 most = least;
        bool endless = false;
        if (m_pattern.midRef(m_at, 1) == QLatin1String(",")) {
            ++m_at;
            endless = m_pattern.midRef(m_at, 1) == QLatin1String("}");
            most = endless ? least : takeNumber();
        }
        if (m_pattern.midRef(m_at, 1) == QLatin1String("}"))
            ++m_at;
        most = std::max<qint64>(most, 1);
        return {std::min(least, most), most, endless};
    }

    qint64 takeNumber()
    {
        qint64 number = 0;
        for (; m_at < m_pattern.size(); ++m_at) {
            const int digit = m_pattern.at(m_at).digitValue();
            if (digit < 0)
                break;
            number = std::min<qint64>(number * 10 + digit, PatternLimits::kMostElements + 1);
        }
        return number;
    }

    const QString &m_pattern;
    int m_at = 0;
    std::vector<Group> m_groups;
};

} // namespace

bool PatternLimits::isReasonable(const QString &pattern)
{
    return PartCounter(pattern).isWithinLimits();
}

QRegExp PatternLimits::compiled(const QString &pattern, Qt::CaseSensitivity sensitivity)
{
    const QString invalid = QStringLiteral("(");
    return QRegExp(isReasonable(pattern) ? pattern : invalid, sensitivity);
}
