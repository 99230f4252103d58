#pragma once

#include <QRegExp>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

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
    const QStringList &patterns() const { return m_patterns; }

private:
    void take(const QString &pattern);
    bool passesAsText(const QString &fileName) const;

    QStringList m_patterns;
    bool m_negation = false;
    bool m_all = false; ///< a pattern is "*"

    // Of patterns that are plain text or a star and plain text, of which a mask may
    // have hundreds: the text, in lower case.
    QSet<QString> m_names;
    QSet<QString> m_ends;
    QVector<int> m_endLengths; ///< each length once

    // Not a QVector: its copies would share the pattern engines' match states.
    std::vector<QRegExp> m_wildcards;
};
