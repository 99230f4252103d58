#include "view/ResultLine.h"

namespace {

constexpr int kFilePrefixLength = 2;

struct Break {
    ushort code;
    ushort standIn;
};

/// What ends a paragraph or a line in a text document.
constexpr Break kBreaks[] = {{'\n', 0xDC0A},   {'\r', 0xDC0D},   {0x2028, 0xDC28},
                             {0x2029, 0xDC29}, {0xFDD0, 0xDC10}, {0xFDD1, 0xDC11}};

/// "␤". A hit's text is read, not opened: it may show what stands in for a break.
constexpr ushort kBreakInHit = 0x2424;

} // namespace

QString ResultLine::withoutBreaks(const QString &text)
{
    QString oneLine = text;
    for (const Break &lineBreak : kBreaks)
        oneLine.replace(QChar(lineBreak.code), QChar(lineBreak.standIn));
    return oneLine;
}

QString ResultLine::onOneLine(const QString &line)
{
    switch (kind(line)) {
    case Kind::File:
        return withoutBreaks(line);
    case Kind::Hit: {
        QString oneLine = line;
        for (const Break &lineBreak : kBreaks)
            oneLine.replace(QChar(lineBreak.code), QChar(kBreakInHit));
        return oneLine;
    }
    case Kind::None:
        break;
    }
    return line;
}

ResultLine::Kind ResultLine::kind(const QString &text)
{
    if (text.startsWith(QLatin1Char(':')))
        return Kind::File;
    if (text.startsWith(QLatin1Char(' ')))
        return Kind::Hit;
    return Kind::None;
}

QString ResultLine::pathOf(const QString &fileLine)
{
    QString path = fileLine.mid(kFilePrefixLength);
    for (int i = 0; i < path.size(); ++i) {
        // The second half of a pair is part of a character.
        if (!path.at(i).isLowSurrogate() || (i > 0 && path.at(i - 1).isHighSurrogate()))
            continue;
        for (const Break &lineBreak : kBreaks) {
            if (path.at(i).unicode() == lineBreak.standIn)
                path[i] = lineBreak.code;
        }
    }
    return path;
}

ResultLine::Place ResultLine::placeOf(const QString &resultLine)
{
    if (kind(resultLine) != Kind::Hit)
        return {};
    const QLatin1Char separator(':');
    const int first = resultLine.indexOf(separator);
    if (first < 0)
        return {resultLine.toInt(), 0};
    const int second = resultLine.indexOf(separator, first + 1);
    const int length = second < 0 ? -1 : second - first - 1;
    return {resultLine.leftRef(first).toInt(), resultLine.midRef(first + 1, length).toInt()};
}

bool ResultLine::endsUpwardSearch(QChar first, QChar second)
{
    const QLatin1Char colon(':');
    return first.isNull() || first.isLetter() || (first == colon && second == colon);
}
