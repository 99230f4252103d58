#pragma once

#include <QStringList>
#include <QVector>

/// What is known about the texts that a piece of a pattern can match: either
/// all of them, or how they begin and end and what each of them contains. The
/// knowledge may be too little, never wrong, so it can be combined without
/// looking back at the pattern.
///
/// 1. Texts are combined with one another as long as that gives at most kMaxTexts.
/// 2. Alternatives may be more, at most kMaxListed, as people paste lists of
///    words, if none of them is so short that nearly every line holds it.
/// 3. Strings are short.
///
/// What would not fit is forgotten.
class MatchTexts {
public:
    static constexpr int kMaxTexts = 16;
    static constexpr int kMaxListed = 20000;

    /// Exactly these texts; at least one. An empty text is a text.
    static MatchTexts exactly(const QStringList &texts);
    /// Nothing is known.
    static MatchTexts anything();

    MatchTexts followedBy(const MatchTexts &next) const;
    MatchTexts orElse(const MatchTexts &other) const;
    /// One of the alternatives, of which there is at least one. In time that grows
    /// with what they know together, which orElse() one after the other would not.
    static MatchTexts anyOf(const QVector<MatchTexts> &alternatives);
    /// maximum -1: without limit. 0 <= minimum <= maximum otherwise.
    MatchTexts repeated(int minimum, int maximum) const;

    /// All texts are known, whatever surrounds them.
    bool isExact() const { return m_exact; }

    /// The best known texts of which every match contains at least one; empty
    /// when there are none.
    QStringList required() const;

private:
    /// Texts with what a search for them is worth, which takes a look at each to tell.
    struct Rated {
        QStringList texts;
        int score = 0;
    };

    static Rated rated(const QStringList &texts);
    static Rated better(const Rated &first, const Rated &second);
    static MatchTexts loosenedAnyOf(const QVector<MatchTexts> &alternatives);
    MatchTexts loosened() const;
    MatchTexts repeatedExactly(int count) const;

    bool m_exact = false;
    QStringList m_texts; // all texts, when exact; the next three are for the rest
    QStringList m_heads; // every text begins with one of these
    QStringList m_tails; // every text ends with one of these
    Rated m_inside; // every text contains one of these; empty: unknown
};
