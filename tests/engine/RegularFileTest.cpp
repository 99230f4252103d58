#include "engine/RegularFile.h"

#include "tests/support/ScratchFolder.h"

#include <QFile>
#include <QTest>

class RegularFileTest : public QObject {
    Q_OBJECT

private slots:
    void aFileIsReadFromItsBeginning();
    void anEmptyFileIsOpenAndHoldsNothing();
    void aReadGivesAllThatIsAskedFor();
    void aJapaneseNameIsFound();
    void aLongPathIsOpened();
    void aMissingFileIsNotOpen();
    void anEmptyPathIsNotOpen();
    void aFolderIsNotOpen();
    void theSizeIsThatOfTheOpening();

private:
    ScratchFolder m_folder;
};

void RegularFileTest::aFileIsReadFromItsBeginning()
{
    RegularFile file(m_folder.write(QStringLiteral("plain"), QByteArray("abc\r\n\0def", 9)));
    QVERIFY(file.isOpen());
    QCOMPARE(file.size(), qint64(9));
    QByteArray bytes(20, '-');
    QCOMPARE(file.read(bytes.data(), 4), qint64(4));
    QCOMPARE(file.read(bytes.data() + 4, 16), qint64(5));
    QCOMPARE(bytes.left(9), QByteArray("abc\r\n\0def", 9));
    QCOMPARE(bytes.mid(9), QByteArray(11, '-'));
    QCOMPARE(file.read(bytes.data(), 4), qint64(0));
}

void RegularFileTest::anEmptyFileIsOpenAndHoldsNothing()
{
    RegularFile file(m_folder.write(QStringLiteral("empty"), QByteArray()));
    char byte = 0;
    QVERIFY(file.isOpen());
    QCOMPARE(file.size(), qint64(0));
    QCOMPARE(file.read(&byte, 1), qint64(0));
    QCOMPARE(file.read(&byte, 0), qint64(0));
}

void RegularFileTest::aReadGivesAllThatIsAskedFor()
{
    QByteArray content;
    for (int i = 0; i < 3000000; ++i)
        content += char(i * 31 >> 3);
    RegularFile file(m_folder.write(QStringLiteral("large"), content));
    QByteArray bytes(content.size(), Qt::Uninitialized);
    QCOMPARE(file.read(bytes.data(), bytes.size()), qint64(content.size()));
    QVERIFY(bytes == content);
}

void RegularFileTest::aJapaneseNameIsFound()
{
    RegularFile file(m_folder.write(QStringLiteral("フォルダ/検索 結果.txt"), "abc"));
    QCOMPARE(file.size(), qint64(3));
}

void RegularFileTest::aLongPathIsOpened()
{
    QString name;
    for (int i = 0; i < 4; ++i)
        name += QString(100, QLatin1Char('n')) + QLatin1Char('/');
    RegularFile file(m_folder.write(name + QStringLiteral("file"), "abcd"));
    QCOMPARE(file.size(), qint64(4));
}

void RegularFileTest::aMissingFileIsNotOpen()
{
    RegularFile file(m_folder.filePath(QStringLiteral("missing")));
    char byte = 0;
    QVERIFY(!file.isOpen());
    QCOMPARE(file.size(), qint64(0));
    QCOMPARE(file.read(&byte, 1), qint64(0));
}

void RegularFileTest::anEmptyPathIsNotOpen()
{
    QVERIFY(!RegularFile(QString()).isOpen());
}

void RegularFileTest::aFolderIsNotOpen()
{
    QVERIFY(!RegularFile(m_folder.path()).isOpen());
}

void RegularFileTest::theSizeIsThatOfTheOpening()
{
    const QString path = m_folder.write(QStringLiteral("growing"), "abc");
    RegularFile file(path);
    QFile writer(path);
    QVERIFY(writer.open(QIODevice::Append));
    writer.write("defg");
    writer.close();
    QCOMPARE(file.size(), qint64(3));
}

QTEST_GUILESS_MAIN(RegularFileTest)
#include "RegularFileTest.moc"
