#include "view/WordPicker.h"

#include <QTextBoundaryFinder>

namespace {

bool isAscii(QChar c)
{
    return c >= QLatin1Char(' ') && c <= QLatin1Char('z');
}

/// As in a text document, what follows the last character is the end of a paragraph.
QChar charAt(QStringView line, int position)
{
    return position < line.size() ? line[position] : QChar(QChar::ParagraphSeparator);
}

} // namespace

bool WordPicker::isSeparator(QChar c)
{
    static const QString separators =
        QStringLiteral(" \"._;:%&'!^+-/\\=*|[]()”、。＃＄％＆（）「」／\u3000");
    return c < QLatin1Char(' ') || separators.contains(c);
}

QString WordPicker::pick(QStringView line, int position, int words)
{
    if (position >= line.size())
        return {};
    const QStringView rest = line.mid(position);
    QChar seen = charAt(rest, 0);
    if (words == 1)
        m_asciiRun = isAscii(seen);
    // What looks like one character (a pair of surrogates, a letter with its
    // accents) is taken whole.
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, rest.data(),
                                   static_cast<int>(rest.size()));
    int left = words;
    int length = 0;
    while (length < rest.size()) {
        length = characters.toNextBoundary();
        seen = charAt(rest, length);
        if (isSeparator(seen) && --left < 1)
            break;
        if (left == 1 && isAscii(seen) != m_asciiRun)
            break;
        if (seen.isNull())
            break;
    }
    if (words > 1)
        m_asciiRun = isAscii(seen);
    return rest.left(length).toString();
}
