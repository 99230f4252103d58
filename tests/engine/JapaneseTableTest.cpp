#include "engine/JapaneseTable.h"

#include "engine/CodeSet.h"

#include <QTest>
#include <QTextCodec>

class JapaneseTableTest : public QObject {
    Q_OBJECT

private slots:
    void everyCodeIsReadAsTheCodecReadsIt_data();
    void everyCodeIsReadAsTheCodecReadsIt();
    void charactersInARowAreRead_data();
    void charactersInARowAreRead();
    void whatTheTableLacksIsRefused_data();
    void whatTheTableLacksIsRefused();
    void nothingIsDropped();
    void otherCodeSetsHaveNoTable();

private:
    void addCodeSets();
};

namespace {

bool read(int codeSet, const QByteArray &bytes, QString *text)
{
    return JapaneseTable::of(codeSet)->decode(bytes.constData(), bytes.size(), text);
}

} // namespace

void JapaneseTableTest::addCodeSets()
{
    QTest::addColumn<int>("codeSet");
    QTest::newRow("Shift-JIS") << int(CodeSet::ShiftJis);
    QTest::newRow("EUC-JP") << int(CodeSet::EucJp);
}

void JapaneseTableTest::everyCodeIsReadAsTheCodecReadsIt_data()
{
    addCodeSets();
}

void JapaneseTableTest::everyCodeIsReadAsTheCodecReadsIt()
{
    QFETCH(int, codeSet);
    int known = 0;
    for (int first = 0x80; first <= 0xFF; ++first) {
        for (int second = 0x1F; second <= 0xFF; ++second) {
            QByteArray bytes(1, char(first));
            if (second == 0x7F)
                continue; // not steady
            if (second >= 0x20)
                bytes += char(second);
            QString text;
            if (!read(codeSet, bytes, &text))
                continue;
            QCOMPARE(text, CodeSet::codec(codeSet)->toUnicode(bytes));
            known += int(text.size() == 1);
        }
    }
    // The characters of JIS X 0208 and the half-width katakana.
    QVERIFY2(known >= 6879 + 63, QByteArray::number(known).constData());
}

void JapaneseTableTest::charactersInARowAreRead_data()
{
    addCodeSets();
}

void JapaneseTableTest::charactersInARowAreRead()
{
    QFETCH(int, codeSet);
    const QString line = QStringLiteral("abc 検索ｱｲｳ defghijklmnop、あいう\t");
    QString text;
    for (int gap = 0; gap < 10; ++gap) {
        const QString expected = QString(gap, QLatin1Char('x')) + line + line;
        QVERIFY(read(codeSet, CodeSet::codec(codeSet)->fromUnicode(expected), &text));
        QCOMPARE(text, expected);
    }
}

void JapaneseTableTest::whatTheTableLacksIsRefused_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("Shift-JIS, cut") << int(CodeSet::ShiftJis) << QByteArray("\x82\xA0\x82");
    QTest::newRow("Shift-JIS, no such lead") << int(CodeSet::ShiftJis) << QByteArray("\xFD");
    QTest::newRow("Shift-JIS, no such trail") << int(CodeSet::ShiftJis) << QByteArray("\x82 ");
    QTest::newRow("Shift-JIS, no such code") << int(CodeSet::ShiftJis) << QByteArray("\x85\x40");
    QTest::newRow("EUC-JP, cut") << int(CodeSet::EucJp) << QByteArray("\xA4\xA2\xA4");
    QTest::newRow("EUC-JP, three bytes") << int(CodeSet::EucJp) << QByteArray("\x8F\xB0\xA1");
    QTest::newRow("EUC-JP, no such trail") << int(CodeSet::EucJp) << QByteArray("\xA4 ");
    QTest::newRow("EUC-JP, no such code") << int(CodeSet::EucJp) << QByteArray("\xA9\xA1");
}

void JapaneseTableTest::whatTheTableLacksIsRefused()
{
    QFETCH(int, codeSet);
    QFETCH(QByteArray, bytes);
    QString text;
    QVERIFY(!read(codeSet, bytes, &text));
}

void JapaneseTableTest::nothingIsDropped()
{
    QString text;
    QVERIFY(read(CodeSet::ShiftJis, "a\r\n\x82\xA0\r", &text));
    QCOMPARE(text, QStringLiteral("a\r\nあ\r"));
}

void JapaneseTableTest::otherCodeSetsHaveNoTable()
{
    for (const int codeSet : {-1, 0, 3, 4, 5, 6, 7, 8, 9})
        QVERIFY(JapaneseTable::of(codeSet) == nullptr);
}

int main(int argc, char **argv)
{
    qputenv("UNICODEMAP_JP", "cp932"); // read by the codecs when they are made
    QCoreApplication application(argc, argv);
    JapaneseTableTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "JapaneseTableTest.moc"
