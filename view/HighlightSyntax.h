#pragma once

#include "view/CommentScanner.h"
#include "view/HighlightRules.h"
#include "view/StringLiterals.h"

#include <QRegExp>
#include <QString>

#include <limits>

struct LanguageDefinition;

/// Which colours a view's lines get, decided line by line from the text alone:
/// in the preview by the language of the file (see LanguageConfig), in the
/// result view by what a result looks like, in both by what was searched for.
///
/// A later one of these covers an earlier one:
///
/// 1. the rules: single-line comments ("Comment"), file lines ("Grep"), keywords
///    ("KeyWord_0", …), reserved words ("Reserve_0", …), values ("Value"), in
///    the order of HighlightRules;
/// 2. if the language has both markers for block comments: its single-line
///    comment once more, from the marker to the end of the line;
/// 3. string literals (see StringLiterals), double-quoted ones first;
/// 4. block comments (see CommentScanner);
/// 5. what was found ("zFind_1", "zFind_2").
///
/// So a language without block comments colours the words inside its comments; a
/// definition that is to leave them alone has markers that never match.
class HighlightSyntax {
public:
    explicit HighlightSyntax(bool isResultView);

    /// Drops all rules, what was found included, and takes up the language
    /// languageName or, when that is empty, the one of suffix, in this order:
    ///
    /// 1. In the result view, the rules for file lines and values. When both names
    ///    are empty, that is all.
    /// 2. The words of the definition; without one, a line in the debug log.
    /// 3. The values. If the language before had no block comments, in the preview
    ///    also the comments that "ini", "bat" and "sed" files are known for; they
    ///    stay only without a definition. Without one, that is all.
    /// 4. The definition's single-line comment, or none. Only a definition that has
    ///    one decides about single quotes.
    /// 5. The definition's block comments, or none.
    ///
    /// What a step that is not reached or does not decide would set stays as the
    /// language before had it: a file of an unknown kind is shown with the block
    /// comments of the one before.
    void setLanguage(const QString &suffix, const QString &languageName);

    /// Marks the matches of pattern, or none when it is empty; number is 1 or 2.
    /// False when that changes nothing.
    bool setFind(int number, const QRegExp &pattern);

    const HighlightRules &rules() const { return m_rules; }
    const CommentScanner &comments() const { return m_comments; }
    /// Whether lines depend on those before them: the language has both block
    /// comment markers.
    bool hasBlockComments() const { return m_multiLine; }
    /// Whether the single quote marks comments in the language, not strings.
    bool quoteIsComment() const { return !m_literals.singleQuotes(); }
    bool isResultView() const { return m_isResultView; }

    struct Line {
        const QString &text;
        /// How many block comments the lines before leave open.
        int openBefore = 0;
        /// Parts that begin here or behind are left out.
        int limit = std::numeric_limits<int>::max();
    };

    /// Visits the parts of a line with their colours, later ones covering earlier
    /// ones. Returns the last comment of step 2 or 4, or an empty span at -1.
    TextSpan visitColours(const Line &line, const HighlightRules::Visitor &visitor) const;

private:
    void forgetComments();
    void addValueRule();
    void addWords(const LanguageDefinition &definition);
    void takeBuiltInComment(const QString &pattern);
    void takeSingleLine(const QString &pattern);
    void takeBlockComments(const QString &start, const QString &end);
    void setCommentRule();

    HighlightRules m_rules;
    CommentMarkers m_markers;
    StringLiterals m_literals;
    /// Finds the comments by m_markers and m_literals.
    CommentScanner m_comments;
    bool m_multiLine = false;
    bool m_isResultView;
};
