#include "engine/FileMask.h"

#include <algorithm>

namespace {

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(),
                       [](QChar unit) { return unit.unicode() < 0x80; });
}

bool isLiteral(QChar unit)
{
    static const QString special = QStringLiteral("*?[]\\");
    return unit.unicode() < 0x80 && !special.contains(unit);
}

} // namespace

FileMask::FileMask(const QString &mask) : m_negation(mask.contains(QLatin1Char('^')))
{
    QString text = mask;
    text.remove(QLatin1Char('^'));
    text.replace(QLatin1String("*.*"), QLatin1String("*"));
    const QStringList parts = text.split(QLatin1Char(' '));
    for (const QString &part : parts)
        m_patterns.push_back(makePattern(part));
}

FileMask::Pattern FileMask::makePattern(const QString &text)
{
    Pattern pattern;
    pattern.wildcard = QRegExp(text, Qt::CaseInsensitive, QRegExp::Wildcard);
    pattern.all = text == QLatin1String("*");
    const QString rest = text.mid(1);
    pattern.suffixOnly = text.startsWith(QLatin1Char('*')) && !rest.isEmpty()
        && std::all_of(rest.cbegin(), rest.cend(), isLiteral);
    if (pattern.suffixOnly)
        pattern.suffix = rest;
    return pattern;
}

bool FileMask::matches(const Pattern &pattern, const QString &fileName)
{
    if (pattern.all)
        return true;
    // Outside ASCII the two comparisons fold case differently; the pattern
    // engine's answer is the rule.
    if (pattern.suffixOnly && isAscii(fileName))
        return fileName.endsWith(pattern.suffix, Qt::CaseInsensitive);
    return pattern.wildcard.exactMatch(fileName);
}

bool FileMask::passes(const QString &fileName) const
{
    const bool matched =
        std::any_of(m_patterns.cbegin(), m_patterns.cend(),
                    [&fileName](const Pattern &pattern) { return matches(pattern, fileName); });
    return matched != m_negation;
}

QStringList FileMask::patterns() const
{
    QStringList texts;
    for (const Pattern &pattern : m_patterns)
        texts.append(pattern.wildcard.pattern());
    return texts;
}
