#include "app/broadcast/NativeEventFilter.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

class NativeEventFilterTest : public QObject {
    Q_OBJECT

private slots:
    void anEventOfAnotherTypePassesUntouched();
    void aWindowOwnsItsFilter();
    void eachThreadHasItsOwnNumber();
};

void NativeEventFilterTest::anEventOfAnotherTypePassesUntouched()
{
    NativeEventFilter filter;
    QCoreApplication::instance()->installNativeEventFilter(&filter);
    const QSignalSpy heard(&filter, &NativeEventFilter::BoradCastMessage);
    long result = 42;
    // Nobody may look at the message of such an event.
    QVERIFY(!filter.nativeEventFilter(QByteArrayLiteral("xcb_generic_event_t"), nullptr, &result));
    QCOMPARE(result, 42L);
    QCOMPARE(heard.count(), 0);
}

void NativeEventFilterTest::aWindowOwnsItsFilter()
{
    auto window = std::make_unique<QObject>();
    const QPointer<NativeEventFilter> filter = new NativeEventFilter(window.get());
    window.reset();
    QVERIFY(filter.isNull());
}

void NativeEventFilterTest::eachThreadHasItsOwnNumber()
{
    const quint32 here = BroadcastChannel::currentThreadId();
    QVERIFY(here != 0);
    QCOMPARE(BroadcastChannel::currentThreadId(), here);
    quint32 there = here;
    const std::unique_ptr<QThread> thread(
        QThread::create([&there] { there = BroadcastChannel::currentThreadId(); }));
    thread->start();
    QVERIFY(thread->wait());
    QVERIFY(there != here);
}

QTEST_GUILESS_MAIN(NativeEventFilterTest)
#include "NativeEventFilterTest.moc"
