#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"
#include "view/HighlightColour.h"

#include <QImage>
#include <QtTest>

#include <cstdlib>

namespace {

/// The pictures are kept in few colours.
bool isLike(const QColor &one, const QColor &other)
{
    constexpr int kNear = 12;
    return std::abs(one.red() - other.red()) <= kNear
        && std::abs(one.green() - other.green()) <= kNear
        && std::abs(one.blue() - other.blue()) <= kNear;
}

} // namespace

/// Whether the pictures are of the program as it is.
class HelpPicturesTest : public QObject {
    Q_OBJECT

private slots:
    void hitsHaveTheColoursOfTheirMarks_data();
    void hitsHaveTheColoursOfTheirMarks();
};

void HelpPicturesTest::hitsHaveTheColoursOfTheirMarks_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {"sarvik/images/main.png", "window.png"})
        QTest::newRow(file) << QString(QLatin1String(file));
}

void HelpPicturesTest::hitsHaveTheColoursOfTheirMarks()
{
    QFETCH(QString, file);
    const ScratchFolder folder;
    AppSettings::instance().load(folder.path());
    const QTextCharFormat mark = HighlightColours::formats(
        AppSettings::instance())[static_cast<std::size_t>(HighlightColour::Find1)];
    const QImage picture(QStringLiteral(SARVIK_SOURCES "doc/") + file);
    QVERIFY(!picture.isNull());
    // Along each row of pixels: text with the mark's ground close to its left.
    constexpr int kStroke = 6;
    int ground = 0;
    int letters = 0;
    for (int y = 0; y < picture.height(); ++y) {
        int lastOfMark = -kStroke;
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (isLike(pixel, mark.background().color())) {
                lastOfMark = x;
                ++ground;
            } else if (x - lastOfMark < kStroke && isLike(pixel, mark.foreground().color())) {
                ++letters;
            }
        }
    }
    QVERIFY2(ground > 2000, qPrintable(QString::number(ground)));
    QVERIFY2(letters > 400, qPrintable(QString::number(letters)));
}

QTEST_MAIN(HelpPicturesTest)
#include "HelpPicturesTest.moc"
