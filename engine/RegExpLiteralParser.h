#pragma once

#include "engine/MatchTexts.h"

#include <QString>

/// Reads a pattern in QRegExp's classic syntax for the texts that its matches
/// contain. Only for patterns that QRegExp accepts; of anything else, and of
/// what it cannot follow, it knows nothing, which is always right.
class RegExpLiteralParser {
public:
    RegExpLiteralParser(const QString &pattern, Qt::CaseSensitivity sensitivity);

    MatchTexts parse();

    /// After parse(): the pattern consists of nothing but characters, some
    /// perhaps written as escapes. plainText() is then what it matches.
    bool isPlain() const { return m_plain; }
    QString plainText() const { return m_plainText; }

private:
    bool atEnd() const { return m_at >= m_pattern.size(); }
    bool startsWith(const char *token) const;
    ushort current() const { return atEnd() ? 0 : m_pattern.at(m_at).unicode(); }
    ushort take();
    int takeNumber(int fallback);
    ushort takeDigits(int maxCount, int base);

    MatchTexts expression();
    MatchTexts term();
    MatchTexts factor();
    MatchTexts atom();
    MatchTexts group();
    MatchTexts characterClass();
    MatchTexts escape();
    MatchTexts character(ushort unit);
    MatchTexts notPlain(const MatchTexts &texts);
    MatchTexts giveUp();
    MatchTexts quantified(const MatchTexts &texts);

    QString m_pattern;
    Qt::CaseSensitivity m_sensitivity;
    int m_at = 0;
    int m_depth = 0;
    bool m_plain = true;
    bool m_failed = false;
    QString m_plainText;
};
