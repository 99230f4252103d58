#include "settings/dialogs/ProgramStyle.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QMenu>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QtTest>

#include <memory>

class ProgramStyleTest : public QObject {
    Q_OBJECT

private slots:
    void itIsFusion();
    void aDisabledTextHasNoShadow();
    void aBoxHasAnOutlineCheckedOrNot_data();
    void aBoxHasAnOutlineCheckedOrNot();
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

void ProgramStyleTest::aBoxHasAnOutlineCheckedOrNot_data()
{
    QTest::addColumn<bool>("isGroup");
    QTest::addColumn<bool>("isChecked");
    QTest::newRow("check box") << false << false;
    QTest::newRow("checked") << false << true;
    QTest::newRow("group") << true << false;
    QTest::newRow("checked group") << true << true;
}

void ProgramStyleTest::aBoxHasAnOutlineCheckedOrNot()
{
    QFETCH(bool, isGroup);
    QFETCH(bool, isChecked);
    QPalette colours(Qt::white, QColor(0x35, 0x35, 0x35));
    const QColor outline = ProgramStyle::boxOutline(colours);
    QCOMPARE(outline, QColor(0x9a, 0x9a, 0x9a));
    const std::unique_ptr<QStyle> style(ProgramStyle::create());
    QCheckBox box;
    QGroupBox group(QStringLiteral("title"));
    group.setCheckable(true);
    group.setChecked(isChecked);
    box.setChecked(isChecked);
    QWidget &widget = isGroup ? static_cast<QWidget &>(group) : box;
    widget.setPalette(colours);
    widget.setStyle(style.get());
    widget.resize(120, 60);
    QRect place;
    if (isGroup) {
        QStyleOptionGroupBox option;
        option.initFrom(&group);
        option.subControls = QStyle::SC_All;
        option.text = group.title();
        place = style->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox,
                                      &group);
    } else {
        QStyleOptionButton option;
        option.initFrom(&box);
        place = style->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &box);
    }
    const QImage picture = widget.grab().toImage();
    for (const QPoint &corner :
         {place.topLeft(), place.topRight(), place.bottomLeft(), place.bottomRight()})
        QCOMPARE(picture.pixelColor(corner), outline);
}

QTEST_MAIN(ProgramStyleTest)
#include "ProgramStyleTest.moc"
