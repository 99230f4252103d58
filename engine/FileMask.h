#pragma once

#include <QRegExp>
#include <QString>
#include <QStringList>

#include <vector>

/// A file-name mask as typed, for example "*.cpp *.h".
///
/// 1. A "^" anywhere makes it a negation mask; every "^" is then removed.
/// 2. The text is split at each blank into wildcard patterns; empty parts are
///    patterns too and match no name.
/// 3. Every "*.*" stands for "*", so that it also passes names without a dot.
///
/// A name passes when a pattern matches it whole, case-insensitively; with a
/// negation mask when none does. Without any pattern nothing passes.
///
/// passes() is const but not re-entrant (QRegExp keeps its last match): each
/// thread uses a copy of its own.
class FileMask {
public:
    FileMask() = default;
    explicit FileMask(const QString &mask);

    bool passes(const QString &fileName) const;
    bool isNegation() const { return m_negation; }
    /// The patterns after steps 1 to 3.
    QStringList patterns() const;

private:
    struct Pattern {
        QRegExp wildcard;
        /// Text after the star where the pattern is a star and plain text: such
        /// a pattern is a comparison of the name's end.
        QString suffix;
        bool all = false; ///< "*": every name
        bool suffixOnly = false;
    };

    static Pattern makePattern(const QString &text);
    static bool matches(const Pattern &pattern, const QString &fileName);

    // Not a QVector: its copies would share the pattern engines' match states.
    std::vector<Pattern> m_patterns;
    bool m_negation = false;
};
