#pragma once

#include <QString>

#include <functional>
#include <vector>

/// Half-open range of a line, in UTF-16 code units.
struct TextSpan {
    int start = 0;
    int end = 0;
};

inline bool operator==(const TextSpan &a, const TextSpan &b)
{
    return a.start == b.start && a.end == b.end;
}

/// A string literal, quotes included.
struct StringLiteral {
    TextSpan span;
    QChar quote;
    /// Whether the closing quote stands on the line. A literal without it reaches
    /// to the end of the text. With a double quote it hides what is there, as any
    /// literal does; with a single quote it does not: that may be an apostrophe.
    bool closed = false;
};

/// Finds the string literals of a line, from left to right: a quote inside a
/// literal opens no other one. There are no escapes: "C:\" is a whole literal.
class StringLiterals {
public:
    /// Whether '...' is a literal too; "..." always is. Initially it is.
    void setSingleQuotes(bool areLiterals) { m_singleQuotes = areLiterals; }
    bool singleQuotes() const { return m_singleQuotes; }

    /// The literals that begin in range; none reaches beyond it.
    std::vector<StringLiteral> find(const QString &text, const TextSpan &range) const;

    enum class Context {
        Code,
        /// Inside a comment, where the quote of "don't" is an apostrophe: a single
        /// quote behind a letter opens no literal. A double quote that nothing
        /// closes hides nothing there: it may stand for inches.
        Comment
    };

    /// The first match at or behind from, not an empty one; one that starts at -1
    /// without any.
    using Finder = std::function<TextSpan(int from)>;

    /// The first match of find, at from or later, that begins before end and does not
    /// begin inside a literal that hides it (which begin at from or later as well); one
    /// that starts at -1 without any. A match's own opening quote is not inside the
    /// literal that it opens.
    TextSpan findOutside(const Finder &find, const QString &text, int from, int end,
                         Context context = Context::Code) const;

private:
    bool nextLiteral(const QString &text, const TextSpan &range, int before, Context context,
                     StringLiteral &literal) const;

    bool m_singleQuotes = true;
};
