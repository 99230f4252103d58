#include "mainwindow/preview/RescueFile.h"

#include "settings/SaveSteps.h"
#include "tests/support/Commands.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestLength.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <vector>

class RescueFileTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { SaveSteps::setObserver(nullptr); }

    void aTextIsWrittenUnderTheTimeAndTheName();
    void aMissingFolderIsMade();
    void aNameThatIsTakenIsNumbered();
    void aNameTooLongIsCut_data();
    void aNameTooLongIsCut();
    void whatCannotBeWrittenIsSaid();
    void aTextGetsItsNameWhenItIsWhole();
    void aStepThatFailsLeavesNothing_data();
    void aStepThatFailsLeavesNothing();
    void aKillAtAnyMomentLeavesWholeTexts();
    void processesThatRescueAtOnceLoseNothing_data();
    void processesThatRescueAtOnceLoseNothing();
    void aFullDiskIsSaidAndLeavesNothing();
    void aFolderThatMayNotBeWrittenIsSaid();

private:
    QString write(const QString &fileName, const QString &text) const;
    QString folder() const { return m_folder->filePath(QStringLiteral("kept/")); }

    const QDateTime m_time{QDate(2024, 2, 3), QTime(4, 5, 6)};
    std::unique_ptr<ScratchFolder> m_folder;
};

namespace {

QStringList rescueCommand(const QString &folder, const QString &text)
{
    return {QStringLiteral(PREVIEW_PROCESS), QStringLiteral("--rescue-once"), folder, text};
}

} // namespace

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

void RescueFileTest::aTextGetsItsNameWhenItIsWhole()
{
    QStringList before;
    SaveSteps::setObserver([&](SaveSteps::Step) {
        before += QDir(folder()).entryList({QStringLiteral("*.txt")}, QDir::Files);
        return true;
    });
    QVERIFY(!write(QStringLiteral("a"), QStringLiteral("text")).isEmpty());
    QCOMPARE(before, QStringList());
    QCOMPARE(QDir(folder()).entryList(QDir::Files | QDir::Hidden),
             QStringList(QStringLiteral("20240203-040506-a.txt")));
}

void RescueFileTest::aStepThatFailsLeavesNothing_data()
{
    QTest::addColumn<int>("step");
    QTest::newRow("writing the text") << int(SaveSteps::Step::WriteNew);
    QTest::newRow("closing it") << int(SaveSteps::Step::ReplaceOld);
    QTest::newRow("giving it its name") << int(SaveSteps::Step::Finished);
}

void RescueFileTest::aStepThatFailsLeavesNothing()
{
    QFETCH(int, step);
    SaveSteps::setObserver([step](SaveSteps::Step taken) { return int(taken) != step; });
    QCOMPARE(write(QStringLiteral("a"), QStringLiteral("text")), QString());
    QCOMPARE(QDir(folder()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void RescueFileTest::aKillAtAnyMomentLeavesWholeTexts()
{
    constexpr int kWhole = 200000 * 7;
    const QStringList command{QStringLiteral(PREVIEW_PROCESS), QStringLiteral("--rescue")};
    quint32 longest = Commands::kFirstKillMicroseconds;
    int killed = 0;
    int whole = 0;
    for (int round = 0; round < TestLength::rounds(50, 500); ++round) {
        m_folder = std::make_unique<ScratchFolder>();
        killed += Commands::killWithin(longest, command + QStringList(folder()));
        const QFileInfoList files =
            QDir(folder()).entryInfoList({QStringLiteral("*.txt")}, QDir::Files);
        for (const QFileInfo &file : files)
            QVERIFY2(file.size() == kWhole, qPrintable(file.fileName()));
        whole += files.size();
        // About every other process gets as far as one text.
        longest = Commands::nextKill(longest, !files.isEmpty());
    }
    QVERIFY(killed > 0);
    QVERIFY(whole > 0);
}

void RescueFileTest::processesThatRescueAtOnceLoseNothing_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("two") << 2;
    QTest::newRow("three") << 3;
}

void RescueFileTest::processesThatRescueAtOnceLoseNothing()
{
    QFETCH(int, count);
    for (int round = 0; round < TestLength::rounds(20, 200); ++round) {
        m_folder = std::make_unique<ScratchFolder>();
        std::vector<std::unique_ptr<QProcess>> processes;
        QByteArrayList expected;
        for (int i = 0; i < count; ++i) {
            const QStringList command = rescueCommand(folder(), QString::number(i));
            expected.append(QByteArray::number(i).repeated(20000));
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->start(command.first(), command.mid(1));
        }
        for (const auto &process : processes) {
            QVERIFY(process->waitForFinished());
            QCOMPARE(process->exitCode(), 0);
        }
        QByteArrayList texts;
        for (const QString &name : QDir(folder()).entryList(QDir::Files | QDir::Hidden))
            texts.append(m_folder->read(QStringLiteral("kept/") + name));
        std::sort(texts.begin(), texts.end());
        QVERIFY(texts == expected);
    }
}

void RescueFileTest::aFullDiskIsSaidAndLeavesNothing()
{
    SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk");
    const QStringList command = rescueCommand(disk.path(), QStringLiteral("text"));
    const QDir files(disk.path(), QStringLiteral("*.txt*"));
    for (const int blocksLeft : {0, 1, 10}) {
        disk.fill(blocksLeft);
        QCOMPARE(Commands::run(command), 1);
        QCOMPARE(files.entryList(QDir::Files | QDir::Hidden), QStringList());
    }
    disk.makeRoom();
    QCOMPARE(Commands::run(command), 0);
    QCOMPARE(QFileInfo(disk.path() + files.entryList(QDir::Files).value(0)).size(),
             qint64(20000 * 4));
}

void RescueFileTest::aFolderThatMayNotBeWrittenIsSaid()
{
    const QString shut = m_folder->makeFolder(QStringLiteral("shut"));
    const auto readable = QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadOther
        | QFileDevice::ExeOther;
    QVERIFY(QFile::setPermissions(m_folder->path(), readable | QFileDevice::WriteOwner));
    QVERIFY(QFile::setPermissions(shut, readable));
    QStringList command = rescueCommand(shut, QStringLiteral("text"));
    if (!Commands::asOrdinaryUser(command))
        QSKIP("nobody without rights to run the test as");
    QCOMPARE(Commands::run(command), 1);
    QCOMPARE(QDir(shut).entryList(QDir::Files | QDir::Hidden), QStringList());
    QVERIFY(QFile::setPermissions(shut, readable | QFileDevice::WriteOwner));
}

QTEST_GUILESS_MAIN(RescueFileTest)
#include "RescueFileTest.moc"
