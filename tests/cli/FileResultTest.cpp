#include "cli/FileResult.h"

#include <QTest>

class FileResultTest : public QObject {
    Q_OBJECT

private slots:
    void eachHeadBeginsAFile();
    void nothingGivesNoFiles();
    void aHitThatLooksLikeAHeadStaysAHit();
    void aPathMayBeginWithColons();
};

namespace {

QVector<FileResult> filesOf(const QStringList &entries)
{
    QVector<FileResult> files;
    FileResult::visitEach(entries, [&files](const FileResult &file) { files.append(file); });
    return files;
}

} // namespace

void FileResultTest::eachHeadBeginsAFile()
{
    const QVector<FileResult> files =
        filesOf({QStringLiteral("::a"), QStringLiteral("      1:    1:x"),
                 QStringLiteral("      2:    1:y"), QStringLiteral("::b"), QStringLiteral("::c"),
                 QStringLiteral("      3:    1:z")});
    QCOMPARE(files.size(), 3);
    QCOMPARE(files.at(0).path, QStringLiteral("a"));
    QCOMPARE(files.at(0).hits,
             QStringList({QStringLiteral("      1:    1:x"), QStringLiteral("      2:    1:y")}));
    QCOMPARE(files.at(1).path, QStringLiteral("b"));
    QVERIFY(files.at(1).hits.isEmpty());
    QCOMPARE(files.at(2).hits, QStringList(QStringLiteral("      3:    1:z")));
}

void FileResultTest::nothingGivesNoFiles()
{
    QVERIFY(filesOf({}).isEmpty());
}

void FileResultTest::aHitThatLooksLikeAHeadStaysAHit()
{
    const QVector<FileResult> files =
        filesOf({QStringLiteral("::a"), QStringLiteral("      1:    1:::b")});
    QCOMPARE(files.size(), 1);
    QCOMPARE(files.at(0).hits.size(), 1);
}

void FileResultTest::aPathMayBeginWithColons()
{
    QCOMPARE(filesOf({QStringLiteral("::::a")}).at(0).path, QStringLiteral("::a"));
}

QTEST_GUILESS_MAIN(FileResultTest)
#include "FileResultTest.moc"
