#include "engine/EngineOptions.h"

#include "settings/AppSettings.h"

#include <QTest>

#include <limits>

class EngineOptionsTest : public QObject {
    Q_OBJECT

private slots:
    void theDefaultsAreThoseOfTheSettings();
    void eachLimitComesFromItsSetting();
    void aTabWidthBelowOneIsOne();
    void theSizeLimitIsInMebibytes();
};

void EngineOptionsTest::theDefaultsAreThoseOfTheSettings()
{
    const SearchLimits limits;
    QCOMPARE(limits.bigsize, 1);
    QCOMPARE(limits.codechksize, 4096);
    QCOMPARE(limits.detectsize, 2048);
    QCOMPARE(limits.tabcolm, 4);
    QVERIFY(limits.excludedFolders.isEmpty());
    QVERIFY(limits.excludedFiles.isEmpty());
    QCOMPARE(EngineOptions().loadThreshold, 2);
}

void EngineOptionsTest::eachLimitComesFromItsSetting()
{
    AppSettings settings;
    settings.bigsize = 3;
    settings.codechksize = 512;
    settings.newfileDetectsize = 256;
    settings.tabcolm = 8;
    settings.excusiondir = QStringList{QStringLiteral("obj"), QStringLiteral("/top/")};
    settings.excusionfile = QStringList{QStringLiteral("bak")};
    const SearchLimits limits = SearchLimits::fromSettings(settings);
    QCOMPARE(limits.bigsize, 3);
    QCOMPARE(limits.codechksize, 512);
    QCOMPARE(limits.detectsize, 256);
    QCOMPARE(limits.tabcolm, 8);
    QCOMPARE(limits.excludedFolders, settings.excusiondir);
    QCOMPARE(limits.excludedFiles, settings.excusionfile);
}

void EngineOptionsTest::aTabWidthBelowOneIsOne()
{
    AppSettings settings;
    for (const int width : {0, -1, std::numeric_limits<int>::min()}) {
        settings.tabcolm = width;
        QCOMPARE(SearchLimits::fromSettings(settings).tabcolm, 1);
    }
}

void EngineOptionsTest::theSizeLimitIsInMebibytes()
{
    SearchLimits limits;
    QCOMPARE(limits.sizeLimitBytes(), qint64(1048576));
    limits.bigsize = 0;
    QCOMPARE(limits.sizeLimitBytes(), qint64(0));
    limits.bigsize = -2; // refuses even an empty file
    QCOMPARE(limits.sizeLimitBytes(), qint64(-2097152));
    limits.bigsize = std::numeric_limits<int>::max();
    QCOMPARE(limits.sizeLimitBytes(), qint64(2147483647) * 1048576);
}

QTEST_GUILESS_MAIN(EngineOptionsTest)
#include "EngineOptionsTest.moc"
