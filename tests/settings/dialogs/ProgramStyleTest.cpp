#include "settings/dialogs/ProgramStyle.h"

#include <QMenu>
#include <QStyle>
#include <QStyleFactory>
#include <QtTest>

#include <memory>

class ProgramStyleTest : public QObject {
    Q_OBJECT

private slots:
    void itIsFusion();
    void aDisabledTextHasNoShadow();
};

namespace {

const QColor kShadow(0xfe, 0x01, 0xfd);

/// How many pixels have the colour that texts are shadowed with.
int shadow(QStyle *style)
{
    QPalette colours(Qt::white, QColor(0x35, 0x35, 0x35));
    colours.setColor(QPalette::Light, kShadow);
    colours.setColor(QPalette::Disabled, QPalette::Text, Qt::darkGreen);
    QMenu menu;
    menu.setStyle(style);
    menu.setPalette(colours);
    menu.addAction(QStringLiteral("(C)HHHHHH"))->setEnabled(false);
    menu.resize(menu.sizeHint());
    const QImage picture = menu.grab().toImage().convertToFormat(QImage::Format_RGB32);
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) == kShadow;
    }
    return count;
}

} // namespace

void ProgramStyleTest::itIsFusion()
{
    const std::unique_ptr<QStyle> style(ProgramStyle::create());
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    QCOMPARE(style->objectName(), fusion->objectName());
    for (const QStyle::PixelMetric metric :
         {QStyle::PM_ButtonMargin, QStyle::PM_MenuBarPanelWidth, QStyle::PM_SplitterWidth})
        QCOMPARE(style->pixelMetric(metric), fusion->pixelMetric(metric));
}

void ProgramStyleTest::aDisabledTextHasNoShadow()
{
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    QVERIFY(shadow(fusion.get()) > 0);
    const std::unique_ptr<QStyle> style(ProgramStyle::create());
    QCOMPARE(shadow(style.get()), 0);
}

QTEST_MAIN(ProgramStyleTest)
#include "ProgramStyleTest.moc"
