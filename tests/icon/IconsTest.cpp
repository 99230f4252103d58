#include "icon/Icons.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace {

const char *const kNames[] = {
    // The form's switches.
    "AaOn", "AaOff", "WordOn", "WordOff", "[A-Z]On", "[A-Z]Off",
    // The form's other buttons.
    "plus", "reenter", "conditions", "conditionsInForce",
    // Menus and tool bar.
    "application_put", "exit", "option", "counter", "question", "regular_expression_delimiter",
    "sarvik", "qt-icon", "edit-find-4", "go-down-5", "go-up-5", "arrow-back", "arrow-forward",
    // The input history dialog.
    "folder_explorer", "editup", "editdown", "delete"};

QString resource(const QString &name)
{
    return QStringLiteral(":/icon/%1.png").arg(name);
}

double linear(int channel)
{
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

// Relative luminance and contrast ratio as for text on screens: 1 to 21.
double luminance(QRgb colour)
{
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour))
        + 0.0722 * linear(qBlue(colour));
}

double contrast(QRgb one, QRgb other)
{
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

// The part of the image, 0 to 1, that is painted and can be told from the ground.
double visibleShare(const QImage &image, QRgb ground)
{
    int visible = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) > 200 && contrast(pixel, ground) >= 2.5)
                ++visible;
        }
    }
    return double(visible) / (image.width() * image.height());
}

// The same for a ground of the icons' own lightness, where the hue helps: as a
// distance in the cube of colours.
double distinctShare(const QImage &image, QRgb ground)
{
    constexpr double kDistinct = 130;
    int distinct = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const double distance =
                std::hypot(qRed(pixel) - qRed(ground), qGreen(pixel) - qGreen(ground),
                           qBlue(pixel) - qBlue(ground));
            if (qAlpha(pixel) > 200 && distance >= kDistinct)
                ++distinct;
        }
    }
    return double(distinct) / (image.width() * image.height());
}

} // namespace

class IconsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void anIconIsThereAt100And200Percent_data();
    void anIconIsThereAt100And200Percent();
    void anIconCanBeSeenOnAnyGround_data();
    void anIconCanBeSeenOnAnyGround();
    void aMenusIconCanBeSeenOnAHighlightedRow_data();
    void aMenusIconCanBeSeenOnAHighlightedRow();
    void aSwitchLooksDifferentOnAndOff_data();
    void aSwitchLooksDifferentOnAndOff();
    void aSwitchThatIsOnCanBeSeenOnAPressedButton_data();
    void aSwitchThatIsOnCanBeSeenOnAPressedButton();
    void aPathWithoutItsFirstSlashNamesTheSameImage();
    void everyDrawingHasItsImages();
    void theProgramHasItsIconInAllSizes_data();
    void theProgramHasItsIconInAllSizes();
    void theProgramsIconIsTheImageOfItsName();
    void theWindowsIconHoldsAllSizes();
};

void IconsTest::initTestCase()
{
    Icons::load();
    Icons::load();
}

void IconsTest::anIconIsThereAt100And200Percent_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("pixels");
    for (const char *name : kNames)
        QTest::newRow(name) << QString::fromLatin1(name)
                            << (qstrcmp(name, "sarvik") == 0 ? 48 : 24);
}

void IconsTest::anIconIsThereAt100And200Percent()
{
    QFETCH(QString, name);
    QFETCH(int, pixels);
    QCOMPARE(QImage(resource(name)).size(), QSize(pixels, pixels));
    QCOMPARE(QImage(resource(name + QLatin1String("@2x"))).size(), QSize(2 * pixels, 2 * pixels));
}

void IconsTest::anIconCanBeSeenOnAnyGround_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : kNames)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void IconsTest::anIconCanBeSeenOnAnyGround()
{
    QFETCH(QString, name);
    for (const QString &variant : {name, QString(name + QLatin1String("@2x"))}) {
        const QImage image(resource(variant));
        for (const QRgb ground : {0xff353535, 0xffefefef, 0xffffffff})
            QVERIFY2(visibleShare(image, ground) > 0.07, qPrintable(variant));
        // A sign, not a slab: something of the ground is left.
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    }
}

void IconsTest::aMenusIconCanBeSeenOnAHighlightedRow_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"application_put", "exit", "option", "counter", "question",
                             "regular_expression_delimiter", "sarvik", "qt-icon"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void IconsTest::aMenusIconCanBeSeenOnAHighlightedRow()
{
    QFETCH(QString, name);
    // The default palette's Highlight.
    const QRgb ground = 0xff2a82da;
    for (const QString &variant : {name, QString(name + QLatin1String("@2x"))})
        QVERIFY2(distinctShare(QImage(resource(variant)), ground) > 0.07, qPrintable(variant));
}

void IconsTest::aSwitchLooksDifferentOnAndOff_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("ignore case") << QStringLiteral("Aa");
    QTest::newRow("whole word") << QStringLiteral("Word");
    QTest::newRow("regular expression") << QStringLiteral("[A-Z]");
}

void IconsTest::aSwitchLooksDifferentOnAndOff()
{
    QFETCH(QString, name);
    const QImage on(resource(name + QLatin1String("On")));
    const QImage off(resource(name + QLatin1String("Off")));
    int different = 0;
    for (int y = 0; y < on.height(); ++y) {
        for (int x = 0; x < on.width(); ++x) {
            const bool sameCover = std::abs(qAlpha(on.pixel(x, y)) - qAlpha(off.pixel(x, y))) < 64;
            different += sameCover ? 0 : 1;
        }
    }
    QVERIFY(different * 2 > on.width() * on.height());
}

void IconsTest::aSwitchThatIsOnCanBeSeenOnAPressedButton_data()
{
    aSwitchLooksDifferentOnAndOff_data();
}

void IconsTest::aSwitchThatIsOnCanBeSeenOnAPressedButton()
{
    QFETCH(QString, name);
    QVERIFY(visibleShare(QImage(resource(name + QLatin1String("On"))), 0xff884444) > 0.3);
}

void IconsTest::aPathWithoutItsFirstSlashNamesTheSameImage()
{
    QCOMPARE(QImage(QStringLiteral(":icon/sarvik.png")),
             QImage(QStringLiteral(":/icon/sarvik.png")));
    QVERIFY(!QImage(QStringLiteral(":icon/[A-Z]On.png")).isNull());
}

void IconsTest::everyDrawingHasItsImages()
{
    const QStringList drawings =
        QDir(QStringLiteral(ICON_SOURCES)).entryList({QStringLiteral("*.svg")}, QDir::Files);
    QCOMPARE(drawings.size(), int(std::size(kNames)));
    for (const QString &drawing : drawings) {
        const QString name = drawing.chopped(4);
        QVERIFY2(QFile::exists(resource(name)), qPrintable(name));
        QVERIFY2(QFile::exists(resource(name + QLatin1String("@2x"))), qPrintable(name));
    }
}

void IconsTest::theProgramHasItsIconInAllSizes_data()
{
    QTest::addColumn<int>("pixels");
    for (const int pixels : {16, 24, 32, 48, 64, 128, 256})
        QTest::addRow("%d", pixels) << pixels;
}

void IconsTest::theProgramHasItsIconInAllSizes()
{
    QFETCH(int, pixels);
    const QSize size(pixels, pixels);
    const QIcon icon = Icons::program();
    QVERIFY(icon.availableSizes().contains(size));
    const QImage image = icon.pixmap(size).toImage();
    QCOMPARE(image.size(), size);
    QVERIFY(visibleShare(image, 0xff353535) > 0.07);
}

void IconsTest::theProgramsIconIsTheImageOfItsName()
{
    // The other sizes are drawn for this one alone: no other file could be it.
    QVERIFY(!QFile::exists(resource(QStringLiteral("program/48"))));
    const QImage expected(resource(QStringLiteral("sarvik")));
    const QImage shown = Icons::program().pixmap(expected.size()).toImage();
    const auto format = QImage::Format_ARGB32_Premultiplied;
    QCOMPARE(shown.convertToFormat(format), expected.convertToFormat(format));
}

void IconsTest::theWindowsIconHoldsAllSizes()
{
    QFile file(QStringLiteral(ICON_SOURCES "/sarvik.ico"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    // Reserved, type "icon" and the number of images, two bytes each, low byte
    // first; then an entry of 16 bytes for each, which begins with its width.
    QCOMPARE(bytes.left(6), QByteArray("\0\0\1\0\7\0", 6));
    QList<int> widths;
    for (int i = 0; i < 7; ++i)
        widths << uchar(bytes.at(6 + 16 * i));
    // A width of 256 is written as 0.
    QCOMPARE(widths, (QList<int>{16, 24, 32, 48, 64, 128, 0}));
}

QTEST_MAIN(IconsTest)
#include "IconsTest.moc"
