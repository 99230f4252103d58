#include "settings/DailyBackup.h"

#include "settings/SaveSteps.h"
#include "tests/support/FileTime.h"
#include "tests/support/ScratchFolder.h"

#include <QDir>
#include <QTest>
#include <QVector>

#include <memory>

using SaveSteps::Step;

class DailyBackupTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void noFileMakesNoBackup();
    void aFileChangedTodayIsNotBackedUp();
    void aFileChangedBeforeIsCopied();
    void theCopyHasTheDateOfItsSource();
    void generationsMoveUpAndTheThirdDropsOut();
    void atMostThreeGenerationsExist();
    void aVersionIsBackedUpOnce();
    void aNewestBackupOfAnotherDayIsNoReasonToSkip();
    void repeatedFailuresToSaveLoseNoGeneration();
    void aCopyThatFailsMovesNoGeneration_data();
    void aCopyThatFailsMovesNoGeneration();
    void aRotationCutShortLosesNothingTheNextTime_data();
    void aRotationCutShortLosesNothingTheNextTime();
    void aMissingGenerationIsMovedOver_data();
    void aMissingGenerationIsMovedOver();
    void whatAKillLeftMissingIsFilled_data();
    void whatAKillLeftMissingIsFilled();
    void aGenerationThatCannotGoIsPassedOver_data();
    void aGenerationThatCannotGoIsPassedOver();
    void anOldestThatStaysHoldsUpNoLaterBackup();
    void whenNothingCanGoTheCopyStays();
    void aNewestThatStaysCostsNoFurtherGeneration();
    void aLeftoverCopyIsReplaced();
    void theBackupOfALinkIsACopyBesideTheLink();

private:
    QString path() const { return m_folder->filePath(QStringLiteral("a.ini")); }
    void writeDated(const QString &name, const QByteArray &content, int daysAgo);
    void writeFourVersions();
    QByteArray content(const QString &name) const;

    const QDate m_today = QDate(2024, 3, 10);
    std::unique_ptr<ScratchFolder> m_folder;
};

void DailyBackupTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
}

void DailyBackupTest::cleanup()
{
    SaveSteps::setObserver(nullptr);
}

void DailyBackupTest::writeDated(const QString &name, const QByteArray &content, int daysAgo)
{
    FileTime::setDayOfChange(m_folder->write(name, content), m_today.addDays(-daysAgo));
}

void DailyBackupTest::writeFourVersions()
{
    writeDated(QStringLiteral("a.ini"), "new", 1);
    writeDated(QStringLiteral("a.ini.bak1"), "one", 2);
    writeDated(QStringLiteral("a.ini.bak2"), "two", 3);
    writeDated(QStringLiteral("a.ini.bak3"), "three", 4);
}

QByteArray DailyBackupTest::content(const QString &name) const
{
    return m_folder->exists(name) ? m_folder->read(name) : QByteArray("(none)");
}

void DailyBackupTest::noFileMakesNoBackup()
{
    DailyBackup::makeDailyBackup(path(), m_today);
    QVERIFY(QDir(m_folder->path()).isEmpty());
}

void DailyBackupTest::aFileChangedTodayIsNotBackedUp()
{
    writeDated(QStringLiteral("a.ini"), "new", 0);
    DailyBackup::makeDailyBackup(path(), m_today);
    QVERIFY(!m_folder->exists(QStringLiteral("a.ini.bak1")));
}

void DailyBackupTest::aFileChangedBeforeIsCopied()
{
    writeDated(QStringLiteral("a.ini"), "new", 1);
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files),
             QStringList({QStringLiteral("a.ini"), QStringLiteral("a.ini.bak1")}));
    QCOMPARE(content(QStringLiteral("a.ini")), QByteArray("new"));
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
}

void DailyBackupTest::theCopyHasTheDateOfItsSource()
{
    writeDated(QStringLiteral("a.ini"), "new", 5);
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(FileTime::dayOfChange(path() + QStringLiteral(".bak1")), m_today.addDays(-5));
}

void DailyBackupTest::generationsMoveUpAndTheThirdDropsOut()
{
    writeFourVersions();
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("one"));
    QCOMPARE(content(QStringLiteral("a.ini.bak3")), QByteArray("two"));
}

void DailyBackupTest::atMostThreeGenerationsExist()
{
    for (int day = 0; day < 6; ++day) {
        FileTime::setDayOfChange(m_folder->write(QStringLiteral("a.ini"), QByteArray::number(day)),
                                 m_today.addDays(day));
        DailyBackup::makeDailyBackup(path(), m_today.addDays(day + 1));
    }
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 4);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("5"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("4"));
    QCOMPARE(content(QStringLiteral("a.ini.bak3")), QByteArray("3"));
}

void DailyBackupTest::aVersionIsBackedUpOnce()
{
    writeFourVersions();
    writeDated(QStringLiteral("a.ini.bak1"), "same day", 1);
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("same day"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("two"));
}

void DailyBackupTest::aNewestBackupOfAnotherDayIsNoReasonToSkip()
{
    writeDated(QStringLiteral("a.ini"), "new", 3);
    writeDated(QStringLiteral("a.ini.bak1"), "changed later by hand", 1);
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("changed later by hand"));
}

void DailyBackupTest::repeatedFailuresToSaveLoseNoGeneration()
{
    writeFourVersions();
    for (int day = 0; day < 10; ++day)
        DailyBackup::makeDailyBackup(path(), m_today.addDays(day));
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("one"));
    QCOMPARE(content(QStringLiteral("a.ini.bak3")), QByteArray("two"));
}

void DailyBackupTest::aCopyThatFailsMovesNoGeneration_data()
{
    QTest::addColumn<int>("step");
    QTest::newRow("copy") << static_cast<int>(Step::CopyForBackup);
    QTest::newRow("date") << static_cast<int>(Step::DateBackup);
}

void DailyBackupTest::aCopyThatFailsMovesNoGeneration()
{
    QFETCH(int, step);
    writeFourVersions();
    SaveSteps::setObserver([step](Step taken) { return static_cast<int>(taken) != step; });
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("one"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("two"));
    QCOMPARE(content(QStringLiteral("a.ini.bak3")), QByteArray("three"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 4);
}

void DailyBackupTest::aRotationCutShortLosesNothingTheNextTime_data()
{
    QTest::addColumn<int>("steps");
    for (int steps = 0; steps < 7; ++steps)
        QTest::addRow("after %d steps", steps) << steps;
}

void DailyBackupTest::aRotationCutShortLosesNothingTheNextTime()
{
    QFETCH(int, steps);
    writeFourVersions();
    int taken = 0;
    SaveSteps::setObserver([&](Step) { return taken++ < steps; });
    DailyBackup::makeDailyBackup(path(), m_today);
    // A disk that is full the day after must not make it forget what is missing.
    for (const Step failing : {Step::CopyForBackup, Step::DateBackup}) {
        SaveSteps::setObserver([failing](Step step) { return step != failing; });
        DailyBackup::makeDailyBackup(path(), m_today);
    }
    SaveSteps::setObserver(nullptr);
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("one"));
    QCOMPARE(content(QStringLiteral("a.ini.bak3")), QByteArray("two"));
}

void DailyBackupTest::aMissingGenerationIsMovedOver_data()
{
    QTest::addColumn<int>("missing");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QByteArray>("third");
    QTest::newRow("newest") << 1 << QByteArray("(none)") << QByteArray("two");
    QTest::newRow("second") << 2 << QByteArray("one") << QByteArray("(none)");
    QTest::newRow("third") << 3 << QByteArray("one") << QByteArray("two");
}

void DailyBackupTest::aMissingGenerationIsMovedOver()
{
    QFETCH(int, missing);
    writeFourVersions();
    m_folder->remove(QStringLiteral("a.ini.bak%1").arg(missing));
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QTEST(content(QStringLiteral("a.ini.bak2")), "second");
    QTEST(content(QStringLiteral("a.ini.bak3")), "third");
}

void DailyBackupTest::whatAKillLeftMissingIsFilled_data()
{
    QTest::addColumn<int>("missing");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QByteArray>("third");
    QTest::newRow("newest") << 1 << QByteArray("two") << QByteArray("three");
    QTest::newRow("second") << 2 << QByteArray("one") << QByteArray("three");
    QTest::newRow("third") << 3 << QByteArray("one") << QByteArray("two");
    QTest::newRow("none") << 4 << QByteArray("one") << QByteArray("two");
}

void DailyBackupTest::whatAKillLeftMissingIsFilled()
{
    QFETCH(int, missing);
    writeFourVersions();
    QFile::remove(m_folder->filePath(QStringLiteral("a.ini.bak%1").arg(missing)));
    m_folder->write(QStringLiteral("a.ini.bak.new"), "new");
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QTEST(content(QStringLiteral("a.ini.bak2")), "second");
    QTEST(content(QStringLiteral("a.ini.bak3")), "third");
    QVERIFY(!m_folder->exists(QStringLiteral("a.ini.bak.new")));
}

void DailyBackupTest::aGenerationThatCannotGoIsPassedOver_data()
{
    QTest::addColumn<QVector<bool>>("steps");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QByteArray>("third");
    // Of those that drop or move a generation, in their order: which succeed.
    QTest::newRow("third is not removed")
        << QVector<bool>{false, true, true, true} << QByteArray("one") << QByteArray("three");
    QTest::newRow("second is not moved")
        << QVector<bool>{true, false, true, true} << QByteArray("one") << QByteArray("(none)");
    QTest::newRow("second is neither moved nor removed")
        << QVector<bool>{true, false, false, true, true} << QByteArray("two") << QByteArray("one");
    QTest::newRow("third is not removed, nor is the second")
        << QVector<bool>{false, true, false, true, true, true} << QByteArray("two")
        << QByteArray("three");
}

void DailyBackupTest::aGenerationThatCannotGoIsPassedOver()
{
    QFETCH(QVector<bool>, steps);
    writeFourVersions();
    SaveSteps::setObserver([&steps](Step step) {
        const bool isShift = step == Step::DropBackup || step == Step::ShiftBackup;
        return !isShift || steps.isEmpty() || steps.takeFirst();
    });
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(steps, QVector<bool>());
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QTEST(content(QStringLiteral("a.ini.bak2")), "second");
    QTEST(content(QStringLiteral("a.ini.bak3")), "third");
    QVERIFY(!m_folder->exists(QStringLiteral("a.ini.bak.new")));
}

void DailyBackupTest::anOldestThatStaysHoldsUpNoLaterBackup()
{
    // A folder that is not empty is not removed as a file is.
    m_folder->write(QStringLiteral("a.ini.bak3/kept"), "by somebody");
    for (int day = 0; day < 4; ++day) {
        FileTime::setDayOfChange(m_folder->write(QStringLiteral("a.ini"), QByteArray::number(day)),
                                 m_today.addDays(day));
        DailyBackup::makeDailyBackup(path(), m_today.addDays(day + 1));
    }
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("3"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("2"));
    QCOMPARE(content(QStringLiteral("a.ini.bak3/kept")), QByteArray("by somebody"));
}

void DailyBackupTest::whenNothingCanGoTheCopyStays()
{
    writeFourVersions();
    SaveSteps::setObserver(
        [](Step step) { return step != Step::DropBackup && step != Step::ShiftBackup; });
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak.new")), QByteArray("new"));
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("one"));
    QCOMPARE(content(QStringLiteral("a.ini.bak2")), QByteArray("two"));
    QCOMPARE(content(QStringLiteral("a.ini.bak3")), QByteArray("three"));
}

void DailyBackupTest::aNewestThatStaysCostsNoFurtherGeneration()
{
    writeFourVersions();
    for (int day = 0; day < 3; ++day) {
        // Of the steps only those on the newest fail: it is there before and after.
        SaveSteps::setObserver([this](Step step) {
            const bool isShift = step == Step::DropBackup || step == Step::ShiftBackup;
            const bool isNewest = !m_folder->exists(QStringLiteral("a.ini.bak2"));
            return !isShift || !isNewest;
        });
        DailyBackup::makeDailyBackup(path(), m_today.addDays(day));
    }
    QCOMPARE(content(QStringLiteral("a.ini.bak.new")), QByteArray("new"));
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("one"));
    QCOMPARE(content(QStringLiteral("a.ini.bak3")), QByteArray("two"));
}

void DailyBackupTest::aLeftoverCopyIsReplaced()
{
    writeDated(QStringLiteral("a.ini"), "new", 1);
    m_folder->write(QStringLiteral("a.ini.bak.new"), "half");
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QVERIFY(!m_folder->exists(QStringLiteral("a.ini.bak.new")));
}

void DailyBackupTest::theBackupOfALinkIsACopyBesideTheLink()
{
    writeDated(QStringLiteral("elsewhere/real.ini"), "new", 1);
    if (!QFile::link(m_folder->filePath(QStringLiteral("elsewhere/real.ini")), path())
        || !QFileInfo(path()).isSymLink())
        QSKIP("no symbolic links here");
    DailyBackup::makeDailyBackup(path(), m_today);
    QCOMPARE(content(QStringLiteral("a.ini.bak1")), QByteArray("new"));
    QVERIFY(!QFileInfo(path() + QStringLiteral(".bak1")).isSymLink());
    QVERIFY(QFileInfo(path()).isSymLink());
}

QTEST_GUILESS_MAIN(DailyBackupTest)
#include "DailyBackupTest.moc"
