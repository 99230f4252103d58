#include "view/DocumentText.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTimer>
#include <QtTest>

class DocumentTextTest : public QObject {
    Q_OBJECT

private slots:
    void everyCharacterStandsAsItIs_data();
    void everyCharacterStandsAsItIs();
    void eventsArriveInALongText();
    void rowsAreThoseThatAreSeen_data();
    void rowsAreThoseThatAreSeen();
};

void DocumentTextTest::everyCharacterStandsAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("one line") << QStringLiteral("検索");
    QTest::newRow("empty lines") << QStringLiteral("\n\na\n");
    QTest::newRow("no-break space") << QStringLiteral("a\u00A0b");
    QTest::newRow("broken byte of a path") << QStringLiteral("::") + QChar(0xDCFF);
    QTest::newRow("lines of several turns") << QStringLiteral("line\n").repeated(20000);
}

void DocumentTextTest::everyCharacterStandsAsItIs()
{
    QFETCH(const QString, text);
    QTextDocument document;
    document.setPlainText(text);
    QCOMPARE(DocumentText::take(document), text);
}

void DocumentTextTest::eventsArriveInALongText()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("line\n").repeated(10000));
    bool arrived = false;
    QTimer::singleShot(0, [&arrived] { arrived = true; });
    DocumentText::take(document);
    QVERIFY(arrived);
}

void DocumentTextTest::rowsAreThoseThatAreSeen_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("rows");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("lines") << QStringLiteral("a\n\nb\n") << QStringLiteral("a\n\nb\n");
    QTest::newRow("a line separator") << QStringLiteral("a\u2028b") << QStringLiteral("a\nb");
    QTest::newRow("a no-break space") << QStringLiteral("a\u00A0b") << QStringLiteral("a\u00A0b");
}

void DocumentTextTest::rowsAreThoseThatAreSeen()
{
    QFETCH(const QString, text);
    QFETCH(const QString, rows);
    QTextDocument document;
    document.setPlainText(text);
    QCOMPARE(DocumentText::rows(document), rows);
    QTextCursor selection(&document);
    selection.select(QTextCursor::Document);
    QCOMPARE(DocumentText::rows(selection), rows);
}

QTEST_MAIN(DocumentTextTest)
#include "DocumentTextTest.moc"
