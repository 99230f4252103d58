#include "app/broadcast/BroadcastRule.h"

#include <QTest>

using BroadcastRule::Message;
using BroadcastRule::Notice;

namespace {

constexpr quint32 kRegistered = 0xC123;
constexpr quint32 kOwnThread = 4711;
constexpr quint32 kOtherThread = 4712;

std::optional<Notice> noticeIn(const Message &message, quint32 registeredId = kRegistered)
{
    return BroadcastRule::notice(
        QByteArrayLiteral("windows_generic_MSG"), [&message] { return message; }, registeredId,
        kOwnThread);
}

} // namespace

class BroadcastRuleTest : public QObject {
    Q_OBJECT

private slots:
    void aBroadcastOfAnotherThreadIsANotice();
    void anEventOfAnotherTypeIsNotEvenRead_data();
    void anEventOfAnotherTypeIsNotEvenRead();
    void aForeignMessageNumberIsNoNotice_data();
    void aForeignMessageNumberIsNoNotice();
    void withoutARegisteredNumberNothingIsANotice();
    void aBroadcastOfTheOwnThreadIsNoNotice();
    void aThreadThatDiffersInItsHighBitsIsAnotherOne();
    void bothNumbersAreCutTo32Bits();
    void aNoticeByAnotherWayFollowsTheSameRule();
};

void BroadcastRuleTest::aBroadcastOfAnotherThreadIsANotice()
{
    QVERIFY(noticeIn({kRegistered, kOtherThread, 7}) == (Notice{kOtherThread, 7}));
}

void BroadcastRuleTest::anEventOfAnotherTypeIsNotEvenRead_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("dispatcher") << QByteArrayLiteral("windows_dispatcher_MSG");
    QTest::newRow("xcb") << QByteArrayLiteral("xcb_generic_event_t");
    QTest::newRow("other case") << QByteArrayLiteral("windows_generic_msg");
    QTest::newRow("longer") << QByteArrayLiteral("windows_generic_MSG2");
    QTest::newRow("none") << QByteArray();
}

void BroadcastRuleTest::anEventOfAnotherTypeIsNotEvenRead()
{
    QFETCH(QByteArray, type);
    bool read = false;
    const auto readMessage = [&read] {
        read = true;
        return Message{kRegistered, kOtherThread, 7};
    };
    QVERIFY(!BroadcastRule::notice(type, readMessage, kRegistered, kOwnThread));
    QVERIFY(!read);
}

void BroadcastRuleTest::aForeignMessageNumberIsNoNotice_data()
{
    QTest::addColumn<quint32>("number");
    QTest::newRow("one less") << kRegistered - 1;
    QTest::newRow("one more") << kRegistered + 1;
    QTest::newRow("zero") << quint32(0);
    QTest::newRow("same lower half") << (kRegistered | 0x10000);
}

void BroadcastRuleTest::aForeignMessageNumberIsNoNotice()
{
    QFETCH(quint32, number);
    QVERIFY(!noticeIn({number, kOtherThread, 7}));
}

void BroadcastRuleTest::withoutARegisteredNumberNothingIsANotice()
{
    QVERIFY(!noticeIn({0, kOtherThread, 7}, 0));
    QVERIFY(!noticeIn({kRegistered, kOtherThread, 7}, 0));
}

void BroadcastRuleTest::aBroadcastOfTheOwnThreadIsNoNotice()
{
    QVERIFY(!noticeIn({kRegistered, kOwnThread, 7}));
}

void BroadcastRuleTest::aThreadThatDiffersInItsHighBitsIsAnotherOne()
{
    const quint64 wide = (quint64(1) << 32) + kOwnThread;
    QVERIFY(noticeIn({kRegistered, wide, 7}) == (Notice{kOwnThread, 7}));
}

void BroadcastRuleTest::bothNumbersAreCutTo32Bits()
{
    QVERIFY(noticeIn({kRegistered, 0xAAAAAAAA80000001, 0xBBBBBBBBFFFFFFFF})
            == (Notice{0x80000001, 0xFFFFFFFF}));
}

void BroadcastRuleTest::aNoticeByAnotherWayFollowsTheSameRule()
{
    QVERIFY(!BroadcastRule::noticeFromOthers(kOwnThread, 7, kOwnThread));
    QVERIFY(BroadcastRule::noticeFromOthers(kOtherThread, 7, kOwnThread)
            == (Notice{kOtherThread, 7}));
}

QTEST_GUILESS_MAIN(BroadcastRuleTest)
#include "BroadcastRuleTest.moc"
