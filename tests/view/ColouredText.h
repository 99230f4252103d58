#pragma once

#include "view/HighlightSyntax.h"

#include <QString>
#include <QStringList>

/// Colours as texts that a person can compare: one letter for each UTF-16 code
/// unit of a line, "." for none.
namespace ColouredText {

inline QChar letterOf(HighlightColour colour)
{
    //                                   the enumeration's order
    static const QString letters = QStringLiteral("bckrvf12ds");
    return letters.at(static_cast<int>(colour));
}

/// Of lines that follow one another from the first of a text.
inline QStringList lettersOf(const HighlightSyntax &syntax, const QStringList &lines)
{
    QStringList result;
    CommentScanner::OpenComments open;
    for (const QString &text : lines) {
        QString letters(text.size(), QLatin1Char('.'));
        HighlightSyntax::Line line = {text, open.count()};
        syntax.visitColours(line, [&letters](int start, int length, HighlightColour colour) {
            for (int i = start; i < start + length; ++i)
                letters[i] = letterOf(colour);
        });
        if (syntax.hasBlockComments()) {
            syntax.comments().blockComments(text, open);
            open = {open.count()};
        }
        result.append(letters);
    }
    return result;
}

} // namespace ColouredText
