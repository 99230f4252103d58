#include "view/AssistFile.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "tests/support/ScratchFolder.h"

#include <QFile>
#include <QSettings>
#include <QTest>

#include <memory>
#include <random>

class AssistFileTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void eachGroupIsANote();
    void aNoteHasWhatItsKeysSay();
    void linesStandInTheOrderOfTheirKeys();
    void theKeysOfANoteAreNoLines();
    void aLineMayHaveCommas();
    void japaneseIsReadAsUtf8();
    void missingColoursAreThoseOfTheSettings();
    void aTextThatIsNoColourIsNotTaken();
    void aColourMayHaveAName();
    void withoutAWindowReadingStops();
    void aWindowIsFourNumbers_data();
    void aWindowIsFourNumbers();
    void sizesAndDistancesAreBounded_data();
    void sizesAndDistancesAreBounded();
    void theNumberOfNotesIsBounded();
    void aMissingFileHasNoNotes();
    void keysOutsideAGroupMeanNothing();
    void aWrittenGeometryIsReadAgain();
    void whatElseIsInTheFileStays();
    void qtReadsWhatWasWritten();
    void aFolderInPlaceOfTheFileIsNotReplaced();
    void anyBytesAreSurvived_data();
    void anyBytesAreSurvived();
    void oneMebibyteIsSurvived_data();
    void oneMebibyteIsSurvived();
    void aLargerFileHasNoNotes_data();
    void aLargerFileHasNoNotes();

private:
    std::unique_ptr<ScratchFolder> m_folder;
    AppSettings m_settings;

    AssistFile::Notes notesOf(const QByteArray &content);
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void AssistFileTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    m_settings.assistWinBorderColor = QColor(1, 1, 1);
    m_settings.assistWinBackColor = QColor(2, 2, 2);
    m_settings.assistWinTextColor = QColor(3, 3, 3);
}

AssistFile::Notes AssistFileTest::notesOf(const QByteArray &content)
{
    return AssistFile::read(m_folder->write(text("a.help"), content), m_settings);
}

void AssistFileTest::eachGroupIsANote()
{
    const AssistFile::Notes notes = notesOf("[b]\nwindow=1, 2, 100, 200\n"
                                            "[a]\nwindow=3, 4, 100, 200\n"
                                            "[c]\nwindow=5, 6, 100, 200\n");
    QVERIFY(!notes.windowMissing);
    QCOMPARE(notes.records.size(), std::size_t(3));
    QCOMPARE(notes.records[0].group, text("a"));
    QCOMPARE(notes.records[1].group, text("b"));
    QCOMPARE(notes.records[2].group, text("c"));
    QCOMPARE(notes.records[2].geometry.topLeft(), QPoint(5, 6));
}

void AssistFileTest::aNoteHasWhatItsKeysSay()
{
    const AssistFile::Notes notes =
        notesOf("[a]\nwindow=-10, 20, 300, 400\nborderColor=#112233\nbackColor=#445566\n"
                "textColor=#778899\nline=abc\n");
    QCOMPARE(notes.records.size(), std::size_t(1));
    const AssistRecord &record = notes.records.front();
    QCOMPARE(record.geometry, QRect(-10, 20, 300, 400));
    QCOMPARE(record.borderColor, QColor(0x11, 0x22, 0x33));
    QCOMPARE(record.backColor, QColor(0x44, 0x55, 0x66));
    QCOMPARE(record.textColor, QColor(0x77, 0x88, 0x99));
    QCOMPARE(record.lines, QStringList{text("abc")});
}

void AssistFileTest::linesStandInTheOrderOfTheirKeys()
{
    const AssistFile::Notes notes =
        notesOf("[a]\nwindow=0, 0, 100, 100\ntext2=c\ntext1=b\nother=a\n");
    QCOMPARE(notes.records.front().lines, (QStringList{text("a"), text("b"), text("c")}));
}

void AssistFileTest::theKeysOfANoteAreNoLines()
{
    const AssistFile::Notes notes =
        notesOf("[a]\nwindow=0, 0, 100, 100\nborderColor=red\nbackColor=red\ntextColor=red\n");
    QVERIFY(notes.records.front().lines.isEmpty());
}

void AssistFileTest::aLineMayHaveCommas()
{
    const AssistFile::Notes notes =
        notesOf("[a]\nwindow=0, 0, 100, 100\n1=a, b,c\n2=\"d, e; f\"\n");
    QCOMPARE(notes.records.front().lines.size(), 2);
    QCOMPARE(notes.records.front().lines.at(0).simplified().remove(QLatin1Char(' ')),
             text("a,b,c"));
    QCOMPARE(notes.records.front().lines.at(1), text("d, e; f"));
}

void AssistFileTest::japaneseIsReadAsUtf8()
{
    for (const char *mark : {"", "\xef\xbb\xbf"}) {
        const AssistFile::Notes notes =
            notesOf(QByteArray(mark) + "[a]\nwindow=0, 0, 100, 100\n1=キー操作\n");
        QCOMPARE(notes.records.front().lines, QStringList{text("キー操作")});
    }
}

void AssistFileTest::missingColoursAreThoseOfTheSettings()
{
    const AssistFile::Notes notes = notesOf("[a]\nwindow=0, 0, 100, 100\nbackColor=#445566\n"
                                            "[b]\nwindow=0, 0, 100, 100\n");
    QCOMPARE(notes.records[0].borderColor, QColor(1, 1, 1));
    QCOMPARE(notes.records[0].backColor, QColor(0x44, 0x55, 0x66));
    QCOMPARE(notes.records[0].textColor, QColor(3, 3, 3));
    // The colour of one group is not that of the next.
    QCOMPARE(notes.records[1].backColor, QColor(2, 2, 2));
}

void AssistFileTest::aTextThatIsNoColourIsNotTaken()
{
    const AssistFile::Notes notes =
        notesOf("[a]\nwindow=0, 0, 100, 100\nborderColor=\nbackColor=12\ntextColor=\"red;}*{\"\n");
    QCOMPARE(notes.records.front().borderColor, QColor(1, 1, 1));
    QCOMPARE(notes.records.front().backColor, QColor(2, 2, 2));
    QCOMPARE(notes.records.front().textColor, QColor(3, 3, 3));
}

void AssistFileTest::aColourMayHaveAName()
{
    const AssistFile::Notes notes = notesOf("[a]\nwindow=0, 0, 100, 100\ntextColor=orange\n");
    QCOMPARE(notes.records.front().textColor, QColor(255, 165, 0));
}

void AssistFileTest::withoutAWindowReadingStops()
{
    const AssistFile::Notes notes =
        notesOf("[a]\nwindow=0, 0, 100, 100\n[b]\n1=x\n[c]\nwindow=0, 0, 100, 100\n");
    QVERIFY(notes.windowMissing);
    QCOMPARE(notes.records.size(), std::size_t(1));
    QCOMPARE(notes.records.front().group, text("a"));
}

void AssistFileTest::aWindowIsFourNumbers_data()
{
    QTest::addColumn<QByteArray>("window");
    QTest::addColumn<bool>("taken");
    const auto row = [](const char *window, bool taken) {
        QTest::newRow(window) << QByteArray(window) << taken;
    };

    row("1, 2, 300, 400", true);
    row("1,2,300,400", true);
    row("1, 2, 300, 400, 500", true);
    row("", false);
    row("1", false);
    row("1, 2, 300", false);
    row("1, 2, 300, a", false);
    row("1, 2, 300, ", false);
    row("1.5, 2, 300, 400", false);
    row("1, 2, 300, 99999999999", false);
    row("\"1, 2, 300, 400\"", false);
    row("@Rect(1 2 300 400)", false);
}

void AssistFileTest::aWindowIsFourNumbers()
{
    QFETCH(QByteArray, window);
    QFETCH(bool, taken);
    const AssistFile::Notes notes = notesOf("[a]\n1=x\nwindow=" + window + "\n");
    QCOMPARE(notes.windowMissing, !taken);
    QCOMPARE(notes.records.size(), std::size_t(taken ? 1 : 0));
    if (taken)
        QCOMPARE(notes.records.front().geometry, QRect(1, 2, 300, 400));
}

void AssistFileTest::sizesAndDistancesAreBounded_data()
{
    QTest::addColumn<QByteArray>("window");
    QTest::addColumn<QRect>("geometry");

    QTest::newRow("no size") << QByteArray("0, 0, 0, 0") << QRect(0, 0, 80, 40);
    QTest::newRow("negative size") << QByteArray("0, 0, -5, -5") << QRect(0, 0, 80, 40);
    QTest::newRow("just large enough") << QByteArray("0, 0, 80, 40") << QRect(0, 0, 80, 40);
    QTest::newRow("too large") << QByteArray("0, 0, 4097, 2000000000") << QRect(0, 0, 4096, 4096);
    QTest::newRow("too far") << QByteArray("2147483647, -2147483648, 100, 100")
                             << QRect(100000, -100000, 100, 100);
}

void AssistFileTest::sizesAndDistancesAreBounded()
{
    QFETCH(QByteArray, window);
    QFETCH(QRect, geometry);
    QCOMPARE(notesOf("[a]\nwindow=" + window + "\n").records.front().geometry, geometry);
}

void AssistFileTest::theNumberOfNotesIsBounded()
{
    QByteArray content;
    for (std::size_t i = 0; i < AssistFile::kMostNotes + 10; ++i)
        content += "[g" + QByteArray::number(static_cast<int>(i)) + "]\nwindow=0, 0, 100, 100\n";
    const AssistFile::Notes notes = notesOf(content);
    QCOMPARE(notes.records.size(), AssistFile::kMostNotes);
    QVERIFY(!notes.windowMissing);
}

void AssistFileTest::aMissingFileHasNoNotes()
{
    const AssistFile::Notes notes = AssistFile::read(m_folder->filePath(text("none")), m_settings);
    QVERIFY(notes.records.empty() && !notes.windowMissing);
}

void AssistFileTest::keysOutsideAGroupMeanNothing()
{
    const AssistFile::Notes notes = notesOf("window=0, 0, 100, 100\na=b\n");
    QVERIFY(notes.records.empty() && !notes.windowMissing);
}

void AssistFileTest::aWrittenGeometryIsReadAgain()
{
    const QString path = m_folder->write(text("a.help"), "[a]\nwindow=0, 0, 100, 100\n1=あ\n");
    QVERIFY(AssistFile::writeGeometry(path, text("a"), QRect(-7, 8, 210, 220)));
    const AssistFile::Notes notes = AssistFile::read(path, m_settings);
    QCOMPARE(notes.records.front().geometry, QRect(-7, 8, 210, 220));
    QCOMPARE(notes.records.front().lines, QStringList{text("あ")});
}

void AssistFileTest::whatElseIsInTheFileStays()
{
    const QString path = m_folder->write(
        text("a.help"), "; a remark\n[b]\n1=x, y\nwindow=0, 0, 100, 100\n2=あ\n[a]\nbroken\nk=v\n");
    QVERIFY(AssistFile::writeGeometry(path, text("b"), QRect(1, 2, 103, 104)));
    const QByteArray written = m_folder->read(text("a.help"));
    QCOMPARE(written,
             QByteArray("\xef\xbb\xbf; a remark\r\n[b]\r\n1=x, y\r\nwindow=1, 2, 103, 104\r\n"
                        "2=あ\r\n[a]\r\nbroken\r\nk=v\r\n"));
}

void AssistFileTest::qtReadsWhatWasWritten()
{
    const QString path = m_folder->write(text("a.help"), "[キー]\nwindow=0, 0, 100, 100\n1=あ\n");
    QVERIFY(AssistFile::writeGeometry(path, text("キー"), QRect(1, 2, 103, 104)));
    QSettings file(path, QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    QStringList window;
    for (const QString &group : file.childGroups())
        window = file.value(group + text("/window")).toStringList();
    QCOMPARE(window, (QStringList{text("1"), text("2"), text("103"), text("104")}));
}

void AssistFileTest::aFolderInPlaceOfTheFileIsNotReplaced()
{
    const QString path = m_folder->makeFolder(text("folder.help"));
    QVERIFY(AssistFile::read(path, m_settings).records.empty());
    QVERIFY(!AssistFile::writeGeometry(m_folder->filePath(text("folder.help")), text("a"),
                                       QRect(0, 0, 100, 100)));
}

void AssistFileTest::anyBytesAreSurvived_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void AssistFileTest::anyBytesAreSurvived()
{
    QFETCH(quint32, seed);
    static const char *const pieces[] = {
        "[",          "]",           "\n",         "\r\n",        "=",   "window=", ",",
        "1",          "99999999999", "-",          "\"",          "\\x", "\\",      "borderColor=",
        "textColor=", "#ff0000",     "@Invalid()", "@ByteArray(", "%00", "a",       ";",
        " "};
    std::mt19937 random(seed);
    QByteArray content;
    for (int i = 0; i < 3000; ++i) {
        if (random() % 4 == 0)
            content += static_cast<char>(random());
        else
            content += pieces[random() % std::size(pieces)];
    }
    const AssistFile::Notes notes = notesOf(content);
    QVERIFY(notes.records.size() <= AssistFile::kMostNotes);
    for (const AssistRecord &record : notes.records)
        AssistFile::writeGeometry(m_folder->filePath(text("a.help")), record.group,
                                  QRect(1, 2, 3, 4));
}

void AssistFileTest::oneMebibyteIsSurvived_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::newRow("notes") << QByteArray("[%]\nwindow=0,0,1,1\na=b\n");
    QTest::newRow("one long key") << QByteArray("a");
    QTest::newRow("brackets") << QByteArray("[");
    QTest::newRow("zero bytes") << QByteArray(1, '\0');
    QTest::newRow("lines") << QByteArray("k%=v\n");
}

void AssistFileTest::oneMebibyteIsSurvived()
{
    QFETCH(QByteArray, unit);
    QByteArray content = "[a]\nwindow=0, 0, 100, 100\n";
    for (int number = 0; content.size() < AssistFile::kLargestFileBytes; ++number) {
        QByteArray piece = unit;
        content += piece.replace('%', QByteArray::number(number));
    }
    content.truncate(static_cast<int>(AssistFile::kLargestFileBytes));
    const std::size_t notes = notesOf(content).records.size();
    QVERIFY(notes >= 1 && notes <= AssistFile::kMostNotes);
}

void AssistFileTest::aLargerFileHasNoNotes_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("one byte") << int(AssistFile::kLargestFileBytes) + 1;
    QTest::newRow("ten megabytes") << 10 * 1024 * 1024;
}

void AssistFileTest::aLargerFileHasNoNotes()
{
    QFETCH(int, bytes);
    QByteArray content = "[a]\nwindow=0, 0, 100, 100\n[b]\n";
    content += QByteArray(bytes - content.size(), '\n');
    const AssistFile::Notes notes = notesOf(content);
    QVERIFY(notes.records.empty());
    QVERIFY(!notes.windowMissing);
}

QTEST_GUILESS_MAIN(AssistFileTest)
#include "AssistFileTest.moc"
