#include "engine/RegExpEscape.h"
#include "tests/support/TestLength.h"

#include <QRandomGenerator>
#include <QRegExp>
#include <QTest>

class RegExpEscapeTest : public QObject {
    Q_OBJECT

private slots:
    void eachMetaCharacterGetsOneBackslash_data();
    void eachMetaCharacterGetsOneBackslash();
    void everyOccurrenceIsEscaped();
    void allThirteenTogetherAreEscapedOnce();
    void aBackslashStaysAsItIs();
    void noOtherCharacterIsTouched();
    void anEmptyTextStaysEmpty();
    void anEscapedTextMatchesItselfAsAPattern();
};

static QString escaped(QString text)
{
    escapeRegExpMetaChars(text);
    return text;
}

void RegExpEscapeTest::eachMetaCharacterGetsOneBackslash_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("opening parenthesis") << "("
                                         << "\\(";
    QTest::newRow("closing parenthesis") << ")"
                                         << "\\)";
    QTest::newRow("opening bracket") << "["
                                     << "\\[";
    QTest::newRow("closing bracket") << "]"
                                     << "\\]";
    QTest::newRow("opening brace") << "{"
                                   << "\\{";
    QTest::newRow("closing brace") << "}"
                                   << "\\}";
    QTest::newRow("caret") << "^"
                           << "\\^";
    QTest::newRow("dot") << "."
                         << "\\.";
    QTest::newRow("dollar") << "$"
                            << "\\$";
    QTest::newRow("star") << "*"
                          << "\\*";
    QTest::newRow("plus") << "+"
                          << "\\+";
    QTest::newRow("question mark") << "?"
                                   << "\\?";
    QTest::newRow("bar") << "|"
                         << "\\|";
}

void RegExpEscapeTest::eachMetaCharacterGetsOneBackslash()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(escaped(text), expected);
    QCOMPARE(escaped(QLatin1Char('a') + text + QLatin1Char('b')),
             QLatin1Char('a') + expected + QLatin1Char('b'));
}

void RegExpEscapeTest::everyOccurrenceIsEscaped()
{
    QCOMPARE(escaped(QStringLiteral("a.b..c")), QStringLiteral("a\\.b\\.\\.c"));
    QCOMPARE(escaped(QStringLiteral("((x))")), QStringLiteral("\\(\\(x\\)\\)"));
}

void RegExpEscapeTest::allThirteenTogetherAreEscapedOnce()
{
    QCOMPARE(escaped(QStringLiteral("()[]{}^.$*+?|")),
             QStringLiteral("\\(\\)\\[\\]\\{\\}\\^\\.\\$\\*\\+\\?\\|"));
    QCOMPARE(escaped(QStringLiteral("|?+*$.^}{][)(")),
             QStringLiteral("\\|\\?\\+\\*\\$\\.\\^\\}\\{\\]\\[\\)\\("));
}

void RegExpEscapeTest::aBackslashStaysAsItIs()
{
    QCOMPARE(escaped(QStringLiteral("\\")), QStringLiteral("\\"));
    QCOMPARE(escaped(QStringLiteral("\\d\\\\")), QStringLiteral("\\d\\\\"));
    QCOMPARE(escaped(QStringLiteral("a\\.b")), QStringLiteral("a\\\\.b"));
}

void RegExpEscapeTest::noOtherCharacterIsTouched()
{
    QString others;
    const QString metaChars = QStringLiteral("()[]{}^.$*+?|");
    for (ushort unit = 0; unit < 128; ++unit) {
        if (!metaChars.contains(QChar(unit)))
            others += QChar(unit);
    }
    others += QStringLiteral("（）［］｛｝＾．＄＊＋？｜あ𠮷");
    QCOMPARE(others.size(), 128 - 13 + 13 + 3);
    QCOMPARE(escaped(others), others);
}

void RegExpEscapeTest::anEmptyTextStaysEmpty()
{
    QCOMPARE(escaped(QString()), QString());
}

void RegExpEscapeTest::anEscapedTextMatchesItselfAsAPattern()
{
    const QString alphabet = QStringLiteral("()[]{}^.$*+?|aあ-,");
    QRandomGenerator random(7);
    for (int i = 0; i < TestLength::rounds(2000, 100000); ++i) {
        QString text;
        for (int length = 1 + random.bounded(8); length > 0; --length)
            text += alphabet.at(random.bounded(alphabet.size()));
        const QRegExp pattern(escaped(text));
        QVERIFY2(pattern.exactMatch(text), qPrintable(text));
        QVERIFY2(!pattern.exactMatch(text + QLatin1Char('x')), qPrintable(text));
    }
}

QTEST_GUILESS_MAIN(RegExpEscapeTest)
#include "RegExpEscapeTest.moc"
