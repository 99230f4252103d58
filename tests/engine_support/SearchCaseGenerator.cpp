#include "tests/engine_support/SearchCaseGenerator.h"

#include "engine/CodeSet.h"
#include "engine/FileSearcher.h"
#include "engine/SearchPlan.h"
#include "tests/engine_support/CutContent.h"

#include <QRegExp>
#include <QStringList>
#include <QTextCodec>

namespace {

QStringList characters(const QString &text)
{
    QStringList parts;
    for (const uint codePoint : text.toUcs4())
        parts.append(QString::fromUcs4(&codePoint, 1));
    return parts;
}

/// Sets of characters that texts and keywords of one case are made of.
const QVector<QStringList> &alphabets()
{
    static const QVector<QStringList> sets{
        characters(QStringLiteral("ab ")),
        characters(QStringLiteral("abAB_ .\t")),
        characters(QStringLiteral("kKsS\u212A\u017Fx ")),
        characters(QStringLiteral("あいう漢字ア")),
        characters(QStringLiteral("表ソ能aA\\|あ")),
        characters(QStringLiteral("ｱｲｳﾞaア")),
        characters(QStringLiteral("ＡａＢｂＡaA")),
        characters(QStringLiteral("①≒∪纊髙～―＂aあ")),
        characters(QStringLiteral("αΑβΒяЯéÉa")),
        characters(QStringLiteral("ßẞİıiI")),
        characters(QStringLiteral("𠮷𝒳a叱\U00010400\U00010428")),
        characters(QStringLiteral("a?\uFFFD\uFEFF\u3000 あ")),
        characters(QStringLiteral("ab(){}[]*+.^$|")),
    };
    return sets;
}

QStringList search(const SearchCase &made, bool visitEveryLine, qint64 pieceSize)
{
    EngineOptions options;
    options.visitEveryLine = visitEveryLine;
    const SearchPlan plan(made.condition, options);
    FileSearcher searcher(plan);
    CutContent content(made.content, pieceSize);
    return searcher.search(content, made.codeSet);
}

} // namespace

QStringList SearchCase::plainHits() const
{
    return search(*this, true, content.size());
}

QStringList SearchCase::hits(qint64 pieceSize) const
{
    return search(*this, false, pieceSize);
}

QString SearchCase::describe() const
{
    return QStringLiteral("keyword1 \"%1\" keyword2 \"%2\" keyword3 \"%3\" plusline %4 flg 0x%5 "
                          "code set %6 bytes %7")
        .arg(condition.keyword1, condition.keyword2, condition.keyword3)
        .arg(condition.plusline)
        .arg(condition.flg, 0, 16)
        .arg(codeSet)
        .arg(QString::fromLatin1(content.toHex(' ')));
}

SearchCaseGenerator::SearchCaseGenerator(quint32 seed) : m_random(seed)
{
}

int SearchCaseGenerator::below(int bound)
{
    return static_cast<int>(m_random() % static_cast<quint32>(bound));
}

bool SearchCaseGenerator::oneIn(int chances)
{
    return below(chances) == 0;
}

const QString &SearchCaseGenerator::pick(const QStringList &texts)
{
    return texts.at(below(texts.size()));
}

QString SearchCaseGenerator::word()
{
    QString text;
    for (int length = 1 + below(4); length > 0; --length)
        text += pick(m_alphabet);
    return text;
}

QString SearchCaseGenerator::patternAtom(int depth)
{
    static const QStringList classes{
        QStringLiteral("."),     QStringLiteral("\\w"),    QStringLiteral("\\W"),
        QStringLiteral("\\d"),   QStringLiteral("\\s"),    QStringLiteral("\\S"),
        QStringLiteral("\\b"),   QStringLiteral("\\B"),    QStringLiteral("^"),
        QStringLiteral("$"),     QStringLiteral("\\."),    QStringLiteral("\\x0061"),
        QStringLiteral("\\x61"), QStringLiteral("\\n"),    QStringLiteral("\\t"),
        QStringLiteral("[a-c]"), QStringLiteral("[^a]"),   QStringLiteral("[あ-ん]"),
        QStringLiteral("\\1"),   QStringLiteral("\\0141"), QStringLiteral("\\\\")};
    switch (below(depth > 0 ? 8 : 5)) {
    case 0:
        return pick(classes);
    case 5:
        return QLatin1Char('(') + pattern(depth - 1) + QLatin1Char(')');
    case 6:
        return QStringLiteral("(?:") + pattern(depth - 1) + QLatin1Char(')');
    case 7:
        return (oneIn(2) ? QStringLiteral("(?=") : QStringLiteral("(?!")) + pattern(depth - 1)
            + QLatin1Char(')');
    default:
        return pick(m_alphabet);
    }
}

QString SearchCaseGenerator::pattern(int depth)
{
    static const QStringList quantifiers{QStringLiteral("*"),     QStringLiteral("+"),
                                         QStringLiteral("?"),     QStringLiteral("{2}"),
                                         QStringLiteral("{0,1}"), QStringLiteral("{,2}"),
                                         QStringLiteral("{1,}"),  QStringLiteral("{0}")};
    QString text;
    for (int atoms = 1 + below(5); atoms > 0; --atoms) {
        text += patternAtom(depth);
        if (oneIn(6))
            text += pick(quantifiers);
        if (oneIn(10))
            text += QLatin1Char('|');
    }
    return text;
}

QString SearchCaseGenerator::keyword(bool isPattern)
{
    return isPattern && !oneIn(3) ? pattern(2) : word();
}

QString SearchCaseGenerator::line()
{
    QString text;
    for (int words = below(6); words > 0; --words)
        text += word();
    return text;
}

QString SearchCaseGenerator::text()
{
    static const QStringList lineEnds{QStringLiteral("\n"), QStringLiteral("\r\n"),
                                      QStringLiteral("\r")};
    const QString &usual = pick(lineEnds);
    QString whole;
    for (int lines = below(12); lines > 0; --lines) {
        QString part = line();
        if (oneIn(15))
            part.insert(below(part.size() + 1), QLatin1Char('\r'));
        whole += part + (oneIn(10) ? pick(lineEnds) : usual);
    }
    if (oneIn(2))
        whole += line();
    if (oneIn(40)) // over the decoder's pieces of 16,384 bytes
        whole.prepend(
            QString(16384 - 20 + below(40), QLatin1Char(oneIn(2) && !m_isList ? 'x' : '\n')));
    return whole;
}

QByteArray SearchCaseGenerator::encode(const QString &text, int codeSet)
{
    QTextCodec *const codec = CodeSet::codec(codeSet);
    QTextCodec::ConverterState state(oneIn(4) ? QTextCodec::DefaultConversion
                                              : QTextCodec::IgnoreHeader);
    return codec->fromUnicode(text.constData(), text.size(), &state);
}

void SearchCaseGenerator::damage(QByteArray *bytes)
{
    static const QByteArray escapes[] = {"\x1B$B", "\x1B(B", "\x1B$@", "\x1B(J", "\x1B(I"};
    for (int places = 1 + below(3); places > 0 && !bytes->isEmpty(); --places) {
        const int at = below(bytes->size());
        switch (below(5)) {
        case 0:
            (*bytes)[at] = static_cast<char>(below(256));
            break;
        case 1:
            bytes->remove(at, 1 + below(2));
            break;
        case 2:
            bytes->insert(at, static_cast<char>(0x80 + below(128)));
            break;
        case 3:
            bytes->insert(at, escapes[below(5)]);
            break;
        default:
            bytes->truncate(at);
        }
    }
}

/// Mostly of nothing but characters, and seldom of one only, which keeps a list from being
/// one.
QString SearchCaseGenerator::listedWord()
{
    static const QStringList parts{QStringLiteral("[ab]"), QStringLiteral("\\w"),
                                   QStringLiteral("x?"),   QStringLiteral("\\b"),
                                   QStringLiteral("$"),    QStringLiteral("(?=a)"),
                                   QStringLiteral("a{2}"), QStringLiteral(".*")};
    if (oneIn(300))
        return oneIn(2) ? QString() : pick(m_alphabet);
    QString plain = pick(m_alphabet) + word();
    if (oneIn(2))
        plain += word() + word();
    if (oneIn(20)) // so that texts have it, and words that are made of it
        m_alphabet.append(plain);
    QString text = QRegExp::escape(plain);
    if (oneIn(60))
        text.insert(oneIn(2) ? 0 : text.size(), pick(parts));
    return text;
}

QString SearchCaseGenerator::list()
{
    QStringList words;
    for (int count = 10 + below(90); count > 0; --count)
        words.append(listedWord());
    const QString all = words.join(QLatin1Char('|'));
    const QString group = QLatin1Char('(') + all + QLatin1Char(')');
    const QString boundary = QStringLiteral("\\b");
    switch (below(9)) {
    case 0:
        return boundary + group + boundary;
    case 1:
        return QRegExp::escape(word()) + group;
    case 2:
        return group + QRegExp::escape(word());
    case 3:
        return QLatin1Char('^') + group;
    case 4:
        return group + patternAtom(1);
    case 5:
        return pattern(1) + group + QLatin1Char('$');
    default:
        return all;
    }
}

SearchCase SearchCaseGenerator::next()
{
    m_alphabet = alphabets().at(below(alphabets().size()));
    const int flags = (oneIn(2) ? SearchCondition::RegExpFlag : 0)
        | (oneIn(4) ? SearchCondition::WordFlag : 0)
        | (oneIn(2) ? SearchCondition::IgnoreCaseFlag : 0);
    return withKeyword1(keyword((flags & SearchCondition::RegExpFlag) != 0), flags);
}

SearchCase SearchCaseGenerator::nextWithList()
{
    m_alphabet = alphabets().at(below(alphabets().size()));
    const int flags = SearchCondition::RegExpFlag | (oneIn(8) ? SearchCondition::WordFlag : 0)
        | (oneIn(2) ? SearchCondition::IgnoreCaseFlag : 0);
    m_isList = true; // QRegExp takes long for a list on a long line
    const SearchCase made = withKeyword1(list(), flags);
    m_isList = false;
    return made;
}

SearchCase SearchCaseGenerator::withKeyword1(const QString &keyword1, int flags)
{
    SearchCase made;
    SearchCondition &condition = made.condition;
    condition.flg = flags;
    condition.keyword1 = keyword1;
    if (oneIn(4))
        condition.keyword2 = keyword(condition.regExp());
    if (oneIn(4))
        condition.keyword3 = keyword(condition.regExp());
    condition.plusline = below(4);
    made.codeSet = oneIn(3) ? 4 : 1 + below(CodeSet::kCount - 1);
    made.content = encode(text(), made.codeSet);
    if (oneIn(3))
        damage(&made.content);
    if (oneIn(20))
        made.codeSet = below(CodeSet::kCount);
    return made;
}
