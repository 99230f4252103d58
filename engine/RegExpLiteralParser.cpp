#include "engine/RegExpLiteralParser.h"

namespace {

// Deeper nesting is nobody's pattern, and the recursion must end.
constexpr int kMaxDepth = 100;
// A class of a few characters is as good as an alternation of them.
constexpr int kMaxClassMembers = 4;

const QStringList kEmptyText = {QString()};

bool isLetterOrDigit(ushort unit)
{
    return (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'z')
        || (unit >= 'A' && unit <= 'Z');
}

int digitValue(ushort unit)
{
    if (unit >= '0' && unit <= '9')
        return unit - '0';
    if (unit >= 'a' && unit <= 'f')
        return unit - 'a' + 10;
    if (unit >= 'A' && unit <= 'F')
        return unit - 'A' + 10;
    return 16;
}

/// The control character that a letter stands for after a backslash, or -1.
int controlCharacter(ushort letter)
{
    switch (letter) {
    case 'a':
        return '\a';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'v':
        return '\v';
    default:
        return -1;
    }
}

} // namespace

RegExpLiteralParser::RegExpLiteralParser(const QString &pattern, Qt::CaseSensitivity sensitivity)
    : m_pattern(pattern), m_sensitivity(sensitivity)
{
}

MatchTexts RegExpLiteralParser::parse()
{
    MatchTexts texts = expression();
    if (m_failed || !atEnd()) {
        m_plain = false;
        return MatchTexts::anything();
    }
    return texts;
}

bool RegExpLiteralParser::startsWith(const char *token) const
{
    return QStringView(m_pattern).mid(m_at).startsWith(QLatin1String(token));
}

ushort RegExpLiteralParser::take()
{
    if (atEnd()) {
        m_failed = true;
        return 0;
    }
    return m_pattern.at(m_at++).unicode();
}

ushort RegExpLiteralParser::takeDigits(int maxCount, int base)
{
    int value = 0;
    for (int i = 0; i < maxCount && digitValue(current()) < base; ++i)
        value = value * base + digitValue(take());
    return static_cast<ushort>(value);
}

MatchTexts RegExpLiteralParser::giveUp()
{
    m_failed = true;
    return MatchTexts::anything();
}

MatchTexts RegExpLiteralParser::notPlain(const MatchTexts &texts)
{
    m_plain = false;
    return texts;
}

MatchTexts RegExpLiteralParser::expression()
{
    QVector<MatchTexts> alternatives = {term()};
    while (!m_failed && current() == '|') {
        m_plain = false;
        take();
        alternatives.append(term());
    }
    return MatchTexts::anyOf(alternatives);
}

MatchTexts RegExpLiteralParser::term()
{
    MatchTexts texts = MatchTexts::exactly(kEmptyText);
    while (!m_failed && !atEnd() && current() != '|' && current() != ')')
        texts = texts.followedBy(factor());
    return texts;
}

MatchTexts RegExpLiteralParser::factor()
{
    MatchTexts texts = atom();
    switch (current()) {
    case '*':
        take();
        return notPlain(texts.repeated(0, -1));
    case '+':
        take();
        return notPlain(texts.repeated(1, -1));
    case '?':
        take();
        return notPlain(texts.repeated(0, 1));
    case '{':
        take();
        return notPlain(quantified(texts));
    default:
        return texts;
    }
}

int RegExpLiteralParser::takeNumber(int fallback)
{
    constexpr int Enough = 10000;
    if (current() < '0' || current() > '9')
        return fallback;
    int value = 0;
    while (current() >= '0' && current() <= '9')
        value = qMin(value * 10 + take() - '0', Enough);
    return value;
}

// "{n}", "{n,}", "{n,m}" and, with 0 for what is missing, "{}" and "{,m}".
MatchTexts RegExpLiteralParser::quantified(const MatchTexts &texts)
{
    const int minimum = takeNumber(0);
    int maximum = minimum;
    if (current() == ',') {
        take();
        maximum = takeNumber(-1);
    }
    if (take() != '}' || (maximum >= 0 && maximum < minimum))
        return giveUp();
    return texts.repeated(minimum, maximum);
}

MatchTexts RegExpLiteralParser::atom()
{
    switch (const ushort unit = take()) {
    case '^':
    case '$':
        return notPlain(MatchTexts::exactly(kEmptyText));
    case '.':
        return notPlain(MatchTexts::anything());
    case '(':
        return notPlain(group());
    case '[':
        return notPlain(characterClass());
    case '\\':
        return escape();
    case '*':
    case '+':
    case '?':
    case '{':
    case '}':
    case ']':
        return giveUp();
    default:
        return character(unit);
    }
}

MatchTexts RegExpLiteralParser::group()
{
    const bool lookahead = startsWith("?=") || startsWith("?!");
    if (startsWith("?")) {
        if (!lookahead && !startsWith("?:"))
            return giveUp();
        m_at += 2;
    }
    if (++m_depth > kMaxDepth)
        return giveUp();
    MatchTexts texts = expression();
    --m_depth;
    if (take() != ')')
        return giveUp();
    // What a lookahead sees is not part of the text before or after it.
    return lookahead ? MatchTexts::exactly(kEmptyText) : texts;
}

// The first character after "[" or "[^" is a member even if it is "]". Ignoring
// case, a class compares in another way than a character does.
MatchTexts RegExpLiteralParser::characterClass()
{
    bool known = m_sensitivity == Qt::CaseSensitive;
    if (current() == '^') {
        known = false;
        take();
    }
    QStringList members;
    do {
        ushort unit = take();
        if (unit == '-')
            known = false;
        if (unit == '\\') {
            unit = take();
            known = known && !isLetterOrDigit(unit);
        }
        members.append(QString(QChar(unit)));
    } while (!m_failed && current() != ']');
    take();
    members.removeDuplicates();
    if (!known || m_failed || members.size() > kMaxClassMembers)
        return MatchTexts::anything();
    return MatchTexts::exactly(members);
}

MatchTexts RegExpLiteralParser::escape()
{
    const ushort unit = take();
    if (const int control = controlCharacter(unit); control >= 0)
        return character(static_cast<ushort>(control));
    switch (unit) {
    case '0':
        return character(takeDigits(3, 8));
    case 'x':
        return character(takeDigits(4, 16));
    case 'b':
    case 'B':
        return notPlain(MatchTexts::exactly(kEmptyText));
    case 'd':
    case 'D':
    case 's':
    case 'S':
    case 'w':
    case 'W':
        return notPlain(MatchTexts::anything());
    default:
        break;
    }
    if (unit >= '1' && unit <= '9') { // a reference to what a group matched
        takeNumber(0);
        return notPlain(MatchTexts::anything());
    }
    return character(unit);
}

MatchTexts RegExpLiteralParser::character(ushort unit)
{
    m_plainText.append(QChar(unit));
    return MatchTexts::exactly({QString(QChar(unit))});
}
