#pragma once

#include "engine/LineFinder.h"
#include "view/HighlightColour.h"

#include <QHash>
#include <QRegExp>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVector>

#include <functional>
#include <map>
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

    static constexpr int kLongText = 16384;

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
    /// Matches of what was found are those of LineFinder, which in a long text may
    /// end early. The other rules see kLongText units beyond limit.
    void visitMatches(const QString &text, Group group, int limit, const Visitor &visitor) const;

    /// Looks for what visitMatches() will visit of the group Finds for the same text
    /// and limit, until isTimeUp says so; it is asked before each look but the first.
    /// True when all is known. Otherwise the next call for this text and limit goes
    /// on where this one ended.
    bool lookForFinds(const QString &text, int limit, const std::function<bool()> &isTimeUp) const;

private:
    struct Rule {
        QRegExp expression;
        HighlightColour colour = HighlightColour::Value;
        /// Set, and expression not, when a match is exactly this whole word.
        QString word;
        /// For the matches of what was found.
        mutable LineFinder finder;
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
    static void visitRule(const Rule &rule, const QString &wholeText, int limit,
                          const Visitor &visitor);
    void visitFinds(const QString &text, int limit, const Visitor &visitor) const;

    std::map<QString, Rule> m_rules;

    // The rules laid out for a walk over a line; made when they are needed.
    mutable bool m_prepared = false;
    mutable std::vector<const Rule *> m_order;
    mutable int m_firstFind = 0;
    /// For each word the places of its rules in m_order. The views are of the
    /// texts in m_rules.
    mutable QHash<QStringView, QVector<int>> m_words;

    /// What was found in one text, as far as it is known.
    struct Finds {
        QString text;
        int limit = -1;
        int order = 0; // of the rule to go on with
        int from = 0;
        std::vector<Match> matches;
    };
    mutable Finds m_finds;
};
