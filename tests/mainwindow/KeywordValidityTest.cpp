#include "mainwindow/KeywordValidity.h"

#include <QEvent>
#include <QLineEdit>
#include <QtTest>

class KeywordValidityTest : public QObject {
    Q_OBJECT

private slots:
    void aPatternIsValidOrHasAnError_data();
    void aPatternIsValidOrHasAnError();
    void theErrorSaysWhatIsWrong();
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

void KeywordValidityTest::theErrorSaysWhatIsWrong()
{
    const QString error = KeywordValidity::patternError(QStringLiteral("a("));
    QVERIFY(error.startsWith(QStringLiteral("正規表現として正しくありません: ")));
    QVERIFY(error.endsWith(QRegExp(QStringLiteral("a(")).errorString()));
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
