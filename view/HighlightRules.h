#pragma once

#include "engine/LineFinder.h"
#include "view/HighlightColour.h"
#include "view/LinePattern.h"

#include <QHash>
#include <QRegExp>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVector>

#include <functional>
#include <map>
#include <optional>
#include <vector>

/// Named rules, each a pattern and a colour, applied in the order of their names
/// as texts ("KeyWord_10" before "KeyWord_2"): a later match covers an earlier
/// one.
///
/// Rules for a single word, of which a language has hundreds, are looked up word
/// by word in one walk over the line instead of searched for one after the other.
/// Matches and their order are the same.
class HighlightRules {
public:
    /// Called for each match that is not empty.
    using Visitor = std::function<void(int start, int length, HighlightColour colour)>;

    /// How far a match of a rule of the language sees in a long text, in UTF-16 code
    /// units.
    static constexpr int kSight = 4096;

    /// The rules that mark what was found come after all others, by their names.
    enum class Group { Language, Finds };
    static QString findName(int number);

    void clear();
    void remove(const QString &name);
    /// Adds or replaces a rule. One whose expression is empty or invalid stays
    /// without a match.
    void set(const QString &name, const QRegExp &expression, HighlightColour colour);
    /// The same for the expression "\b" + word + "\b"; word is a pattern itself.
    void setWord(const QString &name, const QString &word, HighlightColour colour);

    /// An empty one without a rule of that name.
    QRegExp expression(const QString &name) const;
    /// In the order of application.
    QStringList names() const;

    /// Visits the matches of every rule of the group that begin before limit:
    /// rule by rule in order, the matches of each from left to right, not
    /// overlapping.
    ///
    /// In a text of more than LinePattern::kShortLine units, matches of the language's
    /// rules are those of LinePatternWalk, and may be none after the patience is used
    /// up; those of what was found are LineFinder's, and may end early.
    void visitMatches(const QString &text, Group group, int limit, const Visitor &visitor) const;

    /// Looks for what visitMatches() will visit for the same text and limit, but for what
    /// costs next to nothing, until isTimeUp says so; it is asked before each look but
    /// the first. True when all is known. Otherwise the next call for this text and
    /// limit goes on where this one ended.
    bool lookForMatches(const QString &text, int limit,
                        const std::function<bool()> &isTimeUp) const;

    /// Of the time that all looks together took, what is no reason to leave a text: in
    /// each the first kAtOnceMilliseconds for the language's rules, so that ordinary
    /// lines have their colours as soon as they are seen.
    qint64 nanosecondsAtOnce() const { return m_nanosecondsAtOnce; }
    static constexpr int kAtOnceMilliseconds = 300;

    /// How long the language's rules are looked for in one text, in milliseconds; with 0
    /// by one look.
    void setPatience(int milliseconds) { m_patienceMilliseconds = milliseconds; }
    static constexpr int kPatienceMilliseconds = 5000;

private:
    struct Rule {
        QRegExp expression;
        HighlightColour colour = HighlightColour::Value;
        /// Set, and expression not, when a match is exactly this whole word.
        QString word;
        /// For the matches of what was found.
        mutable LineFinder finder;
        /// For those of the language in a long text.
        LinePattern pattern;
    };
    struct Match {
        int order;
        int start;
        int length;
    };

    void put(const QString &name, Rule rule);
    void forget();
    void prepare() const;
    std::vector<Match> wordMatches(const QString &text, int limit) const;
    void look() const;
    void lookForLanguage(const Rule &rule) const;
    void lookForFind(const Rule &rule) const;
    void goOnToRule(int order) const;
    static void visitRule(const Rule &rule, const QString &text, int limit, const Visitor &visitor);
    void visitKnown(int order, int end, const Visitor &visitor) const;

    std::map<QString, Rule> m_rules;

    // The rules laid out for a walk over a line; made when they are needed.
    mutable bool m_prepared = false;
    mutable std::vector<const Rule *> m_order;
    mutable int m_firstFind = 0;
    /// For each word the places of its rules in m_order. The views are of the
    /// texts in m_rules.
    mutable QHash<QStringView, QVector<int>> m_words;

    /// The matches in one text, as far as they are known.
    struct Known {
        QString text;
        int limit = -1;
        int order = 0; // of the rule to go on with
        int from = 0;
        std::optional<LinePatternWalk> walk; // of that rule, when it is the language's
        qint64 nanoseconds = 0; // spent on the language's rules
        std::vector<Match> matches; // by their orders
    };
    mutable Known m_known;
    mutable qint64 m_nanosecondsAtOnce = 0;
    int m_patienceMilliseconds = kPatienceMilliseconds;
};
