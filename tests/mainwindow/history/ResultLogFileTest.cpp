#include "mainwindow/history/ResultLogFile.h"

#include "engine/NativePath.h"
#include "mainwindow/history/LogRestore.h"
#include "settings/SaveSteps.h"
#include "tests/support/Commands.h"
#include "tests/support/EncodedTextGenerator.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestLength.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSysInfo>
#include <QTest>
#include <QTextCodec>

#include <algorithm>
#include <memory>
#include <vector>

class ResultLogFileTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void aLogIsInTheLocalesEncoding_data();
    void aLogIsInTheLocalesEncoding();
    void aTextThatTheLocaleCannotHoldIsKeptAsMarkedUtf8_data();
    void aTextThatTheLocaleCannotHoldIsKeptAsMarkedUtf8();
    void everyTextComesBackLetterByLetter_data();
    void everyTextComesBackLetterByLetter();
    void aMillionLinesComeBackLetterByLetter();
    void theBytesOfANameThatIsNoTextComeBack();
    void zerosAndReplacementCharactersAreKept();
    void halfAPairBecomesAQuestionMark();
    void aMarkAfterWholePiecesOfAsciiIsKept();
    void lineEndsOfTheOtherPlatformAreRead();
    void anEmptyPathFails();
    void aMissingFolderFailsAndIsNotMade();
    void aFailedStepLeavesTheOldLogWhole_data();
    void aFailedStepLeavesTheOldLogWhole();
    void anEndBetweenTwoStepsLeavesAWholeLog();
    void aLongTextIsWrittenPieceByPiece();
    void aLogTakesNoMemoryForASecondText();
    void aFileThatMayNotGrowLeavesTheOldLogWhole();
    void aFullDiskLeavesTheOldLogWhole();
    void aFolderThatMayNotBeWrittenLeavesTheOldLog();
    void aKillAtAnyMomentLeavesAWholeLog();
    void processesThatWriteAtOnceLeaveAWholeLog_data();
    void processesThatWriteAtOnceLeaveAWholeLog();
    void aFolderInTheWayFails();
    void whatIsNoFileIsNotRead_data();
    void whatIsNoFileIsNotRead();
    void anyBytesAreRead();
    void theLabelIsOfLines2And8And9_data();
    void theLabelIsOfLines2And8And9();
    void theLabelOfALogIsItsKeywordsAndDistance();
    void theLabelIsReadFromTheStartOnly();
    void theLabelOfAnyBytesIsMade();
};

namespace {

const QString kName = QStringLiteral("a.log");

ResultLog logOf(const QString &text)
{
    ResultLog log;
    log.keyword1 = QStringLiteral("k");
    log.text = text;
    return log;
}

QByteArray headerBytes()
{
    return logOf(QString()).header().toLatin1();
}

bool isWindows()
{
    return QSysInfo::kernelType() == QLatin1String("winnt");
}

QByteArray onDisk(QByteArray text)
{
    return isWindows() ? text.replace("\n", "\r\n") : text;
}

QString textRead(const QString &path)
{
    const std::optional<QString> content = ResultLogFile::read(path);
    return content ? LogRestore::fromContent(*content, path, LogRestore::Extent::Everything).text
                   : QStringLiteral("not read");
}

QStringList logCommand(const QString &path)
{
    return {QStringLiteral(HISTORY_PROCESS), QStringLiteral("log"), path};
}

void setLocale(const char *codec)
{
    QTextCodec::setCodecForLocale(codec != nullptr ? QTextCodec::codecForName(codec) : nullptr);
}

} // namespace

void ResultLogFileTest::cleanup()
{
    SaveSteps::setObserver(nullptr);
    setLocale(nullptr);
}

void ResultLogFileTest::aLogIsInTheLocalesEncoding_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << QByteArray("::\xE3\x81\x82\nx");
    QTest::newRow("Shift-JIS") << QByteArray("Shift-JIS") << QByteArray("::\x82\xA0\nx");
    QTest::newRow("EUC-JP") << QByteArray("EUC-JP") << QByteArray("::\xA4\xA2\nx");
}

void ResultLogFileTest::aLogIsInTheLocalesEncoding()
{
    QFETCH(QByteArray, locale);
    QFETCH(QByteArray, bytes);
    setLocale(locale.constData());
    const ScratchFolder folder;
    QVERIFY(ResultLogFile::write(folder.filePath(kName), logOf(QStringLiteral("::あ\nx"))));
    QCOMPARE(folder.read(kName), onDisk(headerBytes() + bytes));
    QCOMPARE(textRead(folder.filePath(kName)), QStringLiteral("::あ\nx"));
}

void ResultLogFileTest::aTextThatTheLocaleCannotHoldIsKeptAsMarkedUtf8_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QString>("text");
    QTest::newRow("Shift-JIS and an accent") << QByteArray("Shift-JIS") << QStringLiteral("é");
    QTest::newRow("EUC-JP and an emoji") << QByteArray("EUC-JP") << QStringLiteral("😀");
    QTest::newRow("ISO-8859-1 and a kana") << QByteArray("ISO-8859-1") << QStringLiteral("あ");
    QTest::newRow("ISO 2022-JP and an escape")
        << QByteArray("ISO 2022-JP") << QStringLiteral("\x1B$B!");
}

void ResultLogFileTest::aTextThatTheLocaleCannotHoldIsKeptAsMarkedUtf8()
{
    QFETCH(QByteArray, locale);
    QFETCH(QString, text);
    setLocale(locale.constData());
    const ScratchFolder folder;
    QVERIFY(ResultLogFile::write(folder.filePath(kName), logOf(text)));
    QCOMPARE(folder.read(kName), onDisk("\xEF\xBB\xBF" + headerBytes() + text.toUtf8()));
    QCOMPARE(textRead(folder.filePath(kName)), text);
}

void ResultLogFileTest::everyTextComesBackLetterByLetter_data()
{
    QTest::addColumn<QByteArray>("locale");
    for (const char *locale : {"UTF-8", "Shift-JIS", "EUC-JP", "ISO 2022-JP", "ISO-8859-1"})
        QTest::newRow(locale) << QByteArray(locale);
}

void ResultLogFileTest::everyTextComesBackLetterByLetter()
{
    QFETCH(QByteArray, locale);
    setLocale(locale.constData());
    EncodedTextGenerator random(3303);
    const ScratchFolder folder;
    for (int i = 0; i < 40; ++i) {
        QString text = random.text(random.number(1000));
        text.remove(QLatin1Char('\r'));
        QVERIFY(ResultLogFile::write(folder.filePath(kName), logOf(text)));
        QCOMPARE(textRead(folder.filePath(kName)), text);
    }
}

void ResultLogFileTest::aMillionLinesComeBackLetterByLetter()
{
    QString text;
    for (int i = 0; i < 1'000'000; ++i)
        text += QStringLiteral("  %1:    1:語 of a line\n").arg(i, 5);
    text.chop(1);
    const ScratchFolder folder;
    QVERIFY(ResultLogFile::write(folder.filePath(kName), logOf(text)));
    QVERIFY(textRead(folder.filePath(kName)) == text);
}

void ResultLogFileTest::theBytesOfANameThatIsNoTextComeBack()
{
    if (isWindows())
        QSKIP("names are text there");
    const QByteArray name = QByteArrayLiteral("/tmp/\x83\x65\xE3\x81\x82\xFF.txt");
    const QString text =
        QStringLiteral("::") + NativePath::fromNative(name) + QStringLiteral("\n…");
    const ScratchFolder folder;
    QVERIFY(ResultLogFile::write(folder.filePath(kName), logOf(text)));
    QVERIFY(folder.read(kName).contains("\n::" + name + '\n'));
    QCOMPARE(textRead(folder.filePath(kName)), text);
}

void ResultLogFileTest::zerosAndReplacementCharactersAreKept()
{
    const ScratchFolder folder;
    const QString text = QStringLiteral("a") + QChar(0) + QStringLiteral("b\uFFFDc") + QChar(0);
    QVERIFY(ResultLogFile::write(folder.filePath(kName), logOf(text)));
    QCOMPARE(textRead(folder.filePath(kName)), text);
}

void ResultLogFileTest::halfAPairBecomesAQuestionMark()
{
    const ScratchFolder folder;
    QVERIFY(ResultLogFile::write(folder.filePath(kName),
                                 logOf(QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b"))));
    QCOMPARE(textRead(folder.filePath(kName)), QStringLiteral("a?b"));
}

void ResultLogFileTest::aMarkAfterWholePiecesOfAsciiIsKept()
{
    const ScratchFolder folder;
    const int rest = 2 * 16384 - logOf(QString()).header().size();
    const QString text = QString(rest, QLatin1Char('a')) + QChar(0xFEFF) + QStringLiteral("b");
    QVERIFY(ResultLogFile::write(folder.filePath(kName), logOf(text)));
    QCOMPARE(textRead(folder.filePath(kName)), text);
}

void ResultLogFileTest::lineEndsOfTheOtherPlatformAreRead()
{
    const ScratchFolder folder;
    QByteArray bytes = headerBytes() + "a\nb";
    const QString path = folder.write(kName, bytes.replace("\n", "\r\n"));
    QCOMPARE(textRead(path), QStringLiteral("a\nb"));
}

void ResultLogFileTest::anEmptyPathFails()
{
    QVERIFY(!ResultLogFile::write(QString(), logOf(QString())));
    QVERIFY(!ResultLogFile::read(QString()));
}

void ResultLogFileTest::aMissingFolderFailsAndIsNotMade()
{
    const ScratchFolder folder;
    QVERIFY(!ResultLogFile::write(folder.filePath(QStringLiteral("no/a.log")), logOf(QString())));
    QVERIFY(!folder.exists(QStringLiteral("no")));
}

void ResultLogFileTest::aFailedStepLeavesTheOldLogWhole_data()
{
    QTest::addColumn<int>("step");
    QTest::newRow("writing the new one") << int(SaveSteps::Step::WriteNew);
    QTest::newRow("replacing the old one") << int(SaveSteps::Step::ReplaceOld);
}

void ResultLogFileTest::aFailedStepLeavesTheOldLogWhole()
{
    QFETCH(int, step);
    const ScratchFolder folder;
    const QString path = folder.write(kName, "old");
    SaveSteps::setObserver([step](SaveSteps::Step taken) { return int(taken) != step; });
    QVERIFY(!ResultLogFile::write(path, logOf(QStringLiteral("new"))));
    QCOMPARE(folder.read(kName), QByteArray("old"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{kName});
}

void ResultLogFileTest::anEndBetweenTwoStepsLeavesAWholeLog()
{
    constexpr int kEnded = 77;
    const ScratchFolder whole;
    QCOMPARE(Commands::run(logCommand(whole.filePath(kName))), 0);
    int ended = 0;
    for (int step = 0;; ++step) {
        const ScratchFolder folder;
        const QString path = folder.write(kName, "old");
        const int code = Commands::run(logCommand(path) + QStringList{QString::number(step)});
        if (code == 0)
            break;
        QCOMPARE(code, kEnded);
        ++ended;
        QVERIFY(folder.read(kName) == "old" || folder.read(kName) == whole.read(kName));
        QCOMPARE(Commands::run(logCommand(path)), 0);
        QVERIFY(folder.read(kName) == whole.read(kName));
    }
    QCOMPARE(ended, 3);
}

void ResultLogFileTest::aLongTextIsWrittenPieceByPiece()
{
    setLocale("UTF-8");
    // With a pair, and the byte of a name, wherever a piece may end.
    const QString line = QStringLiteral("語\U00020BB7") + NativePath::fromNative("\xFF");
    QString text = QString(line + QLatin1Char('\n')).repeated(300'000) + line.repeated(300'000)
        + QLatin1Char('\n') + line;
    const ScratchFolder folder;
    QVERIFY(ResultLogFile::write(folder.filePath(kName), logOf(text)));
    QVERIFY(folder.read(kName) == onDisk(headerBytes() + NativePath::toNative(text)));
    QVERIFY(textRead(folder.filePath(kName)) == text);
}

void ResultLogFileTest::aLogTakesNoMemoryForASecondText()
{
    const ScratchFolder folder;
    const QString limited = QStringLiteral("ulimit -v 450000 || exit 99; exec \"$@\"");
    const QStringList prefix{QStringLiteral("sh"), QStringLiteral("-c"), limited,
                             QStringLiteral("sh")};
    const QString path = folder.filePath(kName);
    if (Commands::run(prefix + logCommand(path)) != 0)
        QSKIP("the memory cannot be limited here");
    // Its text takes 200 megabytes.
    const QStringList command =
        logCommand(path) + QStringList{QStringLiteral("-1"), QStringLiteral("100")};
    QCOMPARE(Commands::run(prefix + command), 0);
    QVERIFY(QFileInfo(path).size() > 100'000'000);
}

void ResultLogFileTest::aFileThatMayNotGrowLeavesTheOldLogWhole()
{
    const ScratchFolder folder;
    const QString path = folder.write(kName, "old");
    const int code = Commands::run(Commands::withLimitedFiles(4, logCommand(path)));
    if (code == -1 || code == 99)
        QSKIP("no shell that limits the size of files");
    QCOMPARE(code, 1);
    QCOMPARE(folder.read(kName), QByteArray("old"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{kName});
}

void ResultLogFileTest::aFullDiskLeavesTheOldLogWhole()
{
    SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk");
    const QString path = disk.path() + kName;
    QVERIFY(ResultLogFile::write(path, logOf(QStringLiteral("old"))));
    for (const int blocksLeft : {0, 1, 10}) {
        disk.fill(blocksLeft);
        QCOMPARE(Commands::run(logCommand(path)), 1);
        disk.makeRoom();
        QCOMPARE(textRead(path), QStringLiteral("old"));
        QCOMPARE(QDir(disk.path()).entryList(QDir::Files | QDir::Hidden), QStringList{kName});
    }
}

void ResultLogFileTest::aFolderThatMayNotBeWrittenLeavesTheOldLog()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    const QString path = folder.write(kName, "old");
    if (!tree.setMode("a.log", 0666) || !tree.setMode(".", 0555))
        QSKIP("permissions mean nothing here");
    QStringList command = logCommand(path);
    const bool possible = Commands::asOrdinaryUser(command);
    const int code = possible ? Commands::run(command) : 0;
    tree.setMode(".", 0755);
    if (!possible)
        QSKIP("nobody without rights to run the test as");
    QCOMPARE(code, 1);
    QCOMPARE(folder.read(kName), QByteArray("old"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{kName});
}

void ResultLogFileTest::aKillAtAnyMomentLeavesAWholeLog()
{
    const ScratchFolder folder;
    const QString path = folder.write(kName, "old");
    const QStringList command{QStringLiteral(HISTORY_PROCESS), QStringLiteral("log"), path};
    QCOMPARE(Commands::run(command), 0);
    const QByteArray whole = folder.read(kName);
    quint32 longest = Commands::kFirstKillMicroseconds;
    int killed = 0;
    for (int i = 0; i < TestLength::rounds(50, 500); ++i) {
        folder.write(kName, "old");
        const bool wasKilled = Commands::killWithin(longest, command);
        killed += wasKilled ? 1 : 0;
        longest = Commands::nextKill(longest, !wasKilled);
        const QByteArray content = folder.read(kName);
        QVERIFY2(content == "old" || content == whole, content.left(100).constData());
    }
    // Pauses that are too long would stop nothing.
    QVERIFY2(killed > TestLength::rounds(50, 500) / 10, qPrintable(QString::number(killed)));
}

void ResultLogFileTest::processesThatWriteAtOnceLeaveAWholeLog_data()
{
    QTest::addColumn<QStringList>("tags");
    const QStringList tags{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")};
    QTest::newRow("two") << QStringList(tags.mid(0, 2));
    QTest::newRow("three") << tags;
}

void ResultLogFileTest::processesThatWriteAtOnceLeaveAWholeLog()
{
    if (isWindows())
        QSKIP("a file that another process has open just then is not replaced");
    QFETCH(QStringList, tags);
    const ScratchFolder folder;
    const QString path = folder.filePath(kName);
    // As they are after each of the writers' saves, and nothing else.
    QStringList whole{QStringLiteral("old")};
    QVERIFY(ResultLogFile::write(path, logOf(whole.first())));
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QString &tag : tags) {
        whole.append(tag.repeated(100'000));
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(QStringLiteral(HISTORY_PROCESS),
                                {QStringLiteral("again"), path, tag, QStringLiteral("50")});
    }
    const auto isRunning = [](const auto &process) {
        return process->state() != QProcess::NotRunning;
    };
    while (std::any_of(processes.begin(), processes.end(), isRunning)) {
        const QString text = textRead(path);
        QVERIFY2(whole.contains(text), qPrintable(text.left(100)));
        QTest::qWait(1);
    }
    for (const auto &process : processes)
        QCOMPARE(process->exitCode(), 0);
    QVERIFY(whole.mid(1).contains(textRead(path)));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{kName});
}

void ResultLogFileTest::aFolderInTheWayFails()
{
    const ScratchFolder folder;
    const QString path = folder.makeFolder(kName);
    QVERIFY(!ResultLogFile::write(path, logOf(QString())));
    QVERIFY(!ResultLogFile::write(folder.filePath(kName), logOf(QString())));
    QVERIFY(QFileInfo(path).isDir());
}

void ResultLogFileTest::whatIsNoFileIsNotRead_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"nothing", "a folder", "a FIFO", "a device"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void ResultLogFileTest::whatIsNoFileIsNotRead()
{
    QFETCH(QString, kind);
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    bool made = true;
    if (kind == QLatin1String("a folder"))
        tree.folder("a.log");
    else if (kind == QLatin1String("a FIFO"))
        made = tree.fifo("a.log");
    else if (kind == QLatin1String("a device"))
        made = tree.device("a.log");
    if (!made)
        QSKIP("no such thing can be made here");
    QVERIFY(!ResultLogFile::read(folder.filePath(kName)));
    QCOMPARE(ResultLogFile::label(folder.filePath(kName)), QStringLiteral("　---　"));
}

void ResultLogFileTest::anyBytesAreRead()
{
    EncodedTextGenerator random(44);
    const ScratchFolder folder;
    for (int i = 0; i < 300; ++i) {
        const QByteArray bytes =
            i % 2 ? random.fragments(random.number(60)) : random.randomBytes(random.number(600));
        const std::optional<QString> content = ResultLogFile::read(folder.write(kName, bytes));
        QVERIFY(content.has_value());
        QVERIFY(!content->contains(QLatin1Char('\r')));
        LogRestore::fromContent(*content, kName, LogRestore::Extent::Everything);
    }
}

void ResultLogFileTest::theLabelIsOfLines2And8And9_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("label");
    QTest::newRow("all") << QByteArray("1\n........|k\n3\n4\n5\n6\n7\n........|b\n........|9\n10\n")
                         << QStringLiteral("k　---　b9");
    QTest::newRow("the first part of line 8")
        << QByteArray("1\n........|k, l\n3\n4\n5\n6\n7\n........|a, b, c\n........|9")
        << QStringLiteral("k, l　---　a9");
    QTest::newRow("a comma alone separates nothing")
        << QByteArray("1\n........|k\n3\n4\n5\n6\n7\n........|a,b\n........|9")
        << QStringLiteral("k　---　a,b9");
    QTest::newRow("two lines") << QByteArray("1\n........|k") << QStringLiteral("k　---　");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("　---　");
    QTest::newRow("carriage returns")
        << QByteArray("1\r\n........|k\r\n3\r\n4\r\n5\r\n6\r\n7\r\n........|a\r\n........|9\r\n")
        << QStringLiteral("k　---　a9");
}

void ResultLogFileTest::theLabelIsOfLines2And8And9()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, label);
    const ScratchFolder folder;
    QCOMPARE(ResultLogFile::label(folder.write(kName, content)), label);
}

void ResultLogFileTest::theLabelOfALogIsItsKeywordsAndDistance()
{
    const ScratchFolder folder;
    ResultLog log;
    log.keyword1 = QStringLiteral("検索");
    log.keyword2 = QStringLiteral("次");
    log.lineDistance = 5;
    QVERIFY(ResultLogFile::write(folder.filePath(kName), log));
    QCOMPARE(ResultLogFile::label(folder.filePath(kName)), QStringLiteral("検索　---　次5"));
}

void ResultLogFileTest::theLabelIsReadFromTheStartOnly()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    if (tree.sparseFile("a.log", qint64(4) << 30)) {
        QCOMPARE(ResultLogFile::label(folder.filePath(kName)), QStringLiteral("　---　"));
        folder.remove(kName);
    }
    // A long keyword is shown as far as the start reaches, not left out.
    const QByteArray keyword(5000, 'k');
    folder.write(kName, "1\n........|" + keyword + "\n3\n4\n5\n6\n7\n........|b\n........|9\n");
    QCOMPARE(ResultLogFile::label(folder.filePath(kName)),
             QString::fromLatin1(keyword) + QStringLiteral("　---　b9"));
}

void ResultLogFileTest::theLabelOfAnyBytesIsMade()
{
    EncodedTextGenerator random(9);
    const ScratchFolder folder;
    for (int i = 0; i < 300; ++i) {
        const QByteArray bytes = random.fragments(random.number(100));
        QVERIFY(
            ResultLogFile::label(folder.write(kName, bytes)).contains(QStringLiteral("　---　")));
    }
}

QTEST_GUILESS_MAIN(ResultLogFileTest)
#include "ResultLogFileTest.moc"
