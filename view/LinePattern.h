#pragma once

#include "engine/LineFinder.h"

#include <QRegExp>
#include <QString>

#include <cstddef>
#include <vector>

/// A pattern of a language, to be looked for in lines of any length; see
/// LinePatternWalk. Copies share nothing. Not re-entrant, as QRegExp is not.
class LinePattern {
public:
    /// A longer line is looked through in steps.
    static constexpr int kShortLine = 1024;

    /// Never matches.
    LinePattern() = default;
    /// In steps, a match sees no farther than sight UTF-16 code units; see LineFinder.
    LinePattern(const QRegExp &expression, int sight = LineFinder::kSight);

    /// An expression that is empty or invalid never matches.
    bool isEmpty() const { return m_expression.isEmpty() || !m_expression.isValid(); }
    const QRegExp &expression() const { return m_expression; }

private:
    friend class LinePatternWalk;

    struct Part {
        LineFinder marker;
        QString literal; // what marker finds, if that is one text only
        int longestMatch = LineFinder::kNoLimit;
        std::vector<LineFinder> forbidden;
        int limit = LineFinder::kNoLimit;
    };
    std::vector<Part> &parts() const;

    QRegExp m_expression;
    int m_sight = LineFinder::kSight;
    mutable std::vector<Part> m_parts; // made for the first long line
};

/// Looks for the matches of a pattern in one line, from left to right, by looks that
/// each end soon. What was found is kept: asking for the same match again costs
/// nothing.
///
/// In a line of up to LinePattern::kShortLine units one look is enough, and the
/// matches are those of QRegExp. So they are in a longer one as long as none sees
/// farther than the pattern's sight; but a look-ahead up to the end of the line, such
/// as the one in "//(?!.*\*/)", sees all of it, and takes time in proportion to its
/// length however many places it is asked at.
class LinePatternWalk {
public:
    /// Of matches that begin before limit. The pattern has to outlive the object.
    LinePatternWalk(const LinePattern &pattern, const QString &line,
                    int limit = LineFinder::kNoLimit);

    struct Look {
        /// False: the same call is to be repeated.
        bool isDone = false;
        /// When done, the first match that begins at or behind from, not an empty one.
        LineFinder::Match match;
    };
    Look look(int from);

private:
    /// A search for the first match at or behind a place that moves on.
    struct Search {
        int asked = 0;
        int at = 0; // none begins before, from asked on
        LineFinder::Match match;

        bool isDone(int from, int limit);
        void step(LineFinder &finder, const QString &line, int limit);
        void step(const QString &literal, const QString &line, int limit);
        void passMatch(int longest, int forbiddenStart);
    };
    struct PartSearch {
        Search marker;
        std::vector<Search> forbidden;
    };

    Look lookWhole(int from);
    bool lookForPart(std::size_t part, int from);

    const LinePattern *m_pattern;
    QString m_line;
    int m_limit;
    Search m_whole;
    std::vector<PartSearch> m_parts;
};
