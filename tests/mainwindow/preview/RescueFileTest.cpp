#include "mainwindow/preview/RescueFile.h"

#include "tests/support/ScratchFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>
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
    void aKillAtAnyMomentLeavesWholeTexts();

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

void RescueFileTest::aKillAtAnyMomentLeavesWholeTexts()
{
    constexpr int kWhole = 200000 * 7;
    int whole = 0;
    for (int round = 0; round < 20; ++round) {
        m_folder = std::make_unique<ScratchFolder>();
        QProcess process;
        process.start(QStringLiteral(PREVIEW_PROCESS), {QStringLiteral("--rescue"), folder()});
        QTRY_VERIFY(!QDir(folder()).entryList(QDir::Files).isEmpty());
        QThread::usleep(QRandomGenerator::global()->bounded(20000u));
        process.kill();
        QVERIFY(process.waitForFinished());
        const QFileInfoList files =
            QDir(folder()).entryInfoList({QStringLiteral("*.txt")}, QDir::Files);
        for (const QFileInfo &file : files) {
            QVERIFY2(file.size() == 0 || file.size() == kWhole, qPrintable(file.fileName()));
            whole += file.size() == kWhole ? 1 : 0;
        }
    }
    QVERIFY(whole > 0);
}

QTEST_GUILESS_MAIN(RescueFileTest)
#include "RescueFileTest.moc"
