#include "view/ResultLine.h"

namespace {

constexpr int kFilePrefixLength = 2;

} // namespace

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
    return fileLine.mid(kFilePrefixLength);
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
