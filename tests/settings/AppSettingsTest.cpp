#include "tests/settings/SettingsFixture.h"

#include "settings/KeywordHistory.h"
#include "tests/support/FileTime.h"
#include "tests/support/NativeLines.h"
#include "tests/support/OrdinaryUser.h"

#include <QDate>
#include <QDir>
#include <QSettings>
#include <QTest>

#include <set>
#include <thread>

class AppSettingsTest : public SettingsFixture {
    Q_OBJECT

private slots:
    void init();
    void theInstanceIsMadeOnceWhenThreadsRace();
    void beforeTheFirstLoadEverythingIsEmpty();
    void withoutAnyFileEverySettingHasItsDefault();
    void theFirstSaveMakesTheFileAndNoBackup();
    void aSavedFileHasAByteOrderMarkAndWindowsLineEnds();
    void savingAgainChangesNothing();
    void everySettingThatIsWrittenComesBack();
    void aSavedFileIsReadByQt();
    void aFileOfQtIsRead();
    void theFirstKeyOfASavedFileIsRead();
    void keysEditedByHandSurviveASave();
    void aReadOnlyKeyIsReadAndNotWritten_data();
    void aReadOnlyKeyIsReadAndNotWritten();
    void wordIsFalseAfterEveryLoad();
    void theTabWidthIsNeverBelowOne_data();
    void theTabWidthIsNeverBelowOne();
    void theByteOrderMarkFlagIsANumber_data();
    void theByteOrderMarkFlagIsANumber();
    void valuesOfTheWrongTypeAreConverted();
    void aTextWithABareCommaIsATextNonetheless();
    void theLanguagesAreReadInTheOrderOfTheirKeys();
    void withoutSettingsTheShippedLanguagesCount_data();
    void withoutSettingsTheShippedLanguagesCount();
    void ownLanguagesComeBeforeTheShippedOnes();
    void aSaveLeavesTheOwnLanguagesAsTheyStand();
    void shippedLanguagesAreNotSaved();
    void loadingTwiceDoublesNothing();
    void aLoadReplacesWhatAnEarlierOneRead();
    void theKeywordHistoryHasTheStoredCapacity();
    void aSaveSavesTheKeywordHistory();
    void aFileOfYesterdayIsBackedUpOnceADay();
    void withoutAScreenOnlyTheLowerBoundsApply();
    void aSaveThatIsImpossibleSaysSo();
    void whatCouldNotBeReadIsNotSavedOver();
    void theApplicationDirectoryIsTheOneLoadedFrom();
    void ofTwoWindowsEachSavesWhatItChanged();
    void anotherWindowsOptionsAreKeptByEverySave();
    void theHistoriesOfTwoWindowsAreMerged();
    void anotherFolderGetsEverything();
    void aFailedSaveIsMadeGoodByTheNext();
};

void AppSettingsTest::init()
{
    makeSettings();
}

void AppSettingsTest::theInstanceIsMadeOnceWhenThreadsRace()
{
    std::vector<AppSettings *> seen(8, nullptr);
    std::vector<std::thread> threads;
    for (AppSettings *&instance : seen)
        threads.emplace_back([&instance] { instance = &AppSettings::instance(); });
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(std::set<AppSettings *>(seen.begin(), seen.end()).size(), size_t(1));
    QVERIFY(seen.front());
}

void AppSettingsTest::beforeTheFirstLoadEverythingIsEmpty()
{
    QVERIFY(!m_settings->keywordHistory);
    QVERIFY(m_settings->langlist.isEmpty() && m_settings->pathhistory.isEmpty());
    QCOMPARE(m_settings->bigsize, 0);
    QVERIFY(!m_settings->backcolor.isValid() && !m_settings->markercolor.isValid());
    QVERIFY(!m_settings->caseinsensitive && !m_settings->regexp);
    QVERIFY(m_settings->applicationDirectory().isEmpty());
}

void AppSettingsTest::withoutAnyFileEverySettingHasItsDefault()
{
    m_settings->load(m_folder->path());
    const AppSettings &s = *m_settings;
    QCOMPARE(s.pos, QPoint(100, 100));
    QCOMPARE(s.size, QSize(800, 800));
    QCOMPARE(s.grepsize, QSize(800, 300));
    QCOMPARE(s.textsize, QSize(800, 300));
    QVERIFY(s.geometry.isEmpty() && s.layoutdata.isEmpty());
    QVERIFY(s.layouttoolbar.isEmpty() && s.layoutsplitter.isEmpty());
    QCOMPARE(s.tabcolm, 4);
    QCOMPARE(s.bigsize, 1);
    QCOMPARE(s.logmax, 10);
    QCOMPARE(s.codechksize, 4096);
    QCOMPARE(s.searchHistorymax, 100);
    QVERIFY(s.caseinsensitive && s.regexp && s.cursorback && !s.word);
    QCOMPARE(s.browser, QStringLiteral("gnome-open"));
    QVERIFY(s.editor.isEmpty() && s.editor_para.isEmpty());
    QVERIFY(s.pathhistory.isEmpty() && s.maskhistory.isEmpty() && s.keyhistory.isEmpty());
    QVERIFY(s.history2.isEmpty() && s.excusiondir.isEmpty() && s.excusionfile.isEmpty());
    QVERIFY(s.tab && s.cr && s.zenspc && s.subdir && !s.warningmsg && !s.fname);
    QCOMPARE(s.newfileCodeset, 1);
    QCOMPARE(s.newfileDetectsize, 2048);
    QCOMPARE(s.newfileLb, 2);
    QVERIFY(!s.newfileBom);
    QVERIFY(s.findcase && !s.findword && !s.findregexp);
    QVERIFY(s.langlist.isEmpty() && s.langlistValues.isEmpty());
    QVERIFY(s.keywordHistory && s.keywordHistory->entries().empty());
}

void AppSettingsTest::theFirstSaveMakesTheFileAndNoBackup()
{
    m_settings->load(m_folder->path());
    QVERIFY(m_settings->save(m_folder->path()));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{fileName()});
}

void AppSettingsTest::aSavedFileHasAByteOrderMarkAndWindowsLineEnds()
{
    load("; mine\n[color]\nbackcolor=#010203\n");
    QByteArray file = saved();
    QVERIFY(file.startsWith("\xef\xbb\xbf[General]\r\n"));
    QVERIFY(file.contains("\r\nexcusiondir=@Invalid()\r\n"));
    QVERIFY(file.contains("\r\ncolor") || file.contains("\r\n[color]\r\nbackcolor=#010203\r\n"));
    QVERIFY(!file.contains("\r\r"));
    file.replace("\r\n", "");
    QVERIFY(!file.contains('\n') && !file.contains('\r'));
}

void AppSettingsTest::savingAgainChangesNothing()
{
    m_settings->load(m_folder->path());
    m_settings->pathhistory = QStringList{QStringLiteral("C:\\検索, 1\\"), QStringLiteral("/a b/")};
    const QByteArray once = saved();
    QCOMPARE(saved(), once);
    m_settings->load(m_folder->path());
    QCOMPARE(saved(), once);
}

void AppSettingsTest::everySettingThatIsWrittenComesBack()
{
    m_settings->load(m_folder->path());
    AppSettings &s = *m_settings;
    s.pos = QPoint(-7, 8);
    s.size = QSize(1001, 701);
    s.grepsize = QSize(11, 12);
    s.geometry = QByteArray("\0\1\xff,;=\"\\@ ", 11);
    s.layoutdata = QByteArray("@ByteArray(x)");
    s.layouttoolbar = QByteArray(3000, '\x80');
    s.layoutsplitter = QByteArray("\r\n");
    s.tabcolm = 8;
    s.bigsize = 4096;
    s.codechksize = 512;
    s.caseinsensitive = s.regexp = s.tab = s.cr = s.zenspc = s.subdir = s.findcase = false;
    s.warningmsg = s.fname = s.findword = s.findregexp = true;
    s.browser = QStringLiteral("ブラウザ");
    s.editor = QStringLiteral("C:\\Program Files\\秀丸, x\\a;b.exe");
    s.editor_para = QStringLiteral(" /j%1 \"%2\" ");
    s.pathhistory = QStringList{QStringLiteral("@list"), QStringLiteral("C:/𠮷野家/"), QString()};
    s.maskhistory = QStringList{QStringLiteral("*.cpp *.h")};
    s.keyhistory = QStringList{QStringLiteral("a\tb"), QStringLiteral("\\d+;,")};
    s.history2 = QStringList{QStringLiteral("二")};
    s.excusiondir = QStringList{QStringLiteral(".git"), QStringLiteral("CVS")};
    s.excusionfile = QStringList{QStringLiteral(".exe")};
    s.grepFont = QFont(QStringLiteral("明朝"), 21, QFont::Bold);
    s.textFont = QFont(QStringLiteral("Courier, New"), 5);
    s.inputFont = QFont(QStringLiteral("x"), 31, QFont::Bold);
    s.backcolor = QColor(1, 2, 3);
    s.paletteLink = QColor(4, 5, 6);
    QVERIFY(s.save(m_folder->path()));

    AppSettings read;
    read.load(m_folder->path());
    QCOMPARE(read.pos, s.pos);
    QCOMPARE(read.size, s.size);
    QCOMPARE(read.grepsize, s.grepsize);
    QCOMPARE(read.geometry, s.geometry);
    QCOMPARE(read.layoutdata, s.layoutdata);
    QCOMPARE(read.layouttoolbar, s.layouttoolbar);
    QCOMPARE(read.layoutsplitter, s.layoutsplitter);
    QCOMPARE(read.tabcolm, 8);
    QCOMPARE(read.bigsize, 4096);
    QCOMPARE(read.codechksize, 512);
    QVERIFY(!read.caseinsensitive && !read.regexp && !read.tab && !read.cr && !read.zenspc);
    QVERIFY(!read.subdir && !read.findcase);
    QVERIFY(read.warningmsg && read.fname && read.findword && read.findregexp);
    QCOMPARE(read.browser, s.browser);
    QCOMPARE(read.editor, s.editor);
    QCOMPARE(read.editor_para, s.editor_para);
    QCOMPARE(read.pathhistory, s.pathhistory);
    QCOMPARE(read.maskhistory, s.maskhistory);
    QCOMPARE(read.keyhistory, s.keyhistory);
    QCOMPARE(read.history2, s.history2);
    QCOMPARE(read.excusiondir, s.excusiondir);
    QCOMPARE(read.excusionfile, s.excusionfile);
    QCOMPARE(read.grepFont.family(), QStringLiteral("明朝"));
    QCOMPARE(read.grepFont.pointSize(), 21);
    QCOMPARE(read.grepFont.weight(), 75);
    QCOMPARE(read.textFont.pointSize(), 5);
    QCOMPARE(read.textFont.weight(), 50);
    QCOMPARE(read.inputFontCopy.pointSize(), 31);
    QCOMPARE(read.backcolor, QColor(1, 2, 3));
    QCOMPARE(read.paletteLink, QColor(4, 5, 6));
}

void AppSettingsTest::aSavedFileIsReadByQt()
{
    m_settings->load(m_folder->path());
    m_settings->geometry = QByteArray("\0\xff;", 3);
    m_settings->editor = QStringLiteral("C:\\検索.exe");
    m_settings->pathhistory = QStringList{QStringLiteral("a, b"), QStringLiteral("語")};
    saved();
    QSettings file(m_folder->filePath(fileName()), QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    QCOMPARE(file.value(QStringLiteral("pos")).toPoint(), QPoint(100, 100));
    QCOMPARE(file.value(QStringLiteral("size")).toSize(), QSize(800, 800));
    QCOMPARE(file.value(QStringLiteral("geometry")).toByteArray(), m_settings->geometry);
    QCOMPARE(file.value(QStringLiteral("editor/editor")).toString(), m_settings->editor);
    QCOMPARE(file.value(QStringLiteral("pathhistory")).toStringList(), m_settings->pathhistory);
    QCOMPARE(file.value(QStringLiteral("regexp")).toBool(), true);
    QCOMPARE(file.value(QStringLiteral("excusiondir")).toStringList(), QStringList());
    QCOMPARE(file.value(QStringLiteral("font/grep_family")).toString(),
             QStringLiteral("IPAゴシック"));
    QCOMPARE(file.allKeys().size(), 75);
}

void AppSettingsTest::aFileOfQtIsRead()
{
    {
        QSettings file(m_folder->filePath(fileName()), QSettings::IniFormat);
        file.setIniCodec("UTF-8");
        file.setValue(QStringLiteral("pos"), QPoint(3, 4));
        file.setValue(QStringLiteral("pathhistory"),
                      QStringList{QStringLiteral("a, b"), QStringLiteral("語")});
        file.setValue(QStringLiteral("layouttoolbar"), QByteArray("\0\x80", 2));
        file.setValue(QStringLiteral("langlist/日本語"), QStringLiteral("txt/md"));
    }
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->pos, QPoint(3, 4));
    QCOMPARE(m_settings->pathhistory, QStringList({QStringLiteral("a, b"), QStringLiteral("語")}));
    QCOMPARE(m_settings->layouttoolbar, QByteArray("\0\x80", 2));
    QCOMPARE(m_settings->langlist, QStringList{QStringLiteral("日本語")});
    QCOMPARE(m_settings->langlistValues, QStringList{QStringLiteral("txt/md")});
}

void AppSettingsTest::theFirstKeyOfASavedFileIsRead()
{
    m_settings->load(m_folder->path());
    m_settings->pos = QPoint(5, 6);
    QVERIFY(saved().startsWith("\xef\xbb\xbf[General]\r\npos=@Point(5 6)\r\n"));
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->pos, QPoint(5, 6));
    load("\xef\xbb\xbfpos=@Point(7 8)\r\n");
    QCOMPARE(m_settings->pos, QPoint(7, 8));
}

void AppSettingsTest::keysEditedByHandSurviveASave()
{
    load("; by hand\nlogmax=50\nmine=a,b ; why\n[langlist]\nC++=cpp/h\n[mine]\nx=\\x3042\n");
    const QByteArray file = saved();
    for (const char *line : {"; by hand", "logmax=50", "mine=a,b ", "; why", "[langlist]",
                             "C++=cpp/h", "[mine]", "x=\\x3042"})
        QVERIFY2(file.contains(QByteArray("\r\n") + line + "\r\n"), line);
}

void AppSettingsTest::aReadOnlyKeyIsReadAndNotWritten_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("value");
    const auto row = [](const char *section, const char *key, const char *value) {
        QTest::newRow(key) << QByteArray(section) << QByteArray(key) << QByteArray(value);
    };
    row("General", "textsize", "@Size(1 2)");
    row("General", "logmax", "3");
    row("General", "cursorback", "false");
    row("General", "searchHistorymax", "4");
    row("newfile", "codeset", "4");
    row("newfile", "detectsize", "5");
    row("newfile", "lb", "6");
    row("newfile", "bom", "1");
    row("font", "assit_family", "x");
    row("font", "assit_pointSize", "7");
    row("font", "assist_bold", "true");
    row("langlist", "c", "c/h");
    row("color", "fnamecolor", "#010203");
    row("color", "readonlybackcolor", "#010203");
    row("color", "assistWinBorderColor", "#010203");
    row("color", "assistWinBackColor", "#010203");
    row("color", "assistWinTextColor", "#010203");
}

void AppSettingsTest::aReadOnlyKeyIsReadAndNotWritten()
{
    QFETCH(QByteArray, section);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, value);
    m_settings->load(m_folder->path());
    QVERIFY(!saved().contains('\n' + key + '='));

    load('[' + section + "]\n" + key + '=' + value + '\n');
    const AppSettings &s = *m_settings;
    const QColor colour(1, 2, 3);
    const bool read = s.textsize == QSize(1, 2) || s.logmax == 3 || !s.cursorback
        || s.searchHistorymax == 4 || s.newfileCodeset == 4 || s.newfileDetectsize == 5
        || s.newfileLb == 6 || s.newfileBom || s.assistFont.family() == QLatin1String("x")
        || s.assistFont.pointSize() == 7 || s.assistFont.weight() == 75
        || s.langlist == QStringList{QStringLiteral("c")} || s.fnamecolor == colour
        || s.readonlybackcolor == colour || s.assistWinBorderColor == colour
        || s.assistWinBackColor == colour || s.assistWinTextColor == colour;
    QVERIFY(read);
    m_settings->logmax = m_settings->searchHistorymax = 99;
    m_settings->textsize = QSize(9, 9);
    m_settings->fnamecolor = QColor(9, 9, 9);
    QVERIFY(saved().contains("\r\n" + key + '=' + value + "\r\n"));
}

void AppSettingsTest::wordIsFalseAfterEveryLoad()
{
    load("word=true\n");
    QVERIFY(!m_settings->word);
    m_settings->word = true;
    QCOMPARE(valueIn(saved(), "word"), QStringLiteral("true"));
    m_folder->remove(fileName());
    QCOMPARE(valueIn(saved(), "word"), QStringLiteral("(none)"));
    m_settings->load(m_folder->path());
    QVERIFY(!m_settings->word);
}

void AppSettingsTest::theTabWidthIsNeverBelowOne_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("columns");
    QTest::newRow("zero") << QByteArray("0") << 1;
    QTest::newRow("negative") << QByteArray("-8") << 1;
    QTest::newRow("garbage") << QByteArray("wide") << 1;
    QTest::newRow("empty") << QByteArray("") << 1;
    QTest::newRow("list") << QByteArray("4, 8") << 1;
    QTest::newRow("too big for 32 bits") << QByteArray("4294967296") << 1;
    QTest::newRow("one") << QByteArray("1") << 1;
    QTest::newRow("eight") << QByteArray("8") << 8;
}

void AppSettingsTest::theTabWidthIsNeverBelowOne()
{
    QFETCH(QByteArray, stored);
    QFETCH(int, columns);
    load("tabcolm=" + stored);
    QCOMPARE(m_settings->tabcolm, columns);
}

void AppSettingsTest::theByteOrderMarkFlagIsANumber_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("flag");
    QTest::newRow("0") << QByteArray("0") << false;
    QTest::newRow("1") << QByteArray("1") << true;
    QTest::newRow("2") << QByteArray("2") << true;
    QTest::newRow("-1") << QByteArray("-1") << true;
    QTest::newRow("true") << QByteArray("true") << false;
}

void AppSettingsTest::theByteOrderMarkFlagIsANumber()
{
    QFETCH(QByteArray, stored);
    QFETCH(bool, flag);
    load("[newfile]\nbom=" + stored);
    QCOMPARE(m_settings->newfileBom, flag);
}

void AppSettingsTest::valuesOfTheWrongTypeAreConverted()
{
    load("pos=here\nsize=@Point(1 2)\ngrepsize=big\nbigsize=much\nlogmax=1.5\n"
         "caseinsensitive=perhaps\nregexp=0\ntab=\ngeometry=plain\npathhistory=one\n"
         "zenspc=@Size(1 2)\ncodechksize=@ByteArray(12)\nhistory2=@Point(1 2)\n");
    const AppSettings &s = *m_settings;
    QCOMPARE(s.pos, QPoint());
    QCOMPARE(s.size, QSize(800, 800));
    QCOMPARE(s.grepsize, QSize());
    QCOMPARE(s.bigsize, 0);
    QCOMPARE(s.logmax, 0);
    QVERIFY(s.caseinsensitive && !s.regexp && !s.tab && !s.zenspc);
    QCOMPARE(s.geometry, QByteArray("plain"));
    QCOMPARE(s.pathhistory, QStringList{QStringLiteral("one")});
    QCOMPARE(s.codechksize, 12);
    QVERIFY(s.history2.isEmpty());
}

void AppSettingsTest::aTextWithABareCommaIsATextNonetheless()
{
    load("[editor]\neditor_para=-n %1, %2\n[font]\ngrep_family=A, B\n");
    QCOMPARE(m_settings->editor_para, QStringLiteral("-n %1, %2"));
    QCOMPARE(valueIn(saved(), "editor/editor_para"), QStringLiteral("-n %1, %2"));
}

void AppSettingsTest::theLanguagesAreReadInTheOrderOfTheirKeys()
{
    load("[langlist]\nhtml=html/htm\nC++=cpp/h\n%U65E5=\xe6\x9c\xac\n");
    QCOMPARE(m_settings->langlist,
             QStringList({QStringLiteral("C++"), QStringLiteral("html"), QStringLiteral("日")}));
    QCOMPARE(
        m_settings->langlistValues,
        QStringList({QStringLiteral("cpp/h"), QStringLiteral("html/htm"), QStringLiteral("本")}));
}

void AppSettingsTest::withoutSettingsTheShippedLanguagesCount_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::newRow("no file") << QByteArray();
    QTest::newRow("no group") << QByteArray("bigsize=7\n");
    QTest::newRow("nothing in the group") << QByteArray("[langlist]\n[other]\nc=x\n");
}

void AppSettingsTest::withoutSettingsTheShippedLanguagesCount()
{
    QFETCH(QByteArray, settings);
    m_folder->write(QStringLiteral("list/langlist.ini"), "[langlist]\nshell=sh\ncpp=c/h\n");
    if (!settings.isEmpty())
        m_folder->write(fileName(), settings);
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->langlist, QStringList({QStringLiteral("cpp"), QStringLiteral("shell")}));
    QCOMPARE(m_settings->langlistValues,
             QStringList({QStringLiteral("c/h"), QStringLiteral("sh")}));
}

void AppSettingsTest::ownLanguagesComeBeforeTheShippedOnes()
{
    m_folder->write(QStringLiteral("list/langlist.ini"),
                    "[langlist]\nshell=sh\ncpp=c/h\nawk=awk\n");
    load("[langlist]\nzz=h\nshell=\n");
    QCOMPARE(m_settings->langlist,
             QStringList({QStringLiteral("shell"), QStringLiteral("zz"), QStringLiteral("awk"),
                          QStringLiteral("cpp")}));
    QCOMPARE(m_settings->langlistValues,
             QStringList(
                 {QString(), QStringLiteral("h"), QStringLiteral("awk"), QStringLiteral("c/h")}));
}

void AppSettingsTest::aSaveLeavesTheOwnLanguagesAsTheyStand()
{
    m_folder->write(QStringLiteral("list/langlist.ini"), "[langlist]\nshell=sh\ncpp=c/h\n");
    load("[langlist]\nshell=bash\n");
    const QByteArray kept = saved();
    QCOMPARE(kept.count("[langlist]"), 1);
    QVERIFY2(kept.contains("shell=bash"), kept);
    QVERIFY2(!kept.contains("cpp="), kept);
    // What a newer version ships is there at once.
    m_folder->write(QStringLiteral("list/langlist.ini"), "[langlist]\nshell=sh\nawk=awk\n");
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->langlist, QStringList({QStringLiteral("shell"), QStringLiteral("awk")}));
    QCOMPARE(m_settings->langlistValues,
             QStringList({QStringLiteral("bash"), QStringLiteral("awk")}));
}

void AppSettingsTest::shippedLanguagesAreNotSaved()
{
    const QByteArray shipped = "[langlist]\ncpp=c/h\n";
    m_folder->write(QStringLiteral("list/langlist.ini"), shipped);
    m_settings->load(m_folder->path());
    QVERIFY(!saved().contains("langlist"));
    QCOMPARE(m_folder->read(QStringLiteral("list/langlist.ini")), shipped);
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->langlist, QStringList{QStringLiteral("cpp")});
}

void AppSettingsTest::loadingTwiceDoublesNothing()
{
    m_folder->write(QStringLiteral("keywordhistory.ini"), "[keyword]\n001=101abc\n");
    load("pathhistory=a, b\n[langlist]\nc=c/h\n");
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->langlist, QStringList{QStringLiteral("c")});
    QCOMPARE(m_settings->langlistValues, QStringList{QStringLiteral("c/h")});
    QCOMPARE(m_settings->pathhistory.size(), 2);
    QCOMPARE(m_settings->keywordHistory->keywords(), QStringList{QStringLiteral("abc")});
}

void AppSettingsTest::aLoadReplacesWhatAnEarlierOneRead()
{
    load("bigsize=7\n[langlist]\nc=c/h\n[font]\ngrep_bold=true\ngrep_pointSize=30\n");
    m_settings->keywordHistory->add(QStringLiteral("abc"), true, true, true);
    load("");
    QCOMPARE(m_settings->bigsize, 1);
    QVERIFY(m_settings->langlist.isEmpty() && m_settings->langlistValues.isEmpty());
    QVERIFY(m_settings->keywordHistory->entries().empty());
    QCOMPARE(m_settings->grepFont.weight(), 50);
    QCOMPARE(m_settings->grepFont.pointSize(), 14);
}

void AppSettingsTest::theKeywordHistoryHasTheStoredCapacity()
{
    m_folder->write(QStringLiteral("keywordhistory.ini"),
                    "[keyword]\n001=101a\n002=101b\n003=101c\n");
    load("searchHistorymax=2\n");
    QCOMPARE(m_settings->keywordHistory->capacity(), 2);
    QCOMPARE(m_settings->keywordHistory->keywords(),
             QStringList({QStringLiteral("a"), QStringLiteral("b")}));
}

void AppSettingsTest::aSaveSavesTheKeywordHistory()
{
    m_settings->load(m_folder->path());
    m_settings->keywordHistory->add(QStringLiteral("abc"), true, false, true);
    saved();
    QCOMPARE(m_folder->read(QStringLiteral("keywordhistory.ini")),
             nativeLines("[keyword]\n001=101abc\n"));
}

void AppSettingsTest::aFileOfYesterdayIsBackedUpOnceADay()
{
    load("mine=1\n");
    const QByteArray old = m_folder->read(fileName());
    FileTime::setDayOfChange(m_folder->filePath(fileName()), QDate::currentDate().addDays(-1));
    const QByteArray first = saved();
    const QString backup = fileName() + QStringLiteral(".bak1");
    QCOMPARE(m_folder->read(backup), old);
    m_settings->bigsize = 3;
    saved();
    QCOMPARE(m_folder->read(backup), old);
    QVERIFY(!m_folder->exists(fileName() + QStringLiteral(".bak2")));
}

void AppSettingsTest::withoutAScreenOnlyTheLowerBoundsApply()
{
    load("size=@Size(99999 88888)\n");
    QCOMPARE(m_settings->size, QSize(99999, 88888));
    load("size=@Size(600 400)\n");
    QCOMPARE(m_settings->size, QSize(800, 800));
}

void AppSettingsTest::aSaveThatIsImpossibleSaysSo()
{
    m_folder->write(QStringLiteral("file"), "content");
    const QString folder = m_folder->filePath(QStringLiteral("file/"));
    m_settings->load(folder);
    QVERIFY(!m_settings->save(folder));
    QCOMPARE(m_folder->read(QStringLiteral("file")), QByteArray("content"));
    QVERIFY(!AppSettings().save(folder));
}

void AppSettingsTest::whatCouldNotBeReadIsNotSavedOver()
{
    const QByteArray old = "bigsize=7\n";
    const QByteArray oldHistory = "[keyword]\n001=101abc\n";
    const QString history = QStringLiteral("keywordhistory.ini");
    m_folder->write(history, oldHistory);
    m_folder->write(fileName(), old);
    const auto allow = [this](QFileDevice::Permissions permissions) {
        QFile::setPermissions(m_folder->filePath(fileName()), permissions);
        QFile::setPermissions(m_folder->filePath(QStringLiteral("keywordhistory.ini")),
                              permissions);
    };
    QVERIFY(QFile::setPermissions(m_folder->path(), QFileDevice::Permissions(0x7777)));
    allow(QFileDevice::WriteOwner);
    {
        const OrdinaryUser user;
        if (!user.inForce())
            QSKIP("permissions mean nothing here");
        m_settings->load(m_folder->path());
    }
    allow(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QCOMPARE(m_settings->bigsize, 1);
    m_settings->keywordHistory->add(QStringLiteral("new"), true, false, true);
    QVERIFY(!m_settings->save(m_folder->path()));
    QCOMPARE(m_folder->read(fileName()), old);
    QCOMPARE(m_folder->read(history), oldHistory);

    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->bigsize, 7);
    QVERIFY(m_settings->save(m_folder->path()));
}

void AppSettingsTest::theApplicationDirectoryIsTheOneLoadedFrom()
{
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->applicationDirectory(), m_folder->path());
}

void AppSettingsTest::ofTwoWindowsEachSavesWhatItChanged()
{
    load("tabcolm=4\nbrowser=before\n[color]\nbackcolor=#010101\n");
    AppSettings other;
    other.load(m_folder->path());
    other.tabcolm = 8;
    other.backcolor = QColor(2, 2, 2);
    other.classcolor = QColor(3, 3, 3);
    other.grepFont.setPointSize(20);
    other.size = QSize(700, 700);
    QVERIFY(other.save(m_folder->path()));
    m_settings->browser = QStringLiteral("mine");
    m_settings->size = QSize(900, 900);
    const QByteArray file = saved();
    QCOMPARE(valueIn(file, "tabcolm"), QStringLiteral("8"));
    QCOMPARE(valueIn(file, "color/backcolor"), QStringLiteral("#020202"));
    QCOMPARE(valueIn(file, "color/classcolor"), QStringLiteral("#030303"));
    QCOMPARE(valueIn(file, "font/grep_pointSize"), QStringLiteral("20"));
    QCOMPARE(valueIn(file, "browser"), QStringLiteral("mine"));
    AppSettings next;
    next.load(m_folder->path());
    QCOMPARE(next.size, QSize(900, 900));
}

void AppSettingsTest::anotherWindowsOptionsAreKeptByEverySave()
{
    m_settings->load(m_folder->path());
    AppSettings other;
    other.load(m_folder->path());
    other.editor = QStringLiteral("other");
    QVERIFY(other.save(m_folder->path()));
    QCOMPARE(valueIn(saved(), "editor/editor"), QStringLiteral("other"));
    QCOMPARE(valueIn(saved(), "editor/editor"), QStringLiteral("other"));
    m_settings->editor = QStringLiteral("mine");
    QCOMPARE(valueIn(saved(), "editor/editor"), QStringLiteral("mine"));
}

void AppSettingsTest::theHistoriesOfTwoWindowsAreMerged()
{
    load("maskhistory=\"old\"\nhistory2=\"old\"\nkeyhistory=\"old\"\n");
    AppSettings other;
    other.load(m_folder->path());
    const QString others = QStringLiteral("other");
    const QString mine = QStringLiteral("mine");
    const auto members = {&AppSettings::maskhistory, &AppSettings::history2,
                          &AppSettings::keyhistory};
    for (const auto member : members) {
        (other.*member).prepend(others);
        ((*m_settings).*member).prepend(mine);
    }
    other.keywordHistory->add(others, true, false, true);
    m_settings->keywordHistory->add(mine, true, false, true);
    QVERIFY(other.save(m_folder->path()));
    QVERIFY(m_settings->save(m_folder->path()));
    AppSettings next;
    next.load(m_folder->path());
    for (const auto member : members)
        QCOMPARE(next.*member, QStringList({mine, others, QStringLiteral("old")}));
    QCOMPARE(next.keywordHistory->keywords(), QStringList({mine, others}));
}

void AppSettingsTest::anotherFolderGetsEverything()
{
    load("browser=mine\n");
    const ScratchFolder elsewhere;
    elsewhere.write(fileName(), "browser=other\n");
    QVERIFY(m_settings->save(elsewhere.path()));
    QCOMPARE(valueIn(elsewhere.read(fileName()), "browser"), QStringLiteral("mine"));
}

void AppSettingsTest::aFailedSaveIsMadeGoodByTheNext()
{
    load("browser=before\n");
    m_settings->browser = QStringLiteral("mine");
    m_folder->remove(fileName());
    m_folder->makeFolder(fileName());
    QVERIFY(!m_settings->save(m_folder->path()));
    QVERIFY(QDir(m_folder->path()).rmdir(fileName()));
    m_folder->write(fileName(), "browser=other\n");
    QCOMPARE(valueIn(saved(), "browser"), QStringLiteral("mine"));
}

QTEST_GUILESS_MAIN(AppSettingsTest)
#include "AppSettingsTest.moc"
