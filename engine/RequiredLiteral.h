#pragma once

#include <QStringList>

/// The text that a line must hold to match keyword1: every match contains at
/// least one of the alternatives as contiguous text, compared as QString does
/// with the case sensitivity of the search.
class RequiredLiteral {
public:
    /// keyword as it is matched, that is with the word boundaries that word mode
    /// adds to a pattern. A pattern is read in QRegExp's classic syntax.
    RequiredLiteral(const QString &keyword, bool regExp, Qt::CaseSensitivity sensitivity);

    /// Empty: unknown, any line may match. No alternative is an empty string.
    const QStringList &alternatives() const { return m_alternatives; }

    /// There is one alternative, and every line that holds it matches.
    bool isWholePattern() const { return m_wholePattern; }

    /// The alternatives are many, and each match begins where one of them stands.
    bool isList() const { return m_list; }

    /// The keyword is an invalid pattern or beyond PatternLimits: it never matches.
    bool neverMatches() const { return m_neverMatches; }

    Qt::CaseSensitivity caseSensitivity() const { return m_sensitivity; }

private:
    void readPattern(const QString &pattern);

    Qt::CaseSensitivity m_sensitivity;
    QStringList m_alternatives;
    bool m_wholePattern = false;
    bool m_list = false;
    bool m_neverMatches = false;
};
