#include "view/LogChooserFile.h"

#include "tests/support/ScratchFolder.h"

#include <QSettings>
#include <QTest>

#include <iterator>
#include <random>

class LogChooserFileTest : public QObject {
    Q_OBJECT

private slots:
    void aMissingFileSaysNothing();
    void everyKeyIsReadButThePosition();
    void whatIsSavedIsReadAgain();
    void theToolkitReadsWhatWasSaved();
    void whatElseIsInTheFileStays();
    void aSizeThatIsNoneIsNotTaken_data();
    void aSizeThatIsNoneIsNotTaken();
    void aFileThatCannotBeReplacedIsTold();
    void anyBytesAreRead();
};

namespace {

const QString kName = QStringLiteral("fileDialog.ini");

LogChooserFile::Geometry geometryOf(const QByteArray &content)
{
    const ScratchFolder folder;
    folder.write(kName, content);
    return LogChooserFile(folder.path()).read();
}

LogChooserFile::Geometry someGeometry()
{
    return {QPoint(-5, 40), QSize(700, 500), QByteArray("\0\1v", 3), QByteArray("\0\2h", 3)};
}

} // namespace

void LogChooserFileTest::aMissingFileSaysNothing()
{
    const ScratchFolder folder;
    const LogChooserFile::Geometry geometry = LogChooserFile(folder.path()).read();
    QVERIFY(!geometry.size.isValid());
    QVERIFY(geometry.splitterV.isEmpty());
    QVERIFY(geometry.splitterH.isEmpty());
    QVERIFY(!folder.exists(kName));
}

void LogChooserFileTest::everyKeyIsReadButThePosition()
{
    const auto geometry = geometryOf("[General]\npos=@Point(11 22)\nsize=@Size(500 450)\n"
                                     "splitterV=@ByteArray(left)\nsplitterH=@ByteArray(upper)\n");
    QCOMPARE(geometry.position, QPoint());
    QCOMPARE(geometry.size, QSize(500, 450));
    QCOMPARE(geometry.splitterV, QByteArray("left"));
    QCOMPARE(geometry.splitterH, QByteArray("upper"));
}

void LogChooserFileTest::whatIsSavedIsReadAgain()
{
    const ScratchFolder folder;
    QVERIFY(LogChooserFile(folder.path()).save(someGeometry()));
    const LogChooserFile::Geometry geometry = LogChooserFile(folder.path()).read();
    QCOMPARE(geometry.size, someGeometry().size);
    QCOMPARE(geometry.splitterV, someGeometry().splitterV);
    QCOMPARE(geometry.splitterH, someGeometry().splitterH);
}

void LogChooserFileTest::theToolkitReadsWhatWasSaved()
{
    const ScratchFolder folder;
    QVERIFY(LogChooserFile(folder.path()).save(someGeometry()));
    const QSettings settings(folder.filePath(kName), QSettings::IniFormat);
    QCOMPARE(settings.allKeys(),
             QStringList({QStringLiteral("pos"), QStringLiteral("size"),
                          QStringLiteral("splitterH"), QStringLiteral("splitterV")}));
    QCOMPARE(settings.value(QStringLiteral("pos")).toPoint(), QPoint(-5, 40));
    QCOMPARE(settings.value(QStringLiteral("size")).toSize(), QSize(700, 500));
    QCOMPARE(settings.value(QStringLiteral("splitterV")).toByteArray(), QByteArray("\0\1v", 3));
    QCOMPARE(settings.value(QStringLiteral("splitterH")).toByteArray(), QByteArray("\0\2h", 3));
}

void LogChooserFileTest::whatElseIsInTheFileStays()
{
    const ScratchFolder folder;
    folder.write(kName, "; mine\n[General]\nsize=@Size(1 2)\n[other]\nkey=value\n");
    QVERIFY(LogChooserFile(folder.path()).save(someGeometry()));
    const QByteArray content = folder.read(kName);
    QVERIFY(content.startsWith("; mine\n"));
    QVERIFY(content.contains("size=@Size(700 500)\n"));
    QVERIFY(content.contains("[other]\nkey=value\n"));
}

void LogChooserFileTest::aSizeThatIsNoneIsNotTaken_data()
{
    QTest::addColumn<QByteArray>("size");
    QTest::newRow("text") << QByteArray("large");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("nothing") << QByteArray("@Size(0 0)");
    QTest::newRow("flat") << QByteArray("@Size(500 0)");
    QTest::newRow("negative") << QByteArray("@Size(-1 500)");
    QTest::newRow("a point") << QByteArray("@Point(500 500)");
    QTest::newRow("cut") << QByteArray("@Size(500");
}

void LogChooserFileTest::aSizeThatIsNoneIsNotTaken()
{
    QFETCH(QByteArray, size);
    QVERIFY(!geometryOf("[General]\nsize=" + size + "\n").size.isValid());
}

void LogChooserFileTest::aFileThatCannotBeReplacedIsTold()
{
    const ScratchFolder folder;
    QVERIFY(!LogChooserFile(folder.filePath(QStringLiteral("none/"))).save(someGeometry()));
    folder.makeFolder(kName);
    QVERIFY(!LogChooserFile(folder.path()).save(someGeometry()));
}

void LogChooserFileTest::anyBytesAreRead()
{
    static const char *const pieces[] = {
        "[General]\n", "size=", "splitterV=",   "splitterH=", "@Size(", "@Point(",
        "@ByteArray(", ")",     "99999999999",  "\n",         "\\x",    "\"",
        "@Variant(",   " ",     "@Invalid()\n", "-1"};
    std::mt19937 random(46);
    for (int file = 0; file < 200; ++file) {
        QByteArray content;
        for (int i = 0; i < 200; ++i) {
            if (random() % 4 == 0)
                content += static_cast<char>(random());
            else
                content += pieces[random() % std::size(pieces)];
        }
        const LogChooserFile::Geometry geometry = geometryOf(content);
        QVERIFY(!geometry.size.isValid() || !geometry.size.isEmpty());
    }
}

QTEST_GUILESS_MAIN(LogChooserFileTest)
#include "LogChooserFileTest.moc"
