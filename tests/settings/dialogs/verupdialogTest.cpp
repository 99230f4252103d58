#include "settings/dialogs/verupdialog.h"

#include "tests/support/Patience.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

/// The dialog on the screen.
class Shown {
public:
    Shown() : icon(32, 32), dialog(QStringLiteral("sarvik"), QStringLiteral("5.00"), filled())
    {
        dialog.show();
        dialog.activateWindow();
        if (!QTest::qWaitForWindowActive(&dialog, kPatienceMilliseconds))
            qFatal("the dialog is not on the screen");
    }

    template <typename Widget> Widget *child(const char *name) const
    {
        return dialog.findChild<Widget *>(QLatin1String(name));
    }

    QPixmap icon;
    verupdialog dialog;

private:
    const QPixmap &filled()
    {
        icon.fill(Qt::red);
        return icon;
    }
};

class RequestCounter : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &) override
    {
        ++s_requests;
        return {QNetworkProxy(QNetworkProxy::NoProxy)};
    }

    static int s_requests;
};

int RequestCounter::s_requests = 0;

} // namespace

class verupdialogTest : public QObject {
    Q_OBJECT

private slots:
    void theWindowIsTitledVersionWithoutAHelpButton();
    void theTextBeginsWithNameAndVersion();
    void aPlaceholderInTheNameStaysAsItIs();
    void theIconIsShown();
    void theNewVersionWidgetsAreHidden();
    void theTextOfTheHiddenLabels();
    void okReturnAndEscapeClose_data();
    void okReturnAndEscapeClose();
    void aMissingIconLeavesTheTextReadable();
    void noRequestIsSent();
};

void verupdialogTest::theWindowIsTitledVersionWithoutAHelpButton()
{
    const Shown shown;
    QCOMPARE(shown.dialog.windowTitle(), QStringLiteral("Version"));
    QVERIFY(!shown.dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

void verupdialogTest::theTextBeginsWithNameAndVersion()
{
    const Shown shown;
    const auto *label = shown.child<QLabel>("lbl_version");
    QCOMPARE(label->text().section(QLatin1Char('\n'), 0, 0), QStringLiteral("sarvik ver 5.00"));
    QCOMPARE(label->toolTip(),
             QDir::toNativeSeparators(QCoreApplication::applicationDirPath() + QLatin1Char('/')));
}

void verupdialogTest::aPlaceholderInTheNameStaysAsItIs()
{
    const verupdialog dialog(QStringLiteral("a<b>%1"), QStringLiteral("%2"), QPixmap());
    const auto *label = dialog.findChild<QLabel *>(QStringLiteral("lbl_version"));
    QVERIFY(label->text().startsWith(QStringLiteral("a<b>%1 ver %2\n")));
    QCOMPARE(label->textFormat(), Qt::PlainText);
}

void verupdialogTest::theIconIsShown()
{
    const Shown shown;
    const auto *label = shown.child<QLabel>("lbl_icon");
    QCOMPARE(label->pixmap(Qt::ReturnByValue).toImage(), shown.icon.toImage());
    QVERIFY(label->width() >= 32 && label->height() >= 32);
}

void verupdialogTest::theNewVersionWidgetsAreHidden()
{
    const Shown shown;
    QVERIFY(shown.child<QWidget>("lbl_newVersionCheck")->isHidden());
    QVERIFY(shown.child<QWidget>("lbl_newVersionFound")->isHidden());
    QVERIFY(shown.child<QWidget>("bar_newVersion")->isHidden());
}

void verupdialogTest::theTextOfTheHiddenLabels()
{
    const Shown shown;
    QCOMPARE(shown.child<QLabel>("lbl_newVersionCheck")->text(),
             QStringLiteral("新バージョンチェック"));
    QCOMPARE(shown.child<QLabel>("lbl_newVersionFound")->text(),
             QStringLiteral("新バージョンが見つかりました"));
}

void verupdialogTest::okReturnAndEscapeClose_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("OK") << 0;
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
}

void verupdialogTest::okReturnAndEscapeClose()
{
    QFETCH(int, key);
    Shown shown;
    auto *ok = shown.child<QPushButton>("pb_ok");
    QCOMPARE(ok->text(), QStringLiteral("OK"));
    QVERIFY(ok->hasFocus());
    if (key == 0)
        QTest::mouseClick(ok, Qt::LeftButton);
    else
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
    QVERIFY(!shown.dialog.isVisible());
}

void verupdialogTest::aMissingIconLeavesTheTextReadable()
{
    verupdialog dialog(QStringLiteral("sarvik"), QStringLiteral("5.00"), QPixmap());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog, kPatienceMilliseconds));
    const auto *label = dialog.findChild<QLabel *>(QStringLiteral("lbl_version"));
    QVERIFY(label->width() >= label->sizeHint().width());
    QVERIFY(label->height() >= label->sizeHint().height());
}

void verupdialogTest::noRequestIsSent()
{
    RequestCounter::s_requests = 0;
    // The application's from here on; every request asks it for a way.
    QNetworkProxyFactory::setApplicationProxyFactory(new RequestCounter);
    {
        const Shown shown;
        QTest::qWait(50);
        QTest::mouseClick(shown.child<QPushButton>("pb_ok"), Qt::LeftButton);
        QTest::qWait(50);
    }
    QCOMPARE(RequestCounter::s_requests, 0);
    // That it would have been counted:
    QNetworkAccessManager manager;
    const std::unique_ptr<QNetworkReply> reply(
        manager.get(QNetworkRequest(QUrl(QStringLiteral("http://host.invalid/")))));
    QTRY_VERIFY_WITH_TIMEOUT(RequestCounter::s_requests > 0, kPatienceMilliseconds);
    reply->abort();
    QNetworkProxyFactory::setApplicationProxyFactory(nullptr);
}

QTEST_MAIN(verupdialogTest)
#include "verupdialogTest.moc"
