#include "mainwindow/preview/PreviewFile.h"

#include "engine/CodeSet.h"
#include "engine/NativePath.h"
#include "mainwindow/preview/PreviewSaver.h"
#include "tests/support/EncodedTextGenerator.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QTest>
#include <QTextCodec>

class PreviewFileTest : public QObject {
    Q_OBJECT

private slots:
    void aTextIsShownInItsCodeSet_data();
    void aTextIsShownInItsCodeSet();
    void carriageReturnsAmongLineEndsSurvive_data();
    void carriageReturnsAmongLineEndsSurvive();
    void whatIsNoTextFileIsNotShown_data();
    void whatIsNoTextFileIsNotShown();
    void aBinaryFileIsNotShown();
    void aFileWithoutPermissionIsNotShown();
    void aFileAboveTheLimitIsNotShown();
    void thePathInTheMessageMayHoldPlaceMarks();
    void anEmptyFileIsShownEmpty();
    void theSizeLimitOfSearchesDoesNotCount();
    void aHundredMegabytesAreRead();
    void aDefaultFallBackIsReadWithTheLocalesCodec();
    void aNameThatIsNoTextIsRead();
    void theAttributesAreTheFiles();
    void theBytesOfAnUneditedSaveAreForetold_data();
    void theBytesOfAnUneditedSaveAreForetold();
};

namespace {

const QString kName = QStringLiteral("f.txt");

PreviewFile load(const QString &path, const DetectionSettings &settings = DetectionSettings())
{
    return PreviewFile::load(path, settings, [](const QString &, const QString &) {});
}

QString refusal(const QString &path)
{
    return path + QStringLiteral("プレビューできません。");
}

void verifyNotShown(const PreviewFile &file, const QString &path)
{
    QVERIFY(!file.readable);
    QVERIFY(!file.survives);
    QCOMPARE(file.text, refusal(path));
    QCOMPARE(file.path, path);
    QCOMPARE(file.attributes, NativeFile::kNoAttributes);
}

} // namespace

void PreviewFileTest::aTextIsShownInItsCodeSet_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<int>("lineEnd");
    QTest::addColumn<bool>("bom");
    QTest::newRow("Shift-JIS") << int(CodeSet::ShiftJis) << int(CodeSet::CrLf) << false;
    QTest::newRow("EUC-JP") << int(CodeSet::EucJp) << int(CodeSet::Lf) << false;
    QTest::newRow("ISO 2022-JP") << int(CodeSet::Iso2022Jp) << int(CodeSet::Lf) << false;
    QTest::newRow("UTF-8") << int(CodeSet::Utf8) << int(CodeSet::CrLf) << false;
    QTest::newRow("UTF-8, carriage returns") << int(CodeSet::Utf8) << int(CodeSet::Cr) << false;
    QTest::newRow("UTF-8 with a mark") << int(CodeSet::Utf8) << int(CodeSet::Lf) << true;
    QTest::newRow("UTF-16BE with a mark") << int(CodeSet::Utf16Be) << int(CodeSet::CrLf) << true;
    QTest::newRow("UTF-16LE with a mark") << int(CodeSet::Utf16Le) << int(CodeSet::CrLf) << true;
    QTest::newRow("UTF-32BE with a mark") << int(CodeSet::Utf32Be) << int(CodeSet::Lf) << true;
    QTest::newRow("UTF-32LE with a mark") << int(CodeSet::Utf32Le) << int(CodeSet::Lf) << true;
}

void PreviewFileTest::aTextIsShownInItsCodeSet()
{
    QFETCH(int, codeSet);
    QFETCH(int, lineEnd);
    QFETCH(bool, bom);
    const ScratchFolder folder;
    const QString text = QStringLiteral("日本語の文章です。検索の結果を表示します。\n二行目\n");
    const QByteArray bytes = PreviewText::encode(text, {codeSet, lineEnd, bom});
    const PreviewFile file = load(folder.write(kName, bytes));
    QVERIFY(file.readable);
    QCOMPARE(file.codeSet, codeSet);
    QCOMPARE(file.form.codeSet, codeSet);
    QCOMPARE(file.form.lineEnd, lineEnd);
    QCOMPARE(file.form.bom, bom);
    QCOMPARE(PreviewText::asEdited(file.text, file.form), text);
    QVERIFY(file.survives);
}

void PreviewFileTest::carriageReturnsAmongLineEndsSurvive_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("lineEnd");
    QTest::newRow("the first") << QByteArray("a\rb\nc\n") << int(CodeSet::Lf);
    QTest::newRow("among line feeds") << QByteArray("a\nb\rc\n") << int(CodeSet::Lf);
    QTest::newRow("the first, then pairs") << QByteArray("a\rb\r\nc\r\n") << int(CodeSet::CrLf);
    QTest::newRow("among pairs") << QByteArray("a\r\nb\rc\r\r\n") << int(CodeSet::CrLf);
    QTest::newRow("no line feed") << QByteArray("a\rb\rc\r") << int(CodeSet::Cr);
    QTest::newRow("far behind what detection sees")
        << QByteArray(100000, 'a') + "\rb\r" << int(CodeSet::Cr);
    QTest::newRow("with a paragraph separator")
        << QByteArray("a\xE2\x80\xA9z\rb\xE2\x80\xA8\n") << int(CodeSet::Lf);
}

void PreviewFileTest::carriageReturnsAmongLineEndsSurvive()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, lineEnd);
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, bytes));
    QCOMPARE(file.form.lineEnd, lineEnd);
    QVERIFY(file.survives);
    const QString unedited = PreviewText::asEdited(file.text, file.form);
    QCOMPARE(PreviewSaver::save(&file, unedited).result, PreviewSaver::Outcome::Result::Saved);
    QCOMPARE(folder.read(kName), bytes);
    QVERIFY(!PreviewSaver::losesCharacters(file, unedited));
}

void PreviewFileTest::whatIsNoTextFileIsNotShown_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"nothing", "folder", "FIFO", "device", "socket", "dangling link"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void PreviewFileTest::whatIsNoTextFileIsNotShown()
{
    QFETCH(QString, kind);
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    bool made = true;
    if (kind == QLatin1String("folder"))
        tree.folder("f.txt");
    else if (kind == QLatin1String("FIFO"))
        made = tree.fifo("f.txt");
    else if (kind == QLatin1String("device"))
        made = tree.device("f.txt");
    else if (kind == QLatin1String("socket"))
        made = tree.socket("f.txt");
    else if (kind == QLatin1String("dangling link"))
        made = tree.link("f.txt", "nowhere");
    if (!made)
        QSKIP("no such thing can be made here");
    verifyNotShown(load(folder.filePath(kName)), folder.filePath(kName));
}

void PreviewFileTest::aBinaryFileIsNotShown()
{
    const ScratchFolder folder;
    const QString path = folder.write(kName, QByteArray("ELF\1\0\0\0\0rest", 12));
    verifyNotShown(load(path), path);
    QVERIFY(load(path).codeSet < 0);
}

void PreviewFileTest::aFileWithoutPermissionIsNotShown()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    tree.file("f.txt");
    if (!tree.setMode("f.txt", 0000) || !tree.setMode(".", 0755))
        QSKIP("permissions mean nothing here");
    const OrdinaryUser user;
    if (!user.inForce())
        QSKIP("nobody without rights to run the test as");
    verifyNotShown(load(folder.filePath(kName)), folder.filePath(kName));
}

void PreviewFileTest::aFileAboveTheLimitIsNotShown()
{
    const ScratchFolder folder;
    const QString path = folder.write(kName, "0123456789");
    const auto box = [](const QString &, const QString &) {
    };
    QVERIFY(PreviewFile::load(path, DetectionSettings(), box, 10).readable);
    verifyNotShown(PreviewFile::load(path, DetectionSettings(), box, 9), path);
}

void PreviewFileTest::thePathInTheMessageMayHoldPlaceMarks()
{
    const ScratchFolder folder;
    const QString path = folder.filePath(QStringLiteral("%1%2.txt"));
    QCOMPARE(load(path).text, refusal(path));
}

void PreviewFileTest::anEmptyFileIsShownEmpty()
{
    const ScratchFolder folder;
    const PreviewFile file = load(folder.write(kName, ""));
    QVERIFY(file.readable);
    QCOMPARE(file.text, QString());
    QVERIFY(file.survives);
}

void PreviewFileTest::theSizeLimitOfSearchesDoesNotCount()
{
    const ScratchFolder folder;
    DetectionSettings settings;
    settings.sizeLimitBytes = 2;
    QCOMPARE(load(folder.write(kName, "abc\n"), settings).text, QStringLiteral("abc\n"));
}

void PreviewFileTest::aHundredMegabytesAreRead()
{
    const ScratchFolder folder;
    const QByteArray line = QByteArray(99, 'x') + '\n';
    const QString path = folder.write(kName, line.repeated(1 << 20));
    const PreviewFile file = load(path);
    QVERIFY(file.readable && file.survives);
    QCOMPARE(file.text.size(), 100 << 20);
}

void PreviewFileTest::aDefaultFallBackIsReadWithTheLocalesCodec()
{
    // Detection itself never answers with the default code set.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("EUC-JP"));
    QCOMPARE(PreviewText::decode("\xA4\xA2", CodeSet::Default), QStringLiteral("あ"));
    QTextCodec::setCodecForLocale(nullptr);
}

void PreviewFileTest::aNameThatIsNoTextIsRead()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    const QByteArray name("\x83\x65\xFF.txt");
    tree.file(name, "first\n");
    const QString path = NativePath::fromNative(tree.path(name));
    PreviewFile file = load(path);
    QCOMPARE(file.text, QStringLiteral("first\n"));
    QCOMPARE(PreviewSaver::save(&file, QStringLiteral("second\n")).result,
             PreviewSaver::Outcome::Result::Saved);
    QCOMPARE(load(path).text, QStringLiteral("second\n"));
    QCOMPARE(load(path + QStringLiteral(".bak")).text, QStringLiteral("first\n"));
    QVERIFY(NativeFile::remove(path + QStringLiteral(".bak")));
}

void PreviewFileTest::theAttributesAreTheFiles()
{
    const ScratchFolder folder;
    const QString path = folder.write(kName, "text\n");
    QCOMPARE(load(path).attributes, NativeFile::attributesOf(path));
    QVERIFY(load(path).attributes != NativeFile::kNoAttributes);
}

void PreviewFileTest::theBytesOfAnUneditedSaveAreForetold_data()
{
    QTest::addColumn<int>("codeSet");
    for (int codeSet = 1; codeSet < CodeSet::kCount; ++codeSet)
        QTest::newRow(qPrintable(CodeSet::name(codeSet))) << codeSet;
}

void PreviewFileTest::theBytesOfAnUneditedSaveAreForetold()
{
    QFETCH(int, codeSet);
    EncodedTextGenerator random(550 + quint32(codeSet));
    const ScratchFolder folder;
    int changed = 0;
    for (int i = 0; i < 60; ++i) {
        QByteArray bytes =
            PreviewText::encode(random.text(random.number(300)), {codeSet, CodeSet::Lf, false});
        if (random.oneIn(3))
            bytes.prepend(random.mark());
        if (random.oneIn(2))
            bytes = random.broken(bytes);
        PreviewFile file = load(folder.write(kName, bytes));
        if (!file.readable)
            continue;
        const bool survives = file.survives;
        const QString unedited = PreviewText::asEdited(file.text, file.form);
        QCOMPARE(PreviewSaver::save(&file, unedited).result, PreviewSaver::Outcome::Result::Saved);
        QCOMPARE(folder.read(kName) == bytes, survives);
        // What was there is in the backup, whatever became of it.
        if (!bytes.isEmpty())
            QCOMPARE(folder.read(kName + QStringLiteral(".bak")), bytes);
        changed += int(!survives);
    }
    QVERIFY(changed > 0);
}

QTEST_GUILESS_MAIN(PreviewFileTest)
#include "PreviewFileTest.moc"
