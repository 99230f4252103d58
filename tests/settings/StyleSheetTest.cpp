#include "settings/StyleSheet.h"

#include "tests/support/ScratchFolder.h"

#include <QTest>

class StyleSheetTest : public QObject {
    Q_OBJECT

private slots:
    void aMissingFileGivesNoSheet();
    void anUnreadableFileGivesAnEmptySheet();
    void anEmptyFileGivesAnEmptySheet();
    void pathsStartFromTheDirectory();
    void everyPathIsChanged();
    void capitalsAreLeftUnchanged();
    void theSheetEndsAtTheFirstNul();
    void theSheetIsUtf8();
};

namespace {

const QString kDirectory = QStringLiteral("/opt/サ/");

QString sheet(const QByteArray &bytes)
{
    return StyleSheet::fromBytes(bytes, kDirectory);
}

} // namespace

void StyleSheetTest::aMissingFileGivesNoSheet()
{
    const ScratchFolder folder;
    QVERIFY(!StyleSheet::read(folder.path()).has_value());
}

void StyleSheetTest::anUnreadableFileGivesAnEmptySheet()
{
    const ScratchFolder folder;
    folder.makeFolder(QStringLiteral("sarvify.qss"));
    const auto read = StyleSheet::read(folder.path());
    QVERIFY(read.has_value());
    QCOMPARE(*read, QString());
}

void StyleSheetTest::anEmptyFileGivesAnEmptySheet()
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("sarvify.qss"), "");
    QVERIFY(StyleSheet::read(folder.path()).has_value());
    QCOMPARE(*StyleSheet::read(folder.path()), QString());
}

void StyleSheetTest::pathsStartFromTheDirectory()
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("sarvify.qss"), "QWidget { image: url(images/x.png) }");
    QCOMPARE(*StyleSheet::read(folder.path()),
             QStringLiteral("QWidget { image: url(%1images/x.png) }").arg(folder.path()));
}

void StyleSheetTest::everyPathIsChanged()
{
    QCOMPARE(sheet("url(a)url(b) url (c)"),
             QStringLiteral("url(%1a)url(%1b) url (c)").arg(kDirectory));
}

void StyleSheetTest::capitalsAreLeftUnchanged()
{
    QCOMPARE(sheet("URL(x) Url(y)"), QStringLiteral("URL(x) Url(y)"));
}

void StyleSheetTest::theSheetEndsAtTheFirstNul()
{
    QCOMPARE(sheet(QByteArray("a\0b\0c", 5)), QStringLiteral("a"));
    QCOMPARE(sheet(QByteArray("\0b", 2)), QString());
}

void StyleSheetTest::theSheetIsUtf8()
{
    QCOMPARE(sheet("/* 検索 */"), QStringLiteral("/* 検索 */"));
}

QTEST_GUILESS_MAIN(StyleSheetTest)
#include "StyleSheetTest.moc"
