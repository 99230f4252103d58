#include "app/broadcast/LocalBus.h"
#include "tests/app/broadcast/SessionBus.h"

#include <QLocalServer>
#include <QTest>

class LocalBusTest : public QObject {
    Q_OBJECT

private slots:
    void theVariableNamesTheBus_data();
    void theVariableNamesTheBus();
    void theRuntimeFolderCountsWithoutTheVariable();
    void aRunningBusAnswers_data();
    void aRunningBusAnswers();
    void nobodyAnswersWhereThereIsNoBus_data();
    void nobodyAnswersWhereThereIsNoBus();
    void aServerThatKeepsSilentIsGivenUp();
};

void LocalBusTest::theVariableNamesTheBus_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("address");
    QTest::newRow("path") << QByteArrayLiteral("unix:path=/a/bus")
                          << QStringLiteral("unix:path=/a/bus");
    QTest::newRow("path and guid") << QByteArrayLiteral("unix:path=/a/bus,guid=12ab")
                                   << QStringLiteral("unix:path=/a/bus,guid=12ab");
    QTest::newRow("abstract") << QByteArrayLiteral("unix:abstract=/a/bus")
                              << QStringLiteral("unix:abstract=/a/bus");
    QTest::newRow("second of two")
        << QByteArrayLiteral("tcp:host=h,port=1;unix:path=/b") << QStringLiteral("unix:path=/b");
    QTest::newRow("first of two") << QByteArrayLiteral("unix:path=/a;unix:path=/b")
                                  << QStringLiteral("unix:path=/a");
    QTest::newRow("another computer") << QByteArrayLiteral("tcp:host=h,port=1") << QString();
    QTest::newRow("to be started") << QByteArrayLiteral("autolaunch:") << QString();
    QTest::newRow("a program") << QByteArrayLiteral("unixexec:path=/bin/true") << QString();
    QTest::newRow("no address") << QByteArrayLiteral("bus") << QString();
}

void LocalBusTest::theVariableNamesTheBus()
{
    QFETCH(QByteArray, variable);
    QFETCH(QString, address);
    // Who sets the variable means that bus or none, not the one in the folder.
    const ScratchFolder folder;
    folder.write(QStringLiteral("bus"), QByteArray());
    qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
    qputenv("DBUS_SESSION_BUS_ADDRESS", variable);
    QCOMPARE(LocalBus::address(), address);
}

void LocalBusTest::theRuntimeFolderCountsWithoutTheVariable()
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    const ScratchFolder folder;
    const QString runtime = folder.makeFolder(QStringLiteral("run, 1;"));
    qputenv("XDG_RUNTIME_DIR", runtime.chopped(1).toUtf8());
    QCOMPARE(LocalBus::address(), QString());
    folder.write(QStringLiteral("run, 1;/bus"), QByteArray());
    QCOMPARE(
        LocalBus::address(),
        QString(QLatin1String("unix:path=") + folder.path() + QLatin1String("run%2C%201%3B/bus")));
    qunsetenv("XDG_RUNTIME_DIR");
    QCOMPARE(LocalBus::address(), QString());
}

void LocalBusTest::aRunningBusAnswers_data()
{
    QTest::addColumn<bool>("abstract");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const QString path = QStringLiteral("unix:path=/");
    QTest::newRow("path") << false << path << path;
    QTest::newRow("path with an escaped byte") << false << path << QStringLiteral("unix:path=%2F");
    QTest::newRow("abstract") << true << QString() << QString();
}

void LocalBusTest::aRunningBusAnswers()
{
    QFETCH(bool, abstract);
    QFETCH(QString, before);
    QFETCH(QString, after);
    const SessionBus bus(abstract ? SessionBus::Socket::Abstract : SessionBus::Socket::File);
    const QString address = bus.address().replace(before, after);
    const std::atomic<bool> giveUp(false);
    QVERIFY(LocalBus::answers(address, giveUp));
    QVERIFY(LocalBus::answers(address + QLatin1String(",guid=12ab"), giveUp));
}

void LocalBusTest::nobodyAnswersWhereThereIsNoBus_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("no socket") << QStringLiteral("unix:path=/nonexistent/bus");
    QTest::newRow("no abstract socket") << QStringLiteral("unix:abstract=/nonexistent/bus");
    QTest::newRow("a folder") << QStringLiteral("unix:path=/");
    QTest::newRow("no name") << QStringLiteral("unix:path=");
    QTest::newRow("longer than a socket's name can be")
        << QString(QLatin1String("unix:path=/") + QString(200, QLatin1Char('x')));
}

void LocalBusTest::nobodyAnswersWhereThereIsNoBus()
{
    QFETCH(QString, address);
    QVERIFY(!LocalBus::answers(address, std::atomic<bool>(false)));
}

void LocalBusTest::aServerThatKeepsSilentIsGivenUp()
{
    const ScratchFolder folder;
    const QString path = folder.filePath(QStringLiteral("bus"));
    QLocalServer server;
    QVERIFY(server.listen(path));
    const QString address = QLatin1String("unix:path=") + path;
    QVERIFY(!LocalBus::answers(address, std::atomic<bool>(true)));
    // Without being told, after its own time.
    QVERIFY(!LocalBus::answers(address, std::atomic<bool>(false)));
}

QTEST_GUILESS_MAIN(LocalBusTest)
#include "LocalBusTest.moc"
