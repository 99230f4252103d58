#pragma once

#include <QString>
#include <QStringList>

/// A finished search as its log records it: the request, then the result view's
/// text. Values only; any thread.
struct ResultLog {
    /// Lines before the result text, the line of hyphens included.
    static constexpr int kHeaderLines = 15;
    /// UTF-16 units of the label that each header line begins with; the value
    /// follows at once.
    static constexpr int kLabelLength = 9;

    QString keyword1;
    bool ignoreCase = false;
    bool word = false;
    bool regexp = false;
    bool subdir = false;
    bool extraGroup = false; ///< the group of the extra condition is checked
    QString keyword2; ///< empty when not in use
    int lineDistance = 0; ///< lines
    QStringList paths;
    QString mask;
    bool keyword3Group = false;
    QString keyword3;
    /// The result view's text, lines separated by "\n". It is kept letter by
    /// letter, but for carriage returns, which a text view never holds. (A
    /// plain text that a view gives has blanks where no-break spaces were and
    /// line feeds where line separators were; who wants these kept takes the
    /// document's raw text.)
    QString text;

    /// Lines 1 to 15, each ended by "\n". A line break inside a value, which
    /// would shift all lines after it, becomes a blank.
    QString header() const;

    /// header() and text, without a further line end.
    QString write() const;

    /// The value of the line of paths: nothing twice (compared as given), "\"
    /// turned into "/", each path with "/" at its end, joined by ", ", and
    /// without a line feed at the very end.
    static QString pathListValue(QStringList paths);

    /// What follows the last dot of the mask's first word (words are separated
    /// by single blanks).
    static QString extensionOf(const QString &mask);
};
