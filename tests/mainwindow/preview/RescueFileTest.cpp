#include "mainwindow/preview/RescueFile.h"

#include "tests/support/ScratchFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QtTest>

class RescueFileTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void aTextIsWrittenUnderTheTimeAndTheName();
    void aMissingFolderIsMade();
    void aNameThatIsTakenIsNumbered();
    void aNameTooLongIsCut_data();
    void aNameTooLongIsCut();
    void whatCannotBeWrittenIsSaid();

private:
    QString write(const QString &fileName, const QString &text) const;
    QString folder() const { return m_folder->filePath(QStringLiteral("kept/")); }

    const QDateTime m_time{QDate(2024, 2, 3), QTime(4, 5, 6)};
    std::unique_ptr<ScratchFolder> m_folder;
};

void RescueFileTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
}

QString RescueFileTest::write(const QString &fileName, const QString &text) const
{
    return RescueFile::write(folder(), fileName, text, m_time);
}

void RescueFileTest::aTextIsWrittenUnderTheTimeAndTheName()
{
    QCOMPARE(write(QStringLiteral("a.c"), QStringLiteral("灯台\n")),
             folder() + QStringLiteral("20240203-040506-a.c.txt"));
    QCOMPARE(m_folder->read(QStringLiteral("kept/20240203-040506-a.c.txt")),
             QStringLiteral("灯台\n").toUtf8());
}

void RescueFileTest::aMissingFolderIsMade()
{
    const QString deep = m_folder->filePath(QStringLiteral("one/two/"));
    const QString path = RescueFile::write(deep, QStringLiteral("a"), QString(), m_time);
    QVERIFY(path.startsWith(deep));
    QVERIFY(QFileInfo(path).isFile());
}

void RescueFileTest::aNameThatIsTakenIsNumbered()
{
    const QString first = write(QStringLiteral("a"), QStringLiteral("first"));
    const QString second = write(QStringLiteral("a"), QStringLiteral("second"));
    const QString third = write(QStringLiteral("a"), QStringLiteral("third"));
    QCOMPARE(second, folder() + QStringLiteral("20240203-040506_02-a.txt"));
    QCOMPARE(third, folder() + QStringLiteral("20240203-040506_03-a.txt"));
    QCOMPARE(m_folder->read(QStringLiteral("kept/20240203-040506-a.txt")), QByteArray("first"));
    QCOMPARE(m_folder->read(QStringLiteral("kept/20240203-040506_02-a.txt")), QByteArray("second"));
    QCOMPARE(write(QStringLiteral("b"), QString()),
             folder() + QStringLiteral("20240203-040506-b.txt"));
}

void RescueFileTest::aNameTooLongIsCut_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Latin") << QString(255, QLatin1Char('a'));
    QTest::newRow("Japanese") << QString(85, QChar(0x706F));
    QTest::newRow("pairs of surrogates")
        << QStringLiteral("a") + QStringLiteral("\U00020BB7").repeated(63);
}

void RescueFileTest::aNameTooLongIsCut()
{
    QFETCH(QString, name);
    const QString path = write(name, QStringLiteral("text"));
    QVERIFY(!path.isEmpty());
    const QString written = QFileInfo(path).fileName();
    QCOMPARE(QDir(folder()).entryList(QDir::Files), QStringList(written));
    QVERIFY(written.endsWith(QLatin1String(".txt")));
    const QString kept = written.mid(16).chopped(4);
    QVERIFY(kept.size() > 40);
    QVERIFY(name.startsWith(kept));
    QVERIFY(!kept.at(kept.size() - 1).isHighSurrogate());
}

void RescueFileTest::whatCannotBeWrittenIsSaid()
{
    // A file stands where the folder should be.
    m_folder->write(QStringLiteral("kept"), "x");
    QCOMPARE(write(QStringLiteral("a"), QStringLiteral("text")), QString());
}

QTEST_GUILESS_MAIN(RescueFileTest)
#include "RescueFileTest.moc"
