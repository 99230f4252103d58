#include "cli/HitPainter.h"

#include "cli/Utf8Text.h"
#include "engine/LineMatcher.h"
#include "engine/NativePath.h"
#include "engine/PatternLimits.h"

namespace {

const QByteArray kPath = QByteArrayLiteral("\x1b[35m");
const QByteArray kNumber = QByteArrayLiteral("\x1b[32m");
const QByteArray kMatch = QByteArrayLiteral("\x1b[1;31m");
const QByteArray kPlain = QByteArrayLiteral("\x1b[m");

QRegExp keywordExpression(SearchCondition condition)
{
    if (!condition.regExp()) {
        condition.keyword1 = QRegExp::escape(condition.keyword1);
        condition.flg |= SearchCondition::RegExpFlag;
        return QRegExp(LineMatcher::effectiveKeyword1(condition), condition.caseSensitivity());
    }
    return PatternLimits::compiled(LineMatcher::effectiveKeyword1(condition),
                                   condition.caseSensitivity());
}

} // namespace

HitPainter::HitPainter(const SearchCondition &condition)
    : m_on(true), m_finder(keywordExpression(condition))
{
}

QByteArray HitPainter::path(const QString &path) const
{
    const QByteArray name = NativePath::toNative(path);
    return m_on ? kPath + name + kPlain : name;
}

void HitPainter::appendNumber(QByteArray *line, QStringView number) const
{
    if (m_on)
        line->append(kNumber);
    Utf8Text::append(line, number);
    if (m_on)
        line->append(kPlain);
}

void HitPainter::appendText(QByteArray *line, QStringView text) const
{
    if (m_on)
        line->append(this->text(text.toString()));
    else
        Utf8Text::append(line, text);
}

QByteArray HitPainter::text(const QString &text) const
{
    if (!m_on)
        return text.toUtf8();
    // One for each thread. The pattern's own search may take minutes for what is behind
    // the last match of a long line.
    LineFinder finder = m_finder;
    QByteArray painted;
    int done = 0;
    int from = 0;
    while (from < text.size()) {
        const LineFinder::Look look = finder.lookForward(text, from);
        from = look.next;
        if (!look.match.isValid())
            continue;
        painted += text.midRef(done, look.match.start - done).toUtf8() + kMatch
            + text.midRef(look.match.start, look.match.length).toUtf8() + kPlain;
        done = look.match.start + look.match.length;
    }
    return painted + text.midRef(done).toUtf8();
}
