#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

#include <random>

/// The numbers of a line count in the window, compared with line feeds counted in
/// the bytes of files whose code set is known.
class MainWindowLineCountTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void theSamplesAreCounted_data();
    void theSamplesAreCounted();
    void charactersThatLookLikeLineFeedsAreNone();
    void filesThatAreNotCountedAreTold();
    void theEndOfACountBringsTheWindowBack_data();
    void theEndOfACountBringsTheWindowBack();

private:
    void compare(const QString &folder, const QMap<QString, int> &expected);
};

namespace {

/// Counts how often a window is raised.
class RaiseCounter : public QObject {
public:
    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::ZOrderChange ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

struct Unit {
    int size;
    bool bigEndian;
};

/// Of the code set that a folder of samples is named after.
Unit unitOf(const QString &codeSet)
{
    const bool bigEndian = codeSet.endsWith(QLatin1String("be"));
    if (codeSet.startsWith(QLatin1String("utf-16")))
        return {2, bigEndian};
    if (codeSet.startsWith(QLatin1String("utf-32")))
        return {4, bigEndian};
    return {1, false};
}

/// One more than line feeds, without any decoding.
int linesIn(const QByteArray &bytes, Unit unit)
{
    QByteArray lineFeed(unit.size, '\0');
    lineFeed[unit.bigEndian ? unit.size - 1 : 0] = '\n';
    int lines = 1;
    for (int at = 0; at + unit.size <= bytes.size(); at += unit.size)
        lines += int(bytes.mid(at, unit.size) == lineFeed);
    return lines;
}

QByteArray inUtf16(const QString &text, bool bigEndian)
{
    QByteArray bytes;
    const QString marked = QChar(QChar::ByteOrderMark) + text;
    for (const QChar unit : marked) {
        const char high = static_cast<char>(unit.row());
        const char low = static_cast<char>(unit.cell());
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

QByteArray read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("a file to be counted cannot be read");
    return file.readAll();
}

} // namespace

void MainWindowLineCountTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->open();
}

void MainWindowLineCountTest::compare(const QString &folder, const QMap<QString, int> &expected)
{
    m_fixture->fill(folder, QStringLiteral("*.txt"), QString());
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->waitUntilIdle());
    const QString listed = m_fixture->resultText();
    QMap<QString, int> counts;
    const QRegularExpression fileLine(QStringLiteral("^ *([\\d,]+) (/.*|[A-Za-z]:.*)$"),
                                      QRegularExpression::MultilineOption);
    for (auto match = fileLine.globalMatch(listed); match.hasNext();) {
        const QRegularExpressionMatch line = match.next();
        QVERIFY2(!counts.contains(line.captured(2)), qPrintable(line.captured(2)));
        counts[line.captured(2)] = line.captured(1).remove(QLatin1Char(',')).toInt();
    }
    QCOMPARE(counts, expected);
    int total = 0;
    for (const int count : expected)
        total += count;
    const QString end =
        QStringLiteral("合計行数 %L1  該当ファイル数 %2").arg(total).arg(expected.size());
    QVERIFY2(listed.endsWith(end), qPrintable(listed.right(200)));
}

void MainWindowLineCountTest::theSamplesAreCounted_data()
{
    QTest::addColumn<QString>("codeSet");
    const QDir samples(QStringLiteral(SARVIK_SAMPLES));
    const QStringList folders = samples.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : folders)
        QTest::newRow(qPrintable(folder)) << folder;
    QCOMPARE(folders.size(), 8);
}

void MainWindowLineCountTest::theSamplesAreCounted()
{
    QFETCH(QString, codeSet);
    const QString folder = QStringLiteral(SARVIK_SAMPLES "/") + codeSet + QLatin1Char('/');
    QMap<QString, int> expected;
    for (QDirIterator files(folder, QDir::Files); files.hasNext();) {
        const QString path = files.next();
        expected[path] = linesIn(read(path), unitOf(codeSet));
        // A carriage return ends no line.
        const bool onlyReturns =
            path.contains(QLatin1String("-cr.")) || path.contains(QLatin1String("-cr-"));
        QCOMPARE(expected[path] == 1, onlyReturns);
    }
    QVERIFY(expected.size() >= 6);
    compare(folder, expected);
}

void MainWindowLineCountTest::charactersThatLookLikeLineFeedsAreNone()
{
    // Each holds the byte of a line feed or of a carriage return, or is a line end
    // elsewhere.
    const QString units =
        QStringLiteral("a\n\r\u0A0A\u0D0A\u0A0D\u0A42\u4E0A\u200A\u0085\u2028\u2029\f");
    std::mt19937 random(1310);
    QMap<QString, int> expected;
    for (int file = 0; file < 40; ++file) {
        QString text;
        for (size_t length = random() % 500; length > 0; --length)
            text += units.at(static_cast<int>(random() % static_cast<size_t>(units.size())));
        const bool bigEndian = file % 2 == 0;
        const QString path = m_fixture->tree.write(
            QStringLiteral("%1/%2.txt").arg(file % 3).arg(file), inUtf16(text, bigEndian));
        expected[path] = linesIn(inUtf16(text, bigEndian), {2, bigEndian});
    }
    compare(m_fixture->tree.path(), expected);
}

void MainWindowLineCountTest::filesThatAreNotCountedAreTold()
{
    m_fixture->tree.write(QStringLiteral("large.txt"), QByteArray("line\n").repeated(300000));
    m_fixture->tree.write(QStringLiteral("binary.txt"), QByteArray(100, '\0') + '\xFF');
    const QString counted = m_fixture->tree.write(QStringLiteral("counted.txt"), "a\nb\n");
    compare(m_fixture->tree.path(), {{counted, 3}});
    QTRY_COMPARE_WITH_TIMEOUT(
        m_fixture->statusText(),
        QStringLiteral("数えなかったファイル: 2 （大きすぎる、文字コードが分からない、読めない）"),
        kPatienceMilliseconds);
    // A path that is not there matters more.
    const QString gone = m_fixture->tree.filePath(QStringLiteral("gone/"));
    compare(m_fixture->tree.path() + QLatin1Char('\n') + gone, {{counted, 3}});
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(),
                              QStringLiteral("検索パスがありません: ") + gone,
                              kPatienceMilliseconds);
}

void MainWindowLineCountTest::theEndOfACountBringsTheWindowBack_data()
{
    QTest::addColumn<bool>("aborted");
    QTest::newRow("counted") << false;
    QTest::newRow("aborted") << true;
}

void MainWindowLineCountTest::theEndOfACountBringsTheWindowBack()
{
    QFETCH(bool, aborted);
    for (int file = 0; file < 50; ++file)
        m_fixture->tree.write(QStringLiteral("%1.txt").arg(file), "a\nb\n");
    m_fixture->fill(aborted ? QStringLiteral("/usr/") : m_fixture->tree.path(),
                    QStringLiteral("*.txt"), QString());
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other, kPatienceMilliseconds));
    MainWindow &window = m_fixture->window();
    QVERIFY(!window.isActiveWindow());
    m_fixture->resultView()->clearFocus();
    const auto *panel = m_fixture->child<QWidget>("progressPanel");
    window.lineCountGrep();
    QVERIFY(!panel->isHidden());
    QCOMPARE(m_fixture->searchButton()->text(), QStringLiteral("中止"));
    RaiseCounter raises;
    window.installEventFilter(&raises);
    if (aborted)
        m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(panel->isHidden());
    QCOMPARE(m_fixture->searchButton()->text(), QStringLiteral("検索開始"));
    QVERIFY(m_fixture->searchButton()->isEnabled());
    QCOMPARE(raises.count, 1);
    QVERIFY(QTest::qWaitForWindowActive(&window, kPatienceMilliseconds));
    QCOMPARE(m_fixture->resultText().contains(QStringLiteral("中止しました")), aborted);
    QVERIFY(m_fixture->resultText().contains(QStringLiteral("合計行数 ")));
}

QTEST_MAIN(MainWindowLineCountTest)
#include "MainWindowLineCountTest.moc"
