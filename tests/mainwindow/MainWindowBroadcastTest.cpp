#include "tests/mainwindow/WindowTest.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "tests/app/broadcast/SessionBus.h"
#include <QCompleter>
#include <QLineEdit>
#include <QTest>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList s_messages;

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    s_messages << message;
}

/// No thread of this program.
constexpr uint kOtherThread = 0xFFFFFF00;

} // namespace

/// A notice of another program, from the session bus to the form.
class MainWindowBroadcastTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aNoticeReloadsTheKeywords();
    void aNoticeLeavesTheKeywordsThatAreNotSavedYet();
};

void MainWindowBroadcastTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
}

void MainWindowBroadcastTest::aNoticeReloadsTheKeywords()
{
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    m_fixture->open();
    QLineEdit *field = m_fixture->keyword1()->lineEdit();
    field->setText(text("being typed"));
    field->setCursorPosition(3);
    QFile history(WindowFixture::applicationFile(text("keywordhistory.ini")));
    QVERIFY(history.open(QIODevice::WriteOnly));
    history.write("[keyword]\n001=000of another program\n");
    history.close();
    QVERIFY(AppSettings::instance().keywordHistory->entries().empty());
    qInstallMessageHandler(keepMessage);
    // The connection is made in the background, so it is sent until it is heard.
    for (int i = 0; i < 100 && AppSettings::instance().keywordHistory->entries().empty(); ++i) {
        bus.send(text("/sarvedit/broadcast"), text("sarvedit.broadcast.message"),
                 {text("uint32:%1").arg(kOtherThread), text("uint32:7")});
        QTest::qWait(50);
    }
    qInstallMessageHandler(nullptr);
    QCOMPARE(AppSettings::instance().keywordHistory->keywords(),
             QStringList(text("of another program")));
    QCOMPARE(m_fixture->keyword1()->itemText(0), text("of another program"));
    QCOMPARE(m_fixture->keyword1()->completer()->model()->rowCount(), 1);
    QCOMPARE(field->text(), text("being typed"));
    QCOMPARE(field->cursorPosition(), 3);
    QVERIFY2(s_messages.contains(text("BoradCastMessage 4294967040 7")),
             qPrintable(s_messages.join(QLatin1Char('\n'))));
}

void MainWindowBroadcastTest::aNoticeLeavesTheKeywordsThatAreNotSavedYet()
{
    MainWindow &window = m_fixture->open();
    KeywordHistory &keywords = *AppSettings::instance().keywordHistory;
    keywords.load();
    keywords.add(text("of this window"), true, false, true);
    QFile history(WindowFixture::applicationFile(text("keywordhistory.ini")));
    QVERIFY(history.open(QIODevice::WriteOnly));
    history.write("[keyword]\n001=000new of another program\n");
    history.close();
    QVERIFY(QMetaObject::invokeMethod(&window, "onBoradCastMessage", Q_ARG(uint, kOtherThread),
                                      Q_ARG(uint, 7)));
    const QStringList expected{text("of this window"), text("new of another program")};
    QCOMPARE(keywords.keywords(), expected);
    QCOMPARE(m_fixture->keyword1()->itemText(0), expected.at(0));
    QCOMPARE(m_fixture->keyword1()->itemText(1), expected.at(1));
    QCOMPARE(m_fixture->keyword1()->completer()->model()->rowCount(), 2);
}

QTEST_MAIN(MainWindowBroadcastTest)
#include "MainWindowBroadcastTest.moc"
