#include "view/LanguagePattern.h"

#include <algorithm>
#include <vector>

namespace {

/// Adds up how many elements a pattern has once its repetitions are copied out.
/// It may count too many (the parts of a character class, escapes), not too few.
class ElementCounter {
public:
    explicit ElementCounter(const QString &pattern) : m_pattern(pattern) { }

    bool exceeds(int elements, int nesting)
    {
        m_groups.assign(1, {});
        for (int i = 0; i < m_pattern.size(); ++i) {
            take(i);
            if (total() > elements || m_groups.size() > static_cast<std::size_t>(nesting))
                return true;
        }
        return false;
    }

private:
    struct Group {
        qint64 elements = 0;
        /// Of the last part, the one that a repetition would copy.
        qint64 last = 0;
    };

    void take(int &i)
    {
        const QChar c = m_pattern.at(i);
        if (c == QLatin1Char('\\')) {
            ++i;
            add(1);
        } else if (c == QLatin1Char('(')) {
            m_groups.push_back({});
        } else if (c == QLatin1Char(')') && m_groups.size() > 1) {
            const qint64 elements = m_groups.back().elements + 1;
            m_groups.pop_back();
            add(elements);
        } else if (c == QLatin1Char('{')) {
            repeat(largestNumber(i));
        } else {
            add(1);
        }
    }

    void add(qint64 elements)
    {
        m_groups.back().elements += elements;
        m_groups.back().last = elements;
    }

    void repeat(qint64 times)
    {
        Group &group = m_groups.back();
        const qint64 copies = group.last * std::max<qint64>(times - 1, 0);
        group.elements += copies;
        group.last += copies;
    }

    /// Of the numbers between the braces at i, which moves to the closing one.
    qint64 largestNumber(int &i)
    {
        constexpr qint64 kLargest = 100000;
        qint64 largest = 0;
        qint64 number = 0;
        while (i + 1 < m_pattern.size() && m_pattern.at(i) != QLatin1Char('}')) {
            const int digit = m_pattern.at(++i).digitValue();
            number = digit < 0 ? 0 : std::min(number * 10 + digit, kLargest);
            largest = std::max(largest, number);
        }
        return largest;
    }

    qint64 total() const
    {
        qint64 sum = 0;
        for (const Group &group : m_groups)
            sum += group.elements;
        return sum;
    }

    const QString &m_pattern;
    std::vector<Group> m_groups;
};

} // namespace

bool LanguagePattern::isReasonable(const QString &pattern)
{
    return pattern.size() <= kMostElements
        && !ElementCounter(pattern).exceeds(kMostElements, kDeepestNesting);
}

QRegExp LanguagePattern::compiled(const QString &pattern)
{
    if (!isReasonable(pattern))
        return QRegExp();
    const QRegExp expression(pattern);
    return expression.isValid() ? expression : QRegExp();
}
