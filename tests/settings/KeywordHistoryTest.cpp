#include "settings/KeywordHistory.h"

#include "settings/AppSettings.h"
#include "tests/support/NativeLines.h"
#include "tests/support/ScratchFolder.h"

#include <QDir>
#include <QSettings>
#include <QTest>

#include <memory>

class KeywordHistoryTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void aMissingFileGivesAnEmptyHistory();
    void entriesAreReadWithTheirFlags();
    void theKeysAreNumberedInThreeDigits();
    void onlyTheCapacityIsRead();
    void aGapEndsTheReading();
    void aValueWithoutKeywordIsSkipped();
    void anythingButOneIsAFalseFlag();
    void aKeywordWithBareCommasIsReadWhole();
    void loadingAgainReplacesTheEntries();
    void anAddedEntryStandsAtItsPosition();
    void aPositionOutsideTheListIsItsNearerEnd();
    void aKnownKeywordMovesToTheTopWithItsNewSwitches();
    void anEntrysOwnKeywordMayBeAddedAgain();
    void keywordsThatDifferInCaseAreTwo();
    void theHundredAndFirstKeywordDropsTheOldest();
    void theLimitOfAHundredDoesNotFollowTheCapacity();
    void findIsExact();
    void savingWritesEveryEntry();
    void laterKeysStayInTheFile();
    void japaneseIsEscaped();
    void everyKeywordComesBack();
    void qtReadsWhatIsSaved();
    void whatQtSavedIsRead();
    void anEmptyHistorySavesNoKey();
    void otherSectionsOfTheFileStay();
    void withoutADirectoryTheSettingsOneIsUsed();
    void aSaveThatIsImpossibleSaysSo();
    void aFileThatCannotBeReadLeavesTheEntries();
    void aFileThatWasNeverReadIsNotSavedOver();
    void ofTwoWindowsNeitherLosesItsKeywords();
    void aWindowThatAddedNothingKeepsTheOthersKeywords();
    void twoWindowsThatStartWithoutAFileShareTheirKeywords();
    void aKeywordOfBothWindowsStandsOnceWithTheSwitchesSavedLast();
    void whatIsSavedByBothStaysWithinAHundred();
    void anotherWindowsKeywordsAreKeptByTheSecondSaveToo();
    void aSaveAfterAFailedOneAddsTheSameKeywords();
    void aFileThatLostItsEntriesIsWrittenWhole();
    void reloadingKeepsWhatIsNotSavedYet();
    void reloadingAfterASaveIsALoad();
    void whatReloadingKeptIsSavedInFront();

private:
    void write(const QByteArray &content);
    QByteArray saved(KeywordHistory history);
    KeywordHistory loaded(int capacity = 100);

    std::unique_ptr<ScratchFolder> m_folder;
};

namespace {

const QString kFile = QStringLiteral("keywordhistory.ini");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList texts(std::initializer_list<const char *> list)
{
    QStringList result;
    for (const char *item : list)
        result.append(text(item));
    return result;
}

} // namespace

void KeywordHistoryTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
}

void KeywordHistoryTest::write(const QByteArray &content)
{
    m_folder->write(kFile, "[keyword]\n" + content);
}

QByteArray KeywordHistoryTest::saved(KeywordHistory history)
{
    return history.save() ? m_folder->read(kFile) : QByteArray("(not saved)");
}

KeywordHistory KeywordHistoryTest::loaded(int capacity)
{
    KeywordHistory history(capacity, m_folder->path());
    history.load();
    return history;
}

void KeywordHistoryTest::aMissingFileGivesAnEmptyHistory()
{
    QVERIFY(loaded().entries().empty());
    QCOMPARE(loaded().keywords(), QStringList());
    QVERIFY(QDir(m_folder->path()).isEmpty());
}

void KeywordHistoryTest::entriesAreReadWithTheirFlags()
{
    write("001=101abc\n002=010d e\n");
    const KeywordHistory history = loaded();
    QCOMPARE(history.keywords(), texts({"abc", "d e"}));
    const auto &first = history.entries().at(0);
    QVERIFY(first.flagA && !first.flagB && first.flagC);
    const auto &second = history.entries().at(1);
    QVERIFY(!second.flagA && second.flagB && !second.flagC);
}

void KeywordHistoryTest::theKeysAreNumberedInThreeDigits()
{
    KeywordHistory history(100, m_folder->path());
    for (int i = 100; i > 0; --i)
        history.add(QStringLiteral("k%1").arg(i), true, false, true);
    const QByteArray file = saved(history);
    QVERIFY(file.startsWith(nativeLines("[keyword]\n001=101k1\n002=101k2\n")));
    QVERIFY(file.endsWith(nativeLines("\n099=101k99\n100=101k100\n")));
    QCOMPARE(loaded().keywords(), history.keywords());
}

void KeywordHistoryTest::onlyTheCapacityIsRead()
{
    QByteArray content;
    for (int i = 1; i <= 30; ++i)
        content +=
            QByteArray::number(i).rightJustified(3, '0') + "=000k" + QByteArray::number(i) + '\n';
    write(content);
    QCOMPARE(loaded(20).keywords().size(), 20);
    QCOMPARE(loaded(20).keywords().last(), text("k20"));
    QCOMPARE(loaded(0).keywords().size(), 0);
    QCOMPARE(loaded(-1).keywords().size(), 0);
}

void KeywordHistoryTest::aGapEndsTheReading()
{
    write("001=000a\n002=000b\n003=000c\n004=000d\n005=\n006=000f\n");
    QCOMPARE(loaded().keywords(), texts({"a", "b", "c", "d"}));
    write("001=000a\n003=000c\n");
    QCOMPARE(loaded().keywords(), texts({"a"}));
}

void KeywordHistoryTest::aValueWithoutKeywordIsSkipped()
{
    write("001=000a\n002=101\n003=1\n004=000d\n");
    QCOMPARE(loaded().keywords(), texts({"a", "d"}));
}

void KeywordHistoryTest::anythingButOneIsAFalseFlag()
{
    write("001=x21abc\n");
    const KeywordHistory history = loaded();
    QCOMPARE(history.keywords(), texts({"abc"}));
    const auto &entry = history.entries().front();
    QVERIFY(!entry.flagA && !entry.flagB && entry.flagC);
}

void KeywordHistoryTest::aKeywordWithBareCommasIsReadWhole()
{
    write("001=101a, b\n002=000c\n");
    QCOMPARE(loaded().keywords(), texts({"a, b", "c"}));
}

void KeywordHistoryTest::loadingAgainReplacesTheEntries()
{
    write("001=000a\n");
    KeywordHistory history = loaded();
    history.add(text("mine"), true, true, true);
    write("001=000b\n");
    history.load();
    QCOMPARE(history.keywords(), texts({"b"}));
}

void KeywordHistoryTest::anAddedEntryStandsAtItsPosition()
{
    KeywordHistory history(100, m_folder->path());
    history.add(text("a"), false, false, false);
    history.add(text("b"), false, false, false);
    history.add(text("c"), false, false, false, 1);
    QCOMPARE(history.keywords(), texts({"b", "c", "a"}));
}

void KeywordHistoryTest::aPositionOutsideTheListIsItsNearerEnd()
{
    KeywordHistory history(100, m_folder->path());
    history.add(text("a"), false, false, false, 5);
    history.add(text("b"), false, false, false, 5);
    history.add(text("c"), false, false, false, -5);
    // The list is shorter by the removed one when the new one goes in.
    history.add(text("a"), false, false, false, 3);
    QCOMPARE(history.keywords(), texts({"c", "b", "a"}));
}

void KeywordHistoryTest::aKnownKeywordMovesToTheTopWithItsNewSwitches()
{
    KeywordHistory history(100, m_folder->path());
    history.add(text("a"), true, true, true);
    history.add(text("b"), false, false, false);
    history.add(text("a"), false, false, true);
    QCOMPARE(history.keywords(), texts({"a", "b"}));
    const auto &first = history.entries().front();
    QVERIFY(!first.flagA && !first.flagB && first.flagC);
}

void KeywordHistoryTest::anEntrysOwnKeywordMayBeAddedAgain()
{
    KeywordHistory history(100, m_folder->path());
    history.add(text("a keyword that is stored outside the entry"), true, true, true);
    history.add(text("b"), false, false, false);
    history.add(history.entries().at(1).keyword, false, false, false);
    QCOMPARE(history.keywords(), texts({"a keyword that is stored outside the entry", "b"}));
}

void KeywordHistoryTest::keywordsThatDifferInCaseAreTwo()
{
    KeywordHistory history(100, m_folder->path());
    history.add(text("abc"), true, true, true);
    history.add(text("ABC"), true, true, true);
    QCOMPARE(history.keywords(), texts({"ABC", "abc"}));
}

void KeywordHistoryTest::theHundredAndFirstKeywordDropsTheOldest()
{
    KeywordHistory history(100, m_folder->path());
    for (int i = 1; i <= 101; ++i)
        history.add(QString::number(i), true, false, false);
    QCOMPARE(history.keywords().size(), 100);
    QCOMPARE(history.keywords().first(), text("101"));
    QCOMPARE(history.keywords().last(), text("2"));
}

void KeywordHistoryTest::theLimitOfAHundredDoesNotFollowTheCapacity()
{
    KeywordHistory small(20, m_folder->path());
    KeywordHistory large(200, m_folder->path());
    for (int i = 1; i <= 150; ++i) {
        small.add(QString::number(i), true, false, false);
        large.add(QString::number(i), true, false, false);
    }
    QCOMPARE(small.keywords().size(), 100);
    QCOMPARE(large.keywords().size(), 100);
}

void KeywordHistoryTest::findIsExact()
{
    KeywordHistory history(100, m_folder->path());
    history.add(text("abc"), true, true, true);
    history.add(text("ABC"), true, true, true);
    QCOMPARE(history.find(text("ABC")), 0);
    QCOMPARE(history.find(text("abc")), 1);
    QCOMPARE(history.find(text("Abc")), -1);
    QCOMPARE(history.find(text("ab")), -1);
    QCOMPARE(history.find(QString()), -1);
}

void KeywordHistoryTest::savingWritesEveryEntry()
{
    KeywordHistory history(1, m_folder->path());
    history.add(text("b"), false, true, false);
    history.add(text("abc"), true, false, true);
    QCOMPARE(saved(history), nativeLines("[keyword]\n001=101abc\n002=010b\n"));
}

void KeywordHistoryTest::laterKeysStayInTheFile()
{
    write("001=000a\n002=000b\n003=000c\n004=111d\n");
    KeywordHistory history = loaded(2);
    history.add(text("new"), true, false, true);
    QCOMPARE(saved(history), QByteArray("[keyword]\n001=101new\n002=000a\n003=000b\n004=111d\n"));
}

void KeywordHistoryTest::japaneseIsEscaped()
{
    KeywordHistory history(100, m_folder->path());
    history.add(text("検索"), true, false, true);
    QCOMPARE(saved(history), nativeLines("[keyword]\n001=101\\x691c\\x7d22\n"));
    QCOMPARE(loaded().keywords(), texts({"検索"}));
}

void KeywordHistoryTest::everyKeywordComesBack()
{
    const QStringList keywords = texts({"a b", " a ", "a,b", "a;b", "\"", "\\d+\\", "@x", "=", "\t",
                                        "𠮷野家", "é", "能ソ表", "0", "[", "%41", "\n"});
    KeywordHistory history(100, m_folder->path());
    for (int i = keywords.size(); i > 0; --i)
        history.add(keywords.at(i - 1), true, false, true);
    QVERIFY(history.save());
    QCOMPARE(loaded().keywords(), keywords);
}

void KeywordHistoryTest::qtReadsWhatIsSaved()
{
    KeywordHistory history(100, m_folder->path());
    history.add(text("検索, a;b"), true, false, true);
    QVERIFY(history.save());
    const QSettings file(m_folder->filePath(kFile), QSettings::IniFormat);
    QCOMPARE(file.value(text("keyword/001")).toString(), text("101検索, a;b"));
    QCOMPARE(file.status(), QSettings::NoError);
}

void KeywordHistoryTest::whatQtSavedIsRead()
{
    {
        QSettings file(m_folder->filePath(kFile), QSettings::IniFormat);
        file.setValue(text("keyword/001"), text("101検索, a;b"));
        file.setValue(text("keyword/002"), text("000𠮷"));
    }
    QCOMPARE(loaded().keywords(), texts({"検索, a;b", "𠮷"}));
}

void KeywordHistoryTest::anEmptyHistorySavesNoKey()
{
    QVERIFY(KeywordHistory(100, m_folder->path()).save());
    QVERIFY(!m_folder->exists(kFile));
    write("001=000a\n");
    QCOMPARE(saved(KeywordHistory(100, m_folder->path())), QByteArray("[keyword]\n001=000a\n"));
}

void KeywordHistoryTest::otherSectionsOfTheFileStay()
{
    m_folder->write(kFile, "; mine\n[other]\nx=1\n");
    KeywordHistory history(100, m_folder->path());
    history.add(text("a"), false, false, false);
    QCOMPARE(saved(history), QByteArray("; mine\n[other]\nx=1\n\n[keyword]\n001=000a\n"));
}

void KeywordHistoryTest::withoutADirectoryTheSettingsOneIsUsed()
{
    write("001=000a\n");
    AppSettings::instance().load(m_folder->path());
    KeywordHistory history(100);
    history.load();
    QCOMPARE(history.keywords(), texts({"a"}));
}

void KeywordHistoryTest::aSaveThatIsImpossibleSaysSo()
{
    m_folder->makeFolder(kFile);
    KeywordHistory history(100, m_folder->path());
    history.load();
    history.add(text("a"), false, false, false);
    QVERIFY(!history.save());
}

void KeywordHistoryTest::aFileThatCannotBeReadLeavesTheEntries()
{
    write("001=101abc\n002=010def\n");
    KeywordHistory history = loaded();
    m_folder->remove(kFile);
    m_folder->makeFolder(kFile);
    history.load();
    QCOMPARE(history.keywords(), texts({"abc", "def"}));
    // It is what the file held; what is added since may go there again.
    history.add(text("new"), false, false, false);
    QVERIFY(QDir(m_folder->path()).rmdir(kFile));
    QVERIFY(history.save());
    QCOMPARE(loaded().keywords(), texts({"new", "abc", "def"}));
    QFile::remove(m_folder->filePath(kFile));
    history.load();
    QCOMPARE(history.keywords(), QStringList());
}

void KeywordHistoryTest::aFileThatWasNeverReadIsNotSavedOver()
{
    m_folder->makeFolder(kFile);
    KeywordHistory history(100, m_folder->path());
    history.load();
    history.add(text("new"), false, false, false);
    QVERIFY(QDir(m_folder->path()).rmdir(kFile));
    write("001=101abc\n");
    QVERIFY(!history.save());
    QCOMPARE(loaded().keywords(), texts({"abc"}));
}

void KeywordHistoryTest::ofTwoWindowsNeitherLosesItsKeywords()
{
    write("001=101a\n002=000b\n");
    KeywordHistory first = loaded();
    KeywordHistory second = loaded();
    first.add(text("first 1"), true, false, false);
    first.add(text("first 2"), true, false, false);
    second.add(text("second 1"), false, false, true);
    second.add(text("b"), false, false, true);
    QVERIFY(first.save());
    QCOMPARE(saved(second),
             QByteArray("[keyword]\n001=001b\n002=001second 1\n003=100first 2\n"
                        "004=100first 1\n005=101a\n"));
    QVERIFY(second.save());
    QCOMPARE(second.keywords(), texts({"b", "second 1", "first 2", "first 1", "a"}));
}

void KeywordHistoryTest::aWindowThatAddedNothingKeepsTheOthersKeywords()
{
    write("001=101a\n");
    KeywordHistory idle = loaded();
    const QByteArray others = "[keyword]\n001=x01new\n002=101a\n";
    m_folder->write(kFile, others);
    QCOMPARE(saved(idle), others);
    QVERIFY(idle.save());
    QCOMPARE(idle.keywords(), texts({"new", "a"}));
}

void KeywordHistoryTest::twoWindowsThatStartWithoutAFileShareTheirKeywords()
{
    KeywordHistory first = loaded();
    KeywordHistory second = loaded();
    first.add(text("a"), false, false, false);
    second.add(text("b"), false, false, false);
    QVERIFY(first.save());
    QVERIFY(second.save());
    QCOMPARE(loaded().keywords(), texts({"b", "a"}));
}

void KeywordHistoryTest::aKeywordOfBothWindowsStandsOnceWithTheSwitchesSavedLast()
{
    KeywordHistory first = loaded();
    KeywordHistory second = loaded();
    first.add(text("a"), true, true, true);
    first.add(text("b"), true, true, true);
    second.add(text("a"), false, false, true);
    QVERIFY(first.save());
    QCOMPARE(saved(second), nativeLines("[keyword]\n001=001a\n002=111b\n"));
}

void KeywordHistoryTest::whatIsSavedByBothStaysWithinAHundred()
{
    KeywordHistory first = loaded();
    KeywordHistory second = loaded();
    for (int i = 0; i < 100; ++i)
        first.add(QStringLiteral("k%1").arg(i), false, false, false);
    second.add(text("x"), false, false, false);
    second.add(text("y"), false, false, false);
    QVERIFY(first.save());
    QVERIFY(second.save());
    QCOMPARE(second.keywords().size(), 100);
    QCOMPARE(second.keywords().mid(0, 3), texts({"y", "x", "k99"}));
    QCOMPARE(second.keywords().last(), text("k2"));
    QCOMPARE(loaded().keywords(), second.keywords());
}

void KeywordHistoryTest::anotherWindowsKeywordsAreKeptByTheSecondSaveToo()
{
    write("001=000a\n");
    KeywordHistory history = loaded(1);
    history.add(text("mine"), false, false, false);
    write("001=000others\n");
    QVERIFY(history.save());
    history.add(text("again"), false, false, false);
    QVERIFY(history.save());
    QCOMPARE(loaded().keywords(), texts({"again", "mine", "others"}));
}

void KeywordHistoryTest::aSaveAfterAFailedOneAddsTheSameKeywords()
{
    write("001=000a\n");
    KeywordHistory history = loaded();
    history.add(text("mine"), false, false, false);
    m_folder->remove(kFile);
    m_folder->makeFolder(kFile);
    QVERIFY(!history.save());
    QVERIFY(QDir(m_folder->path()).rmdir(kFile));
    write("001=000others\n002=000a\n");
    QVERIFY(history.save());
    QCOMPARE(loaded().keywords(), texts({"mine", "others", "a"}));
}

void KeywordHistoryTest::aFileThatLostItsEntriesIsWrittenWhole()
{
    write("001=000a\n");
    KeywordHistory history = loaded();
    m_folder->remove(kFile);
    QVERIFY(history.save());
    QCOMPARE(loaded().keywords(), texts({"a"}));
}

void KeywordHistoryTest::reloadingKeepsWhatIsNotSavedYet()
{
    write("001=000a\n002=000b\n");
    KeywordHistory history = loaded();
    history.add(text("mine"), true, true, false);
    history.add(text("b"), true, true, true);
    write("001=000others\n002=000a\n003=000b\n");
    history.reload();
    QCOMPARE(history.keywords(), texts({"b", "mine", "others", "a"}));
    const auto &first = history.entries().front();
    QVERIFY(first.flagA && first.flagB && first.flagC);
    history.reload();
    QCOMPARE(history.keywords(), texts({"b", "mine", "others", "a"}));
}

void KeywordHistoryTest::reloadingAfterASaveIsALoad()
{
    KeywordHistory history = loaded();
    history.add(text("mine"), false, false, false);
    QVERIFY(history.save());
    m_folder->remove(kFile);
    write("001=000others\n");
    history.reload();
    QCOMPARE(history.keywords(), texts({"others"}));
}

void KeywordHistoryTest::whatReloadingKeptIsSavedInFront()
{
    KeywordHistory history = loaded();
    history.add(text("mine"), false, false, false);
    write("001=000a\n");
    history.reload();
    write("001=000others\n002=000a\n");
    QVERIFY(history.save());
    QCOMPARE(loaded().keywords(), texts({"mine", "others", "a"}));
}

QTEST_GUILESS_MAIN(KeywordHistoryTest)
#include "KeywordHistoryTest.moc"
