#include "view/WordPicker.h"

#include <QtTest>

class WordPickerTest : public QObject {
    Q_OBJECT

private slots:
    void everySeparatorEndsAWord_data();
    void everySeparatorEndsAWord();
    void otherSignsDoNotEndAWord_data();
    void otherSignsDoNotEndAWord();
    void eachPressPicksOneWordMore();
    void theEndOfTheLineEndsThePick();
    void aWordEndsWhereTheClassChanges_data();
    void aWordEndsWhereTheClassChanges();
    void onlyTheLastWordEndsAtAChangeOfClass();
    void theClassOfTheLastCharacterSeenIsKept();
    void aSeparatorAtTheCursorIsPicked();
    void nothingIsPickedAtTheEnd();
    void aNullCharacterEndsThePick();
    void whatLooksLikeOneCharacterIsTakenWhole();
};

void WordPickerTest::everySeparatorEndsAWord_data()
{
    QTest::addColumn<QChar>("separator");
    const QString separators =
        QStringLiteral(" \"._;:%&'!^+-/\\=*|[]()”、。＃＄％＆（）「」／\u3000\t\u0001\u001F");
    for (const QChar separator : separators)
        QTest::addRow("U+%04X", separator.unicode()) << separator;
}

void WordPickerTest::everySeparatorEndsAWord()
{
    QFETCH(QChar, separator);
    QVERIFY(WordPicker::isSeparator(separator));
    // Letters of the separator's own class, so that no change of class ends the word.
    const bool ascii = separator >= QLatin1Char(' ') && separator <= QLatin1Char('z');
    const QString word = ascii ? QStringLiteral("ab") : QStringLiteral("検索");
    const QString line = word + separator + word + separator + word;
    WordPicker picker;
    QCOMPARE(picker.pick(line, 0, 1), word);
    QCOMPARE(picker.pick(line, 0, 2), QString(word + separator + word));
}

void WordPickerTest::otherSignsDoNotEndAWord_data()
{
    QTest::addColumn<QChar>("sign");
    for (const QChar sign : QStringLiteral("#$,<>?@`a0Z"))
        QTest::addRow("U+%04X", sign.unicode()) << sign;
}

void WordPickerTest::otherSignsDoNotEndAWord()
{
    QFETCH(QChar, sign);
    QVERIFY(!WordPicker::isSeparator(sign));
    WordPicker picker;
    const QString line = QLatin1String("ab") + sign + QLatin1String("cd");
    QCOMPARE(picker.pick(line, 0, 1), line);
}

void WordPickerTest::eachPressPicksOneWordMore()
{
    WordPicker picker;
    const QString line = QStringLiteral("int foo_bar(baz);");
    QCOMPARE(picker.pick(line, 4, 1), QStringLiteral("foo"));
    QCOMPARE(picker.pick(line, 4, 2), QStringLiteral("foo_bar"));
    QCOMPARE(picker.pick(line, 4, 3), QStringLiteral("foo_bar(baz"));
}

void WordPickerTest::theEndOfTheLineEndsThePick()
{
    WordPicker picker;
    const QString line = QStringLiteral("foo bar");
    QCOMPARE(picker.pick(line, 4, 1), QStringLiteral("bar"));
    QCOMPARE(picker.pick(line, 0, 5), line);
}

void WordPickerTest::aWordEndsWhereTheClassChanges_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("word");
    QTest::newRow("Japanese, then ASCII") << QStringLiteral("検索abc") << QStringLiteral("検索");
    QTest::newRow("ASCII, then Japanese") << QStringLiteral("abc検索") << QStringLiteral("abc");
    QTest::newRow("z is the last of its class") << QStringLiteral("xyz{") << QStringLiteral("xyz");
    QTest::newRow("beyond z is the other class")
        << QStringLiteral("{}~検") << QStringLiteral("{}~検");
    QTest::newRow("half-width katakana") << QStringLiteral("ｱｲabc") << QStringLiteral("ｱｲ");
}

void WordPickerTest::aWordEndsWhereTheClassChanges()
{
    QFETCH(QString, line);
    WordPicker picker;
    QTEST(picker.pick(line, 0, 1), "word");
}

void WordPickerTest::onlyTheLastWordEndsAtAChangeOfClass()
{
    WordPicker picker;
    const QString line = QStringLiteral("検索abc語 def");
    QCOMPARE(picker.pick(line, 0, 1), QStringLiteral("検索"));
    // The blank leaves one word, and its class is not that of the run.
    QCOMPARE(picker.pick(line, 0, 2), QStringLiteral("検索abc語"));
}

void WordPickerTest::theClassOfTheLastCharacterSeenIsKept()
{
    WordPicker picker;
    const QString line = QStringLiteral("検索 def 語");
    QCOMPARE(picker.pick(line, 0, 1), QStringLiteral("検索"));
    QCOMPARE(picker.pick(line, 0, 2), QStringLiteral("検索"));
    // The second pick ended at a blank, so the run is ASCII now.
    QCOMPARE(picker.pick(line, 0, 2), QStringLiteral("検索 def"));
}

void WordPickerTest::aSeparatorAtTheCursorIsPicked()
{
    WordPicker picker;
    QCOMPARE(picker.pick(QStringLiteral("(foo)"), 0, 1), QStringLiteral("(foo"));
    QCOMPARE(picker.pick(QStringLiteral("((foo)"), 0, 1), QStringLiteral("("));
}

void WordPickerTest::nothingIsPickedAtTheEnd()
{
    WordPicker picker;
    QCOMPARE(picker.pick(QStringLiteral("foo"), 3, 1), QString());
    QCOMPARE(picker.pick(QString(), 0, 3), QString());
}

void WordPickerTest::aNullCharacterEndsThePick()
{
    WordPicker picker;
    const QString line = QLatin1String("ab") + QChar(QChar::Null) + QLatin1String("cd ef");
    QCOMPARE(picker.pick(line, 0, 1), QStringLiteral("ab"));
    QCOMPARE(picker.pick(line, 0, 3), QStringLiteral("ab"));
}

void WordPickerTest::whatLooksLikeOneCharacterIsTakenWhole()
{
    WordPicker picker;
    QCOMPARE(picker.pick(QStringLiteral("cafe\u0301 x"), 0, 1), QStringLiteral("cafe\u0301"));
    QCOMPARE(picker.pick(QStringLiteral("\U00020B9Fる abc"), 0, 1), QStringLiteral("\U00020B9Fる"));
}

QTEST_GUILESS_MAIN(WordPickerTest)

#include "WordPickerTest.moc"
