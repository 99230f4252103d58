#include "app/broadcast/NativeEventFilter.h"
#include "tests/app/broadcast/SessionBus.h"
#include "tests/support/Patience.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

// What a test sends to learn whether the filter listens yet; no thread has it.
constexpr uint kProbeThread = 0xFFFFFFFF;
constexpr uint kOtherThread = 0xFFFFFF00;

QStringList s_messages;

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    s_messages << text;
}

QString number(uint value)
{
    return QStringLiteral("uint32:%1").arg(value);
}

// What a filter hears, without the probes.
class Listener {
public:
    Listener()
    {
        QObject::connect(&m_filter, &NativeEventFilter::BoradCastMessage, &m_filter,
                         [this](uint threadId, uint value) {
                             if (threadId == kProbeThread)
                                 m_listens = true;
                             else
                                 m_heard.append({threadId, value});
                         });
    }

    // The connection is made in the background; a signal tells that it stands.
    bool waitUntilItListens(const SessionBus &bus)
    {
        for (int i = 0; i < 100 && !m_listens; ++i) {
            bus.send(QStringLiteral("/sarvedit/broadcast"),
                     QStringLiteral("sarvedit.broadcast.message"),
                     {number(kProbeThread), number(0)});
            QTest::qWait(50);
        }
        return m_listens;
    }

    QList<QPair<uint, uint>> heard() const { return m_heard; }

private:
    NativeEventFilter m_filter;
    QList<QPair<uint, uint>> m_heard;
    bool m_listens = false;
};

void broadcast(const SessionBus &bus, uint threadId, uint value)
{
    bus.send(QStringLiteral("/sarvedit/broadcast"), QStringLiteral("sarvedit.broadcast.message"),
             {number(threadId), number(value)});
}

} // namespace

class SessionBusBroadcastTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    // First, because the bus library remembers the address it once found.
    void noBusIsStarted_data();
    void noBusIsStarted();
    void aSignalOnTheBusIsHeard();
    void theBusInTheRuntimeFolderIsFound();
    void aSignalOfTheOwnThreadIsIgnored();
    void aSignalWithOtherArgumentsIsIgnored_data();
    void aSignalWithOtherArgumentsIsIgnored();
    void aSignalOfAnotherNameIsIgnored_data();
    void aSignalOfAnotherNameIsIgnored();
    void everyFilterHears();
    void aBusThatBreaksOffIsNotMissed();
    void withoutABusNothingHappens_data();
    void withoutABusNothingHappens();
    void aSilentBusDoesNotHoldUpTheStart();
};

void SessionBusBroadcastTest::init()
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qunsetenv("XDG_RUNTIME_DIR");
    s_messages.clear();
    qInstallMessageHandler(keepMessage);
}

void SessionBusBroadcastTest::cleanup()
{
    qInstallMessageHandler(nullptr);
    QCOMPARE(s_messages, QStringList());
}

void SessionBusBroadcastTest::aSignalOnTheBusIsHeard()
{
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    Listener listener;
    QVERIFY(listener.waitUntilItListens(bus));
    broadcast(bus, kOtherThread, 7);
    broadcast(bus, 1, 0xFFFFFFFF);
    const QList<QPair<uint, uint>> expected{{kOtherThread, 7}, {1, 0xFFFFFFFF}};
    QTRY_COMPARE_WITH_TIMEOUT(listener.heard(), expected, kPatienceMilliseconds);
}

void SessionBusBroadcastTest::theBusInTheRuntimeFolderIsFound()
{
    const SessionBus bus;
    qputenv("XDG_RUNTIME_DIR", bus.folder().chopped(1).toUtf8());
    Listener listener;
    QVERIFY(listener.waitUntilItListens(bus));
}

void SessionBusBroadcastTest::aSignalOfTheOwnThreadIsIgnored()
{
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    Listener listener;
    QVERIFY(listener.waitUntilItListens(bus));
    broadcast(bus, BroadcastChannel::currentThreadId(), 1);
    // The bus keeps the order: what comes later has overtaken nothing.
    broadcast(bus, kOtherThread, 2);
    QTRY_VERIFY_WITH_TIMEOUT(!listener.heard().isEmpty(), kPatienceMilliseconds);
    QCOMPARE(listener.heard(), (QList<QPair<uint, uint>>{{kOtherThread, 2}}));
}

void SessionBusBroadcastTest::aSignalWithOtherArgumentsIsIgnored_data()
{
    QTest::addColumn<QStringList>("arguments");
    const QString seven = QStringLiteral("uint32:7");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one number") << QStringList{seven};
    QTest::newRow("three numbers") << QStringList{seven, seven, seven};
    QTest::newRow("texts") << QStringList{QStringLiteral("string:7"), QStringLiteral("string:7")};
    QTest::newRow("signed") << QStringList{QStringLiteral("int32:7"), QStringLiteral("int32:7")};
    QTest::newRow("wide") << QStringList{QStringLiteral("uint64:7"), QStringLiteral("uint64:7")};
    QTest::newRow("an array") << QStringList{QStringLiteral("array:uint32:7,7")};
    QTest::newRow("a number and a text") << QStringList{seven, QStringLiteral("string:7")};
}

void SessionBusBroadcastTest::aSignalWithOtherArgumentsIsIgnored()
{
    QFETCH(QStringList, arguments);
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    Listener listener;
    QVERIFY(listener.waitUntilItListens(bus));
    bus.send(QStringLiteral("/sarvedit/broadcast"), QStringLiteral("sarvedit.broadcast.message"),
             arguments);
    broadcast(bus, kOtherThread, 2);
    QTRY_VERIFY_WITH_TIMEOUT(!listener.heard().isEmpty(), kPatienceMilliseconds);
    QCOMPARE(listener.heard(), (QList<QPair<uint, uint>>{{kOtherThread, 2}}));
}

void SessionBusBroadcastTest::aSignalOfAnotherNameIsIgnored_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("member");
    QTest::newRow("path") << QStringLiteral("/sarvedit")
                          << QStringLiteral("sarvedit.broadcast.message");
    QTest::newRow("interface") << QStringLiteral("/sarvedit/broadcast")
                               << QStringLiteral("sarvedit.Broadcast.message");
    QTest::newRow("member") << QStringLiteral("/sarvedit/broadcast")
                            << QStringLiteral("sarvedit.broadcast.arrived");
}

void SessionBusBroadcastTest::aSignalOfAnotherNameIsIgnored()
{
    QFETCH(QString, path);
    QFETCH(QString, member);
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    Listener listener;
    QVERIFY(listener.waitUntilItListens(bus));
    bus.send(path, member, {number(kOtherThread), number(1)});
    broadcast(bus, kOtherThread, 2);
    QTRY_VERIFY_WITH_TIMEOUT(!listener.heard().isEmpty(), kPatienceMilliseconds);
    QCOMPARE(listener.heard(), (QList<QPair<uint, uint>>{{kOtherThread, 2}}));
}

void SessionBusBroadcastTest::everyFilterHears()
{
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    Listener first;
    Listener second;
    {
        Listener third;
        QVERIFY(third.waitUntilItListens(bus));
    }
    QVERIFY(first.waitUntilItListens(bus));
    QVERIFY(second.waitUntilItListens(bus));
    broadcast(bus, kOtherThread, 2);
    QTRY_COMPARE_WITH_TIMEOUT(first.heard().size(), 1, kPatienceMilliseconds);
    QTRY_COMPARE_WITH_TIMEOUT(second.heard().size(), 1, kPatienceMilliseconds);
}

void SessionBusBroadcastTest::aBusThatBreaksOffIsNotMissed()
{
    SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    Listener listener;
    QVERIFY(listener.waitUntilItListens(bus));
    bus.kill();
    // Time for the end to be noticed, which would end a process that does not
    // mind it.
    QTest::qWait(200);
    QVERIFY(listener.heard().isEmpty());
}

void SessionBusBroadcastTest::withoutABusNothingHappens_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<QByteArray>("folder");
    QTest::newRow("nothing set") << QByteArray() << QByteArray();
    QTest::newRow("nobody there") << QByteArrayLiteral("unix:path=/nonexistent/bus")
                                  << QByteArray();
    QTest::newRow("not an address") << QByteArrayLiteral("bus") << QByteArray();
    QTest::newRow("unknown way") << QByteArrayLiteral("pigeon:loft=7") << QByteArray();
    QTest::newRow("a folder without a bus") << QByteArray() << QByteArrayLiteral("/nonexistent");
}

void SessionBusBroadcastTest::withoutABusNothingHappens()
{
    QFETCH(QByteArray, address);
    QFETCH(QByteArray, folder);
    if (!address.isEmpty())
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    if (!folder.isEmpty())
        qputenv("XDG_RUNTIME_DIR", folder);
    NativeEventFilter filter;
    const QSignalSpy heard(&filter, &NativeEventFilter::BoradCastMessage);
    QTest::qWait(100);
    QCOMPARE(heard.count(), 0);
    // That nothing was said, either, is seen when the test is cleaned up.
}

void SessionBusBroadcastTest::noBusIsStarted_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::newRow("no address") << QByteArray();
    QTest::newRow("an address that says so") << QByteArrayLiteral("autolaunch:");
}

void SessionBusBroadcastTest::noBusIsStarted()
{
    QFETCH(QByteArray, address);
    // Stands in for the program that starts a bus.
    const ScratchFolder folder;
    const QString launcher = folder.write(
        QStringLiteral("dbus-launch"), "#!/bin/sh\ntouch \"$(dirname \"$0\")/started\"\nexit 1\n");
    QVERIFY(
        QFile::setPermissions(launcher, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.path()) + ':' + path);
    qputenv("DISPLAY", ":0");
    if (!address.isEmpty())
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    {
        const NativeEventFilter filter;
        // Its end waits for the attempt to connect.
    }
    qputenv("PATH", path);
    qunsetenv("DISPLAY");
    QVERIFY(!folder.exists(QStringLiteral("started")));
}

void SessionBusBroadcastTest::aSilentBusDoesNotHoldUpTheStart()
{
    const ScratchFolder folder;
    QLocalServer server;
    QVERIFY(server.listen(folder.filePath(QStringLiteral("bus"))));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder.path().chopped(1)));
    auto filter = std::make_unique<NativeEventFilter>();
    // If the filter had waited for an answer, it would have given up by now and
    // closed its end.
    QVERIFY(server.waitForNewConnection(kPatienceMilliseconds));
    const std::unique_ptr<QLocalSocket> client(server.nextPendingConnection());
    QTest::qWait(100);
    QCOMPARE(client->state(), QLocalSocket::ConnectedState);
    // Nor its end: a filter that waits for the answer would never come back.
    filter.reset();
}

QTEST_GUILESS_MAIN(SessionBusBroadcastTest)
#include "SessionBusBroadcastTest.moc"
