#pragma once

#include <QStringList>

/// What is known about the texts that a piece of a pattern can match: either
/// all of them, or how they begin and end and what each of them contains. The
/// knowledge may be too little, never wrong, so it can be combined without
/// looking back at the pattern.
///
/// All lists are short (at most kMaxTexts) and their strings too; what would
/// not fit is forgotten.
class MatchTexts {
public:
    static constexpr int kMaxTexts = 16;

    /// Exactly these texts; at least one. An empty text is a text.
    static MatchTexts exactly(const QStringList &texts);
    /// Nothing is known.
    static MatchTexts anything();

    MatchTexts followedBy(const MatchTexts &next) const;
    MatchTexts orElse(const MatchTexts &other) const;
    /// maximum -1: without limit. 0 <= minimum <= maximum otherwise.
    MatchTexts repeated(int minimum, int maximum) const;

    /// The best known texts of which every match contains at least one; empty
    /// when there are none.
    QStringList required() const;

private:
    MatchTexts loosened() const;
    MatchTexts repeatedExactly(int count) const;

    bool m_exact = false;
    QStringList m_texts; // all texts, when exact; the next three are for the rest
    QStringList m_heads; // every text begins with one of these
    QStringList m_tails; // every text ends with one of these
    QStringList m_inside; // every text contains one of these; empty: unknown
};
