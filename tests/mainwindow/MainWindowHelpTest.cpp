#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QUrl>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

/// The entries and keys of the help. Instead of a browser the test gets the
/// documents.
class MainWindowHelpTest : public WindowTest {
    Q_OBJECT

public slots:
    void openUrl(const QUrl &url) { m_url = url; }

private slots:
    void init();
    void cleanup();

    void documentsAreOpened_data();
    void documentsAreOpened();
    void f1OpensTheHelp_data();
    void f1OpensTheHelp();
    void theToolkitTellsOfItself();

private:
    QUrl m_url;
};

void MainWindowHelpTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->open();
    m_url.clear();
    QDesktopServices::setUrlHandler(text("file"), this, "openUrl");
}

void MainWindowHelpTest::cleanup()
{
    QDesktopServices::unsetUrlHandler(text("file"));
    m_fixture.reset();
}

void MainWindowHelpTest::documentsAreOpened_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("document");
    QTest::newRow("help") << QByteArray("actionHelp") << text("/doc/sarvik/index.html");
    QTest::newRow("regular expressions")
        << QByteArray("actionRegExpHelp") << text("/doc/sarvik/sarvik_regexp.html");
}

void MainWindowHelpTest::documentsAreOpened()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, document);
    m_fixture->child<QAction>(action.constData())->trigger();
    QCOMPARE(m_url, QUrl::fromLocalFile(WindowFixture::applicationFile(QString()) + document));
}

void MainWindowHelpTest::f1OpensTheHelp_data()
{
    QTest::addColumn<QString>("widget");
    for (const char *name : {"pathEdit", "maskCombo", "resultView", "preview", "subdirCheck"})
        QTest::newRow(name) << text(name);
}

void MainWindowHelpTest::f1OpensTheHelp()
{
    QFETCH(QString, widget);
    QTest::keyClick(m_fixture->window().findChild<QWidget *>(widget), Qt::Key_F1);
    QCOMPARE(m_url.fileName(), text("index.html"));
}

void MainWindowHelpTest::theToolkitTellsOfItself()
{
    bool told = false;
    // The box may be modal or come with the next turn of the event loop.
    QTimer closing;
    connect(&closing, &QTimer::timeout, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        told = box->text().contains(text("Qt"));
        box->close();
    });
    closing.start(0);
    m_fixture->child<QAction>("actionAboutQt")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(told, kPatienceMilliseconds);
}

QTEST_MAIN(MainWindowHelpTest)
#include "MainWindowHelpTest.moc"
