#include "settings/AppSettings.h"

#include "tests/support/ScratchFolder.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

class AppSettingsScreenTest : public QObject {
    Q_OBJECT

private slots:
    void aWindowLargerThanTheDesktopIsCutDown();
    void aWindowAsLargeAsTheDesktopIsKept();
};

namespace {

QSize loadedSize(const QSize &stored)
{
    const ScratchFolder folder;
    folder.write(
        QStringLiteral("sarvik.ini"),
        QStringLiteral("size=@Size(%1 %2)").arg(stored.width()).arg(stored.height()).toLatin1());
    AppSettings settings;
    settings.load(folder.path());
    return settings.size;
}

QSize desktop()
{
    return QGuiApplication::primaryScreen()->virtualSize();
}

} // namespace

void AppSettingsScreenTest::aWindowLargerThanTheDesktopIsCutDown()
{
    QCOMPARE(loadedSize(desktop() + QSize(1, 1)), QSize(800, 800));
    QCOMPARE(loadedSize(QSize(desktop().width() + 1, 500)), QSize(800, 500));
}

void AppSettingsScreenTest::aWindowAsLargeAsTheDesktopIsKept()
{
    if (desktop().width() <= 600 || desktop().height() <= 400)
        QSKIP("the desktop is smaller than the smallest window");
    QCOMPARE(loadedSize(desktop()), desktop());
    QCOMPARE(loadedSize(desktop() - QSize(1, 1)), desktop() - QSize(1, 1));
}

QTEST_MAIN(AppSettingsScreenTest)
#include "AppSettingsScreenTest.moc"
