#include "tests/cli/CliRun.h"

#include "tests/support/ScratchFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTest>

#include <algorithm>

namespace {

struct CodeSetFolder {
    const char *folder;
    int number;
    const char *name;
    bool hasMark;
};

const CodeSetFolder kFolders[] = {
    {"euc-jp", 2, "EUC-JP", false},       {"iso-2022-jp", 3, "ISO 2022-JP", false},
    {"shift-jis", 1, "Shift-JIS", false}, {"utf-16be", 5, "UTF-16BE", true},
    {"utf-16le", 6, "UTF-16LE", true},    {"utf-32be", 7, "UTF-32BE", true},
    {"utf-32le", 8, "UTF-32LE", true},    {"utf-8", 4, "UTF-8", true},
};

/// A file of samples/, by its name.
struct Sample {
    QByteArray path; ///< from the folder above samples/
    const CodeSetFolder *codeSet;
    bool isLong;
    QByteArray lineEnd; ///< "CR", "LF" or "CRLF"
    bool mark;

    /// Detection goes by rules that take these for another code set: the bytes
    /// of Shift-JIS with LF are taken for UTF-8, short EUC-JP with other line
    /// ends for Shift-JIS.
    bool isMistaken() const
    {
        if (qstrcmp(codeSet->folder, "shift-jis") == 0)
            return lineEnd == "LF";
        return qstrcmp(codeSet->folder, "euc-jp") == 0 && !isLong && lineEnd != "LF";
    }
    int detectedNumber() const
    {
        if (!isMistaken())
            return codeSet->number;
        return lineEnd == "LF" ? 4 : 1;
    }
    QByteArray detectedName() const
    {
        if (!isMistaken())
            return codeSet->name;
        return lineEnd == "LF" ? "UTF-8" : "Shift-JIS";
    }
};

/// In the order of their paths' bytes.
QVector<Sample> allSamples()
{
    QVector<Sample> samples;
    for (const CodeSetFolder &codeSet : kFolders) {
        for (const char *length : {"long", "short"}) {
            for (const char *end : {"cr", "crlf", "lf"}) {
                for (const bool mark : {true, false}) {
                    if (mark && !codeSet.hasMark)
                        continue;
                    const QByteArray path = QByteArray("samples/") + codeSet.folder + '/' + length
                        + '-' + end + (mark ? "-bom.txt" : ".txt");
                    samples.append({path, &codeSet, qstrcmp(length, "long") == 0,
                                    QByteArray(end).toUpper(), mark});
                }
            }
        }
    }
    return samples;
}

/// The text that all samples hold, by line; the last one is empty.
QStringList sourceLines()
{
    QFile file(CliRun::samples() + QStringLiteral("../scripts/samples-source.txt"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot open %s", qPrintable(file.fileName()));
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

constexpr int kShortLines = 5;

/// ISO-2022-JP has no half-width kana: there they are full-width.
QString asWritten(const Sample &sample, const QString &text)
{
    static const QPair<const char *, const char *> kWidened[] = {
        {"ﾎﾟｹｯﾄ", "ポケット"}, {"ﾒﾓ", "メモ"}, {"ﾗｼﾞｵ", "ラジオ"},
        {"ﾐｹ", "ミケ"},        {"ｸﾛ", "クロ"}, {"ｺｰﾋｰ", "コーヒー"}};
    QString written = text;
    if (sample.codeSet->number == 3) {
        for (const auto &[narrow, wide] : kWidened)
            written.replace(QString::fromUtf8(narrow), QString::fromUtf8(wide));
    }
    return written;
}

int columnOf(const QString &line, int position)
{
    int column = 1;
    for (const QChar c : line.left(position))
        column += c.unicode() < 128 ? 1 : 2;
    return column;
}

/// What --format grep prints for the keyword in the sample.
QByteArray expectedHits(const Sample &sample, const QString &keyword)
{
    QStringList lines = sourceLines();
    if (!sample.isLong)
        lines = lines.mid(0, kShortLines) + QStringList(QString());
    // Decoding drops each CR: a file with nothing else is one long line.
    if (sample.lineEnd == "CR")
        lines = QStringList(lines.join(QString()));
    QByteArray hits;
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = asWritten(sample, lines.at(i));
        const int position = line.indexOf(keyword);
        if (position >= 0)
            hits += sample.path + ':' + QByteArray::number(i + 1) + ':'
                + QByteArray::number(columnOf(line, position)) + ':' + line.toUtf8() + '\n';
    }
    return hits;
}

CliRun runAboveSamples(const QStringList &arguments)
{
    return CliRun(arguments, CliRun::samples() + QStringLiteral(".."));
}

} // namespace

/// samples/ through the whole program: every code set, line end and mark.
class CliSamplesTest : public QObject {
    Q_OBJECT

private slots:
    void everySampleIsThere();
    void encodingsToTheLetter();
    void aRefusedFileHasMinusTwoAndDashes();
    void encodingsWithoutFilesHaveStatusOne();
    void everyTrueLineIsFound_data();
    void everyTrueLineIsFound();
    void aLineCountToTheLetter();
    void aLineCountKeepsFoldersTogether();
    void aLineCountWithoutFilesHasStatusOne();
    void statisticsOfTheModes();
};

void CliSamplesTest::everySampleIsThere()
{
    QByteArrayList found;
    QDirIterator files(CliRun::samples(), {QStringLiteral("*.txt")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        found += files.next().toUtf8();
    QCOMPARE(found.size(), 78);
    QCOMPARE(allSamples().size(), 78);
    for (const Sample &sample : allSamples())
        QVERIFY2(found.contains(CliRun::samples().toUtf8() + sample.path.mid(8)),
                 sample.path.constData());
}

void CliSamplesTest::encodingsToTheLetter()
{
    QByteArray expected;
    for (const Sample &sample : allSamples())
        expected += sample.path + '\t' + QByteArray::number(sample.detectedNumber()) + '\t'
            + sample.detectedName() + '\t' + sample.lineEnd + '\t' + (sample.mark ? '1' : '0')
            + '\n';
    const CliRun run =
        runAboveSamples({QStringLiteral("--encodings"), QStringLiteral("--sort"),
                         QStringLiteral("-m"), QStringLiteral("*.txt"), QStringLiteral("samples")});
    QCOMPARE(run.output(), expected);
    QCOMPARE(run.errors(), QByteArray());
    QCOMPARE(run.exitStatus(), 0);
}

void CliSamplesTest::aRefusedFileHasMinusTwoAndDashes()
{
    ScratchFolder scratch;
    scratch.write(QStringLiteral("binary"), QByteArray("a\0\0\0\0b", 6));
    scratch.write(QStringLiteral("empty"), QByteArray());
    scratch.write(QStringLiteral("text"), QByteArray("hello\nworld\n"));
    const CliRun run({QStringLiteral("--encodings"), QStringLiteral("--sort"), QStringLiteral(".")},
                     scratch.path());
    QCOMPARE(run.output(),
             QByteArray("./binary\t-2\t-\t-\t-\n"
                        "./empty\t1\tShift-JIS\tCRLF\t0\n"
                        "./text\t4\tUTF-8\tLF\t0\n"));
    QCOMPARE(run.errors(), QByteArray("Error File size over 1 MByte:./binary\n"));
    const CliRun counted({QStringLiteral("--encodings"), QStringLiteral("--stats"),
                          QStringLiteral("--no-settings"), QStringLiteral(".")},
                         scratch.path());
    QVERIFY2(counted.errors().contains("files: 3\nrefused: 1\nskipped: 0\nerrors: 1\n"),
             counted.errors().constData());
    QCOMPARE(run.exitStatus(), 0);
}

void CliSamplesTest::encodingsWithoutFilesHaveStatusOne()
{
    ScratchFolder scratch;
    const CliRun run({QStringLiteral("--encodings"), scratch.path()});
    QCOMPARE(run.output(), QByteArray());
    QCOMPARE(run.exitStatus(), 1);
}

void CliSamplesTest::everyTrueLineIsFound_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::newRow("kanji") << QStringLiteral("灯台");
    QTest::newRow("trail bytes that are backslashes") << QStringLiteral("表");
    QTest::newRow("katakana with a trail byte of a backslash") << QStringLiteral("ソラ");
    QTest::newRow("hiragana") << QStringLiteral("である");
    QTest::newRow("full-width letters") << QStringLiteral("ＰＣ");
    QTest::newRow("ASCII") << QStringLiteral("sqrt");
    QTest::newRow("digits") << QStringLiteral("0120");
}

void CliSamplesTest::everyTrueLineIsFound()
{
    QFETCH(QString, keyword);
    QByteArray expected;
    QByteArrayList unsure; // mistaken files: what is found there is another text
    for (const Sample &sample : allSamples()) {
        if (sample.isMistaken())
            unsure += sample.path + ':';
        else
            expected += expectedHits(sample, keyword);
    }
    QVERIFY(!expected.isEmpty());
    const CliRun run =
        runAboveSamples({QStringLiteral("--format"), QStringLiteral("grep"),
                         QStringLiteral("--sort"), QStringLiteral("-m"), QStringLiteral("*.txt"),
                         QStringLiteral("-F"), keyword, QStringLiteral("samples")});
    QByteArray output;
    for (const QByteArray &line : run.output().split('\n')) {
        const bool skip = std::any_of(unsure.begin(), unsure.end(), [&](const QByteArray &start) {
            return line.startsWith(start);
        });
        if (!skip && !line.isEmpty())
            output += line + '\n';
    }
    QCOMPARE(output, expected);
}

void CliSamplesTest::aLineCountToTheLetter()
{
    const CliRun run = runAboveSamples(
        {QStringLiteral("--line-count"), QStringLiteral("--sort"), QStringLiteral("samples/utf-8"),
         QStringLiteral("samples/shift-jis"), QStringLiteral("samples/utf-16le/long-lf.txt")});
    QCOMPARE(QString::fromUtf8(run.output()),
             QStringLiteral("      1 samples/shift-jis/long-cr.txt\n"
                            "     38 samples/shift-jis/long-crlf.txt\n"
                            "     38 samples/shift-jis/long-lf.txt\n"
                            "      1 samples/shift-jis/short-cr.txt\n"
                            "      6 samples/shift-jis/short-crlf.txt\n"
                            "      6 samples/shift-jis/short-lf.txt\n"
                            "---------------------------------------\n"
                            "合計 90\n"
                            "\n"
                            "     38 samples/utf-16le/long-lf.txt\n"
                            "---------------------------------------\n"
                            "合計 38\n"
                            "\n"
                            "      1 samples/utf-8/long-cr-bom.txt\n"
                            "      1 samples/utf-8/long-cr.txt\n"
                            "     38 samples/utf-8/long-crlf-bom.txt\n"
                            "     38 samples/utf-8/long-crlf.txt\n"
                            "     38 samples/utf-8/long-lf-bom.txt\n"
                            "     38 samples/utf-8/long-lf.txt\n"
                            "      1 samples/utf-8/short-cr-bom.txt\n"
                            "      1 samples/utf-8/short-cr.txt\n"
                            "      6 samples/utf-8/short-crlf-bom.txt\n"
                            "      6 samples/utf-8/short-crlf.txt\n"
                            "      6 samples/utf-8/short-lf-bom.txt\n"
                            "      6 samples/utf-8/short-lf.txt\n"
                            "合計 180\n"
                            "\n"
                            "-------------------------------------------------\n"
                            "合計行数 308  該当ファイル数 19\n"));
    QCOMPARE(run.errors(), QByteArray());
    QCOMPARE(run.exitStatus(), 0);
}

void CliSamplesTest::aLineCountKeepsFoldersTogether()
{
    ScratchFolder scratch;
    scratch.write(QStringLiteral("a/a"), "1");
    scratch.write(QStringLiteral("a/b/x"), "1\n2");
    scratch.write(QStringLiteral("a/c"), QByteArray("1\n").repeated(1234567));
    const CliRun run({QStringLiteral("--line-count"), QStringLiteral("--sort"),
                      QStringLiteral("--max-size"), QStringLiteral("3"), QStringLiteral("a")},
                     scratch.path());
    QCOMPARE(QString::fromUtf8(run.output()),
             QStringLiteral("      1 a/a\n"
                            "1,234,568 a/c\n"
                            "---------------------------------------\n"
                            "合計 1,234,569\n"
                            "\n"
                            "      2 a/b/x\n"
                            "合計 2\n"
                            "\n"
                            "-------------------------------------------------\n"
                            "合計行数 1,234,571  該当ファイル数 3\n"));
}

void CliSamplesTest::aLineCountWithoutFilesHasStatusOne()
{
    ScratchFolder scratch;
    const CliRun run({QStringLiteral("--line-count"), scratch.path()});
    QCOMPARE(QString::fromUtf8(run.output()),
             QStringLiteral("合計 0\n\n-------------------------------------------------\n"
                            "合計行数 0  該当ファイル数 0\n"));
    QCOMPARE(run.exitStatus(), 1);
}

void CliSamplesTest::statisticsOfTheModes()
{
    const CliRun lineCount =
        runAboveSamples({QStringLiteral("--line-count"), QStringLiteral("--stats"),
                         QStringLiteral("samples/shift-jis")});
    QVERIFY2(lineCount.errors().startsWith("files: 6\nlines: 90\nskipped: 0\nerrors: 0\nseconds: "),
             lineCount.errors().constData());
    const CliRun encodings =
        runAboveSamples({QStringLiteral("--encodings"), QStringLiteral("--stats"),
                         QStringLiteral("samples/shift-jis")});
    QVERIFY2(
        encodings.errors().startsWith("files: 6\nrefused: 0\nskipped: 0\nerrors: 0\nseconds: "),
        encodings.errors().constData());
}

QTEST_GUILESS_MAIN(CliSamplesTest)
#include "CliSamplesTest.moc"
