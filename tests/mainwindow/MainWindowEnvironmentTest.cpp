#include "tests/mainwindow/WindowTest.h"

#include <QTest>

/// What the window tells the toolkit before anything is read.
class MainWindowEnvironmentTest : public WindowTest {
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<WindowFixture>(); }

    void japaneseCodecsMapWhatWindowsAdds_data();
    void japaneseCodecsMapWhatWindowsAdds();
};

void MainWindowEnvironmentTest::japaneseCodecsMapWhatWindowsAdds_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("unset") << QByteArray() << QByteArray("cp932");
    QTest::newRow("something else") << QByteArray("euc") << QByteArray("euc,cp932");
}

void MainWindowEnvironmentTest::japaneseCodecsMapWhatWindowsAdds()
{
    QFETCH(QByteArray, before);
    if (before.isEmpty())
        qunsetenv("UNICODEMAP_JP");
    else
        qputenv("UNICODEMAP_JP", before);
    m_fixture->open();
    QTEST(qgetenv("UNICODEMAP_JP"), "after");
}

QTEST_MAIN(MainWindowEnvironmentTest)
#include "MainWindowEnvironmentTest.moc"
