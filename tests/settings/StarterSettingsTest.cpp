#include "settings/StarterSettings.h"

#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

namespace {

const QString kSettings = QStringLiteral("sarvik.ini");
const QString kStarter = QStringLiteral("sarvik-starter.ini");

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class StarterSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void aNewFolderBeginsWithTheStarter();
    void existingSettingsStay_data();
    void existingSettingsStay();
    void aLinkToSettingsThatAreAwayStays();
    void withoutAStarterNothingIsMade();
    void eachPlatformsStarterNamesAnEditor_data();
    void eachPlatformsStarterNamesAnEditor();
};

void StarterSettingsTest::aNewFolderBeginsWithTheStarter()
{
    const ScratchFolder folder;
    folder.write(kStarter, "[editor]\neditor=/usr/bin/ed\n");
    StarterSettings::provide(folder.path());
    // As every save writes them.
    QCOMPARE(folder.read(kSettings), QByteArray("\xEF\xBB\xBF[editor]\r\neditor=/usr/bin/ed\r\n"));
    QVERIFY(folder.exists(kStarter));
}

void StarterSettingsTest::existingSettingsStay_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::newRow("with an editor") << QByteArray("[editor]\neditor=mine\n");
    QTest::newRow("empty") << QByteArray("");
}

void StarterSettingsTest::existingSettingsStay()
{
    QFETCH(QByteArray, settings);
    const ScratchFolder folder;
    folder.write(kStarter, "[editor]\neditor=/usr/bin/ed\n");
    folder.write(kSettings, settings);
    StarterSettings::provide(folder.path());
    QVERIFY(folder.exists(kSettings));
    QCOMPARE(folder.read(kSettings), settings);
}

void StarterSettingsTest::aLinkToSettingsThatAreAwayStays()
{
    const ScratchFolder folder;
    folder.write(kStarter, "[editor]\neditor=/usr/bin/ed\n");
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("away.ini")), folder.filePath(kSettings)));
    if (!QFileInfo(folder.filePath(kSettings)).isSymLink())
        QSKIP("what the toolkit takes for a link has another name here");
    StarterSettings::provide(folder.path());
    QVERIFY(!folder.exists(QStringLiteral("away.ini")));
    QVERIFY(QFileInfo(folder.filePath(kSettings)).isSymLink());
}

void StarterSettingsTest::withoutAStarterNothingIsMade()
{
    const ScratchFolder folder;
    StarterSettings::provide(folder.path());
    QVERIFY(!folder.exists(kSettings));
}

void StarterSettingsTest::eachPlatformsStarterNamesAnEditor_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("editor");
    QTest::newRow("unix") << QStringLiteral("unix") << QStringLiteral("/usr/bin/xdg-open");
    QTest::newRow("windows") << QStringLiteral("windows") << QStringLiteral("notepad.exe");
}

void StarterSettingsTest::eachPlatformsStarterNamesAnEditor()
{
    QFETCH(QString, file);
    const ScratchFolder folder;
    const QByteArray starter = bytesOf(QStringLiteral(SARVIK_SOURCES "app/") + file
                                       + QStringLiteral("/sarvik-starter.ini"));
    folder.write(kStarter, starter);
    StarterSettings::provide(folder.path());
    AppSettings::instance().load(folder.path());
    QTEST(AppSettings::instance().editor, "editor");
    QCOMPARE(AppSettings::instance().editor_para, QStringLiteral("%f"));
    // Nothing else is decided for the user that the program decides itself.
    QCOMPARE(AppSettings::instance().bigsize, 1);
}

QTEST_MAIN(StarterSettingsTest)
#include "StarterSettingsTest.moc"
