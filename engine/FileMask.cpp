#include "engine/FileMask.h"

#include <algorithm>

namespace {

bool isPlain(QChar unit)
{
    static const QString special = QStringLiteral("*?[]\\");
    return unit.unicode() < 0x80 && !special.contains(unit);
}

bool isPlainText(const QStringRef &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isPlain);
}

/// As the pattern engine compares: unit by unit, so that nothing changes its length.
QString inLowerCase(QString text)
{
    for (QChar &unit : text)
        unit = unit.toLower();
    return text;
}

} // namespace

FileMask::FileMask(const QString &mask) : m_negation(mask.contains(QLatin1Char('^')))
{
    QString text = mask;
    text.remove(QLatin1Char('^'));
    text.replace(QLatin1String("*.*"), QLatin1String("*"));
    m_patterns = text.split(QLatin1Char(' '));
    for (const QString &pattern : qAsConst(m_patterns))
        take(pattern);
}

void FileMask::take(const QString &pattern)
{
    if (pattern == QLatin1String("*")) {
        m_all = true;
    } else if (isPlainText(QStringRef(&pattern))) {
        m_names.insert(inLowerCase(pattern));
    } else if (pattern.startsWith(QLatin1Char('*')) && isPlainText(pattern.midRef(1))) {
        const QString end = inLowerCase(pattern.mid(1));
        m_ends.insert(end);
        if (!m_endLengths.contains(end.size()))
            m_endLengths.append(end.size());
    } else {
        m_wildcards.emplace_back(pattern, Qt::CaseInsensitive, QRegExp::Wildcard);
    }
}

bool FileMask::passesAsText(const QString &fileName) const
{
    if (m_names.isEmpty() && m_ends.isEmpty())
        return false;
    const QString name = inLowerCase(fileName);
    const auto hasEnd = [this, &name](int length) {
        return length <= name.size() && m_ends.contains(name.right(length));
    };
    return m_names.contains(name)
        || std::any_of(m_endLengths.cbegin(), m_endLengths.cend(), hasEnd);
}

bool FileMask::passes(const QString &fileName) const
{
    const auto matches = [&fileName](const QRegExp &wildcard) {
        return wildcard.exactMatch(fileName);
    };
    const bool matched = m_all || passesAsText(fileName)
        || std::any_of(m_wildcards.cbegin(), m_wildcards.cend(), matches);
    return matched != m_negation;
}
