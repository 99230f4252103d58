#include "mainwindow/KeywordValidity.h"

#include <QEvent>
#include <QLineEdit>
#include <QtTest>

class KeywordValidityTest : public QObject {
    Q_OBJECT

private slots:
    void aPatternIsValidOrHasAnError_data();
    void aPatternIsValidOrHasAnError();
    void theErrorSaysWhatIsWrong_data();
    void theErrorSaysWhatIsWrong();
    void noReasonIsInEnglish();
    void anErrorIsNoFormatOfItsOwn();
    void theSheetSetsTheBackgroundOfALineEdit();
    void aValidPatternHasThePlainBackground();
    void anInvalidPatternIsReddenedAndSaysWhy();
    void withoutPatternsEveryKeywordIsValid();
    void aMendedPatternIsPlainAgain();
    void redIsSeenOnADarkAndOnALightBackground_data();
    void redIsSeenOnADarkAndOnALightBackground();
    void anUnchangedLookIsNotSetAgain();
};

namespace {

KeywordValidity::Look patterns(const QColor &background = QColor(0x20, 0x20, 0x20))
{
    return {background, true};
}

} // namespace

void KeywordValidityTest::aPatternIsValidOrHasAnError_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<bool>("valid");
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("text") << QStringLiteral("abc") << true;
    QTest::newRow("alternatives") << QStringLiteral("(a|b)[0-9]+") << true;
    QTest::newRow("an open bracket") << QStringLiteral("a(") << false;
    QTest::newRow("a closing bracket") << QStringLiteral("a)") << false;
    QTest::newRow("an open set") << QStringLiteral("[a-") << false;
    QTest::newRow("nothing to repeat") << QStringLiteral("*a") << false;
    QTest::newRow("deep groups") << QString(12000, QLatin1Char('('))
            + QString(12000, QLatin1Char(')'))
                                 << false;
    QTest::newRow("counts of counts") << QStringLiteral("(((a{999}){999}){999})") << false;
}

void KeywordValidityTest::aPatternIsValidOrHasAnError()
{
    QFETCH(QString, keyword);
    QFETCH(bool, valid);
    QCOMPARE(KeywordValidity::patternError(keyword).isEmpty(), valid);
}

void KeywordValidityTest::theErrorSaysWhatIsWrong_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QString>("word");
    QTest::newRow("an open bracket") << QStringLiteral("a(") << QStringLiteral("閉じていない括弧");
    QTest::newRow("an open set") << QStringLiteral("[a") << QStringLiteral("閉じていない括弧");
    QTest::newRow("an escape of nothing") << QStringLiteral("a\\") << QStringLiteral("余分な \\ ");
    QTest::newRow("nothing to repeat") << QStringLiteral("*a") << QStringLiteral("繰り返しの記号");
    QTest::newRow("lazy") << QStringLiteral("a*?") << QStringLiteral("繰り返しの記号");
    QTest::newRow("an option") << QStringLiteral("(?i)a") << QStringLiteral("(? で始められる");
    QTest::newRow("a lookbehind") << QStringLiteral("(?<=a)b") << QStringLiteral("後読み");
    QTest::newRow("a name") << QStringLiteral("(?<n>a)") << QStringLiteral("(?< で始まる");
    QTest::newRow("a closing bracket") << QStringLiteral("a)") << QStringLiteral("開き括弧");
    QTest::newRow("a closing brace") << QStringLiteral("}") << QStringLiteral("開き括弧");
    QTest::newRow("turned counts") << QStringLiteral("a{2,1}") << QStringLiteral("{ } の繰り返し");
    QTest::newRow("octal") << QStringLiteral("\\0400") << QStringLiteral("８進数が 377");
}

void KeywordValidityTest::theErrorSaysWhatIsWrong()
{
    QFETCH(QString, keyword);
    QFETCH(QString, word);
    const QString error = KeywordValidity::patternError(keyword);
    QVERIFY2(error.startsWith(QStringLiteral("正規表現として正しくありません: ")),
             qPrintable(error));
    QVERIFY2(error.contains(word), qPrintable(error));
}

/// Whatever of these the toolkit refuses, and for whatever reason.
void KeywordValidityTest::noReasonIsInEnglish()
{
    const QStringList pieces = {QStringLiteral("a"),   QStringLiteral("("),   QStringLiteral(")"),
                                QStringLiteral("["),   QStringLiteral("]"),   QStringLiteral("{"),
                                QStringLiteral("}"),   QStringLiteral("*"),   QStringLiteral("?"),
                                QStringLiteral("\\"),  QStringLiteral("|"),   QStringLiteral("^"),
                                QStringLiteral("0"),   QStringLiteral("<="),  QStringLiteral("!"),
                                QStringLiteral("2,1"), QStringLiteral("\\p"), QStringLiteral("-")};
    int refused = 0;
    for (const QString &first : pieces) {
        for (const QString &second : pieces) {
            for (const QString &third : pieces) {
                const QString error = KeywordValidity::patternError(first + second + third);
                QVERIFY2(!error.contains(QRegExp(QStringLiteral("[A-Za-z]{2}"))),
                         qPrintable(first + second + third + error));
                refused += error.isEmpty() ? 0 : 1;
            }
        }
    }
    QVERIFY(refused > 1000);
}

void KeywordValidityTest::anErrorIsNoFormatOfItsOwn()
{
    const QString error = KeywordValidity::patternError(QStringLiteral("a("));
    QCOMPARE(KeywordValidity::patternError(QStringLiteral("((a{999}){999})")),
             QStringLiteral("パターンが複雑すぎます"));
    // A keyword that looks like a placeholder is none of the message's.
    QVERIFY(KeywordValidity::patternError(QStringLiteral("%1(")).startsWith(error.left(10)));
}

void KeywordValidityTest::theSheetSetsTheBackgroundOfALineEdit()
{
    QCOMPARE(KeywordValidity::backgroundSheet(QColor(0x12, 0xAB, 0x0F)),
             QStringLiteral("QLineEdit{background-color:#12ab0f;}"));
}

void KeywordValidityTest::aValidPatternHasThePlainBackground()
{
    QLineEdit field(QStringLiteral("a.b"));
    KeywordValidity::show(&field, patterns());
    QCOMPARE(field.styleSheet(), QStringLiteral("QLineEdit{background-color:#202020;}"));
    QCOMPARE(field.toolTip(), QString());
}

void KeywordValidityTest::anInvalidPatternIsReddenedAndSaysWhy()
{
    QLineEdit field(QStringLiteral("a("));
    KeywordValidity::show(&field, patterns(QColor(10, 20, 30)));
    // Three parts of the background's own colour and two of red.
    QCOMPARE(
        field.styleSheet(),
        KeywordValidity::backgroundSheet(QColor((3 * 10 + 2 * 255) / 5, 3 * 20 / 5, 3 * 30 / 5)));
    QCOMPARE(field.toolTip(), KeywordValidity::patternError(field.text()));
}

void KeywordValidityTest::withoutPatternsEveryKeywordIsValid()
{
    QLineEdit field(QStringLiteral("a("));
    KeywordValidity::show(&field, {Qt::white, false});
    QCOMPARE(field.styleSheet(), QStringLiteral("QLineEdit{background-color:#ffffff;}"));
    QCOMPARE(field.toolTip(), QString());
}

void KeywordValidityTest::aMendedPatternIsPlainAgain()
{
    QLineEdit field(QStringLiteral("a("));
    KeywordValidity::show(&field, patterns());
    field.setText(QStringLiteral("a()"));
    KeywordValidity::show(&field, patterns());
    QCOMPARE(field.styleSheet(), QStringLiteral("QLineEdit{background-color:#202020;}"));
    QCOMPARE(field.toolTip(), QString());
}

void KeywordValidityTest::redIsSeenOnADarkAndOnALightBackground_data()
{
    QTest::addColumn<QColor>("background");
    QTest::newRow("black") << QColor(Qt::black);
    QTest::newRow("white") << QColor(Qt::white);
}

void KeywordValidityTest::redIsSeenOnADarkAndOnALightBackground()
{
    QFETCH(QColor, background);
    QLineEdit field(QStringLiteral("("));
    KeywordValidity::show(&field, patterns(background));
    const QString sheet = field.styleSheet();
    const QColor shown(sheet.mid(sheet.indexOf(QLatin1Char('#')), 7));
    QVERIFY(shown.isValid());
    QVERIFY(shown.red() >= shown.green() + 100);
    QCOMPARE(shown.green(), shown.blue());
    // It stays on its side of grey, so that the text can still be read.
    QCOMPARE(shown.lightness() > 128, background == Qt::white);
}

void KeywordValidityTest::anUnchangedLookIsNotSetAgain()
{
    class Field : public QLineEdit {
    public:
        int styleChanges = 0;

    protected:
        void changeEvent(QEvent *event) override
        {
            if (event->type() == QEvent::StyleChange)
                ++styleChanges;
            QLineEdit::changeEvent(event);
        }
    };
    Field field;
    field.show();
    KeywordValidity::show(&field, patterns());
    const int once = field.styleChanges;
    QVERIFY(once > 0);
    field.setText(QStringLiteral("a"));
    KeywordValidity::show(&field, patterns());
    QCOMPARE(field.styleChanges, once);
}

QTEST_MAIN(KeywordValidityTest)

#include "KeywordValidityTest.moc"
