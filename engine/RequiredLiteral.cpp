#include "engine/RequiredLiteral.h"

#include "engine/PatternLimits.h"
#include "engine/RegExpLiteralParser.h"

RequiredLiteral::RequiredLiteral(const QString &keyword, bool regExp,
                                 Qt::CaseSensitivity sensitivity)
    : m_sensitivity(sensitivity)
{
    if (keyword.isEmpty())
        return;
    if (regExp) {
        readPattern(keyword);
    } else {
        m_alternatives = QStringList(keyword);
        m_wholePattern = true;
    }
}

void RequiredLiteral::readPattern(const QString &pattern)
{
    if (!PatternLimits::compiled(pattern, m_sensitivity).isValid()) {
        m_neverMatches = true;
        return;
    }
    RegExpLiteralParser parser(pattern, m_sensitivity);
    const MatchTexts texts = parser.parse();
    if (!parser.isPlain()) {
        m_alternatives = texts.required();
        m_list = texts.isExact() && m_alternatives.size() > MatchTexts::kMaxTexts;
        return;
    }
    // QRegExp looks for such a pattern as for any other string, except that it
    // first puts it into lower case, which makes two characters of U+0130.
    const bool ignoreCase = m_sensitivity == Qt::CaseInsensitive;
    m_alternatives = QStringList(ignoreCase ? parser.plainText().toLower() : parser.plainText());
    m_wholePattern = true;
}
