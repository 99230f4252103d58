#include "view/StringLiterals.h"

#include <QStringList>
#include <QTest>

class StringLiteralsTest : public QObject {
    Q_OBJECT

private slots:
    void literalsAreFoundFromLeftToRight_data();
    void literalsAreFoundFromLeftToRight();
    void singleQuotesMayBeNoLiterals();
    void literalsStayWithinTheirRange();
    void aLiteralWithoutItsEndIsNotClosed();
    void aMatchInsideALiteralIsSkipped_data();
    void aMatchInsideALiteralIsSkipped();
    void aLoneQuoteInACommentHidesNothing();
    void theWholeMatchIsAnswered();
    void aMatchAtTheEndIsNone();
    void onlyWhatIsBeforeAMatchIsLookedAt();
    void aLongLineIsWalkedOnce();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

int indexOutside(const char *pattern, const QString &line,
                 StringLiterals::Context context = StringLiterals::Context::Code)
{
    const QRegExp expression(text(pattern));
    const auto find = [&](int from) {
        const int start = expression.indexIn(line, from);
        return TextSpan{start, start + expression.matchedLength()};
    };
    return StringLiterals().findOutside(find, line, 0, line.size(), context).start;
}

QStringList textsOf(const QString &line, const std::vector<StringLiteral> &literals)
{
    QStringList result;
    for (const StringLiteral &literal : literals)
        result.append(line.mid(literal.span.start, literal.span.end - literal.span.start));
    return result;
}

QStringList literalsOf(const QString &line)
{
    return textsOf(line, StringLiterals().find(line, {0, line.size()}));
}

} // namespace

void StringLiteralsTest::literalsAreFoundFromLeftToRight_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("literals");
    const auto row = [](const char *name, const char *line, const QStringList &literals) {
        QTest::newRow(name) << text(line) << literals;
    };

    row("none", "a b", {});
    row("empty line", "", {});
    row("one", "a \"b\" c", {text("\"b\"")});
    row("two, not what is between them", "\"a\" b \"c\"", {text("\"a\""), text("\"c\"")});
    row("empty literal", "a \"\" b", {text("\"\"")});
    row("both kinds", "\"a\" 'b'", {text("\"a\""), text("'b'")});
    row("apostrophe inside", "\"it's\", x", {text("\"it's\"")});
    row("double quote inside", "'say \"a', \"b\"", {text("'say \"a'"), text("\"b\"")});
    row("without end", "a \"b c", {text("\"b c")});
    row("single quotes behind a quote without end", "a \"b 'c' d", {text("\"b 'c' d")});
    row("quote alone at the end", "a \"", {text("\"")});
    row("apostrophe, then a literal", "don't \"a\" b", {text("'t \"a\" b"), text("\"a\"")});
    row("no escapes", "\"a\\\" b", {text("\"a\\\"")});
}

void StringLiteralsTest::literalsAreFoundFromLeftToRight()
{
    QFETCH(QString, line);
    QFETCH(QStringList, literals);
    QCOMPARE(literalsOf(line), literals);
}

void StringLiteralsTest::singleQuotesMayBeNoLiterals()
{
    StringLiterals literals;
    QVERIFY(literals.singleQuotes());
    literals.setSingleQuotes(false);
    const QString line = text("it's 'a' \"b\"");
    QCOMPARE(textsOf(line, literals.find(line, {0, line.size()})), QStringList{text("\"b\"")});
}

void StringLiteralsTest::literalsStayWithinTheirRange()
{
    const QString line = text("\"a\" \"b\" \"c\"");
    QCOMPARE(textsOf(line, StringLiterals().find(line, {3, 9})),
             (QStringList{text("\"b\""), text("\"")}));
    QCOMPARE(textsOf(line, StringLiterals().find(line, {4, 4})), QStringList());
}

void StringLiteralsTest::aLiteralWithoutItsEndIsNotClosed()
{
    const QString line = text("\"a\" 'b");
    const std::vector<StringLiteral> literals = StringLiterals().find(line, {0, line.size()});
    QCOMPARE(literals.size(), std::size_t(2));
    QVERIFY(literals[0].closed);
    QCOMPARE(literals[0].quote, QChar(QLatin1Char('"')));
    QVERIFY(!literals[1].closed);
    QCOMPARE(literals[1].quote, QChar(QLatin1Char('\'')));
}

void StringLiteralsTest::aMatchInsideALiteralIsSkipped_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("position");
    const auto row = [](const char *name, const char *line, int position) {
        QTest::newRow(name) << text(line) << position;
    };

    row("before", "# \"a\"", 0);
    row("inside only", "\"#\"", -1);
    row("inside, then behind", "\"#\" #", 4);
    row("inside two", "\"#\" '#' #", 8);
    row("behind the closing quote", "\"#\"#", 3);
    row("behind a quote without end", "don't #", 6);
    row("behind a double quote without end", "\"abc #", -1);
    row("behind a literal and a double quote without end", "\"#\" \"#", -1);
    row("behind a double quote without end, in single quotes", "\" '#' #", -1);
    row("behind both quotes without end", "don't \"#", -1);
    row("before a double quote without end", "# \"#", 0);
    row("inside a literal behind an apostrophe", "don't \"#\" #", 10);
    row("inside the other kind", "'\"#' #", 5);
    row("none", "a", -1);
}

void StringLiteralsTest::aMatchInsideALiteralIsSkipped()
{
    QFETCH(QString, line);
    QFETCH(int, position);
    QCOMPARE(indexOutside("#", line), position);
}

void StringLiteralsTest::aLoneQuoteInACommentHidesNothing()
{
    const auto indexOf = [](const char *line, StringLiterals::Context context) {
        return indexOutside("#", text(line), context);
    };
    QCOMPARE(indexOf("don't # 'a'", StringLiterals::Context::Comment), 6);
    QCOMPARE(indexOf("don't # 'a'", StringLiterals::Context::Code), -1);
    QCOMPARE(indexOf("say '#' \"#\" #", StringLiterals::Context::Comment), 12);
    QCOMPARE(indexOf("'#' #", StringLiterals::Context::Comment), 4);
    QCOMPARE(indexOf("19\" # x", StringLiterals::Context::Comment), 4);
    QCOMPARE(indexOf("19\" # x", StringLiterals::Context::Code), -1);
}

void StringLiteralsTest::theWholeMatchIsAnswered()
{
    const QString line = text("\"#\" ### \"#####\"");
    const auto find = [&line](int from) {
        const int start = line.indexOf(text("##"), from);
        return TextSpan{start, start + 2};
    };
    QCOMPARE(StringLiterals().findOutside(find, line, 0, line.size()), (TextSpan{4, 6}));
}

void StringLiteralsTest::aMatchAtTheEndIsNone()
{
    const QString line = text("a#'#'#");
    const auto find = [&line](int from) {
        const int start = line.indexOf(QLatin1Char('#'), from);
        return TextSpan{start, start + 1};
    };
    const auto startBefore = [&](int from, int end) {
        return StringLiterals().findOutside(find, line, from, end).start;
    };
    QCOMPARE(startBefore(0, 1), -1);
    QCOMPARE(startBefore(0, 2), 1);
    QCOMPARE(startBefore(2, 5), -1);
    QCOMPARE(startBefore(2, 6), 5);
}

void StringLiteralsTest::onlyWhatIsBeforeAMatchIsLookedAt()
{
    // Takes minutes when every call goes on to the quote at the end.
    const QString line = text("#").repeated(500000) + text("\"");
    const auto find = [](int from) {
        return TextSpan{from, from + 1};
    };
    for (int from = 0; from < line.size() - 1; ++from)
        QCOMPARE(StringLiterals().findOutside(find, line, from, line.size()).start, from);
}

void StringLiteralsTest::aLongLineIsWalkedOnce()
{
    // Takes minutes when every literal looks for a quote through the whole line.
    const QString line = text("\"a\" ").repeated(500000);
    QCOMPARE(StringLiterals().find(line, {0, line.size()}).size(), std::size_t(500000));
    QCOMPARE(indexOutside("#", line + text("#")), line.size());
}

QTEST_GUILESS_MAIN(StringLiteralsTest)
#include "StringLiteralsTest.moc"
