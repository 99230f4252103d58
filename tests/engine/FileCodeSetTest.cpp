#include "engine/FileCodeSet.h"

#include "engine/CodeSet.h"
#include "engine/TextDecoder.h"
#include "tests/support/ScratchFolder.h"

#include <QTest>

#include <limits>

class FileCodeSetTest : public QObject {
    Q_OBJECT

private slots:
    void theDefaultsAreThoseOfTheSettings();
    void aSearchedFileHasItsCodeSetAndLineEnd();
    void aMissingFileIsDefaultInASearch();
    void aFileUpToTheSizeLimitIsSearched();
    void aLargerFileIsRefused();
    void aNegativeLimitRefusesEveryFile();
    void aTextTooLargeForAStringIsRefused();
    void fourZeroBytesAreRefusedEvenInASmallFile();
    void fourZeroBytesBehindTheSampleAreNotSeen();
    void onlyTheSampleIsJudged();
    void aSampleSizeOfZeroOrLessMakesEveryFileShiftJis();
    void aHugeSampleSizeTakesTheWholeFile();
    void contentIsJudgedAsTheFileIs_data();
    void contentIsJudgedAsTheFileIs();
    void contentOfAFileThatShrankIsJudgedByWhatIsThere();
    void contentOfAFileThatGrewIsJudgedByItsOpenedSize();
    void theLineEndMayBeLeftOut();
    void aPreviewedFileHasCodeSetLineEndAndMark();
    void aPreviewedFileMayBeOfAnySize();
    void aPreviewedFileOfZeroBytesIsRefused();
    void aFileThatCannotBePreviewedHasTheFallbacks();
    void aPreviewIsNotedInTheDebugLog();
    void aFailedDetectionIsToldAndGivesTheFallbacks();
    void aSuccessfulDetectionIsNotTold();

private:
    int searched(const QByteArray &content, const DetectionSettings &settings = {});

    ScratchFolder m_folder;
};

namespace {

const AutoDetectionBox kNoBox = [](const QString &, const QString &) {
    QFAIL("no box is to be shown");
};

} // namespace

int FileCodeSetTest::searched(const QByteArray &content, const DetectionSettings &settings)
{
    int lineEnd = -1;
    return getFileCodeSet(m_folder.write(QStringLiteral("file"), content), &lineEnd, settings);
}

void FileCodeSetTest::theDefaultsAreThoseOfTheSettings()
{
    const DetectionSettings settings;
    QCOMPARE(settings.sizeLimitBytes, qint64(1048576));
    QCOMPARE(settings.sampleSize, 4096);
    QCOMPARE(settings.detectSize, 2048);
    QCOMPARE(settings.fallbackCodeSet, int(CodeSet::ShiftJis));
    QCOMPARE(settings.fallbackLineEnd, int(CodeSet::CrLf));
    QCOMPARE(settings.fallbackBom, false);
}

void FileCodeSetTest::aSearchedFileHasItsCodeSetAndLineEnd()
{
    int lineEnd = -1;
    const QString path = m_folder.write(QStringLiteral("lf"), "abcd\nefgh\n");
    QCOMPARE(getFileCodeSet(path, &lineEnd, {}), int(CodeSet::Utf8));
    QCOMPARE(lineEnd, int(CodeSet::Lf));
    QCOMPARE(searched("abcd\r\n\x82\xA0"), int(CodeSet::ShiftJis));
    QCOMPARE(searched(QByteArray()), int(CodeSet::ShiftJis));
}

void FileCodeSetTest::aMissingFileIsDefaultInASearch()
{
    int lineEnd = -1;
    QCOMPARE(getFileCodeSet(m_folder.filePath(QStringLiteral("missing")), &lineEnd, {}),
             int(CodeSet::Default));
    QCOMPARE(lineEnd, int(CodeSet::CrLf));
}

void FileCodeSetTest::aFileUpToTheSizeLimitIsSearched()
{
    QCOMPARE(searched(QByteArray(1048576, 'a')), int(CodeSet::ShiftJis));
}

void FileCodeSetTest::aLargerFileIsRefused()
{
    QCOMPARE(kFileRefused, -2);
    QCOMPARE(searched(QByteArray(1048577, 'a')), kFileRefused);
    DetectionSettings settings;
    settings.sizeLimitBytes = 10;
    QCOMPARE(searched(QByteArray(10, 'a'), settings), int(CodeSet::ShiftJis));
    QCOMPARE(searched(QByteArray(11, 'a'), settings), kFileRefused);
}

void FileCodeSetTest::aNegativeLimitRefusesEveryFile()
{
    DetectionSettings settings;
    settings.sizeLimitBytes = 0;
    QCOMPARE(searched(QByteArray(), settings), int(CodeSet::ShiftJis));
    settings.sizeLimitBytes = -1;
    QCOMPARE(searched(QByteArray(), settings), kFileRefused);
}

void FileCodeSetTest::aTextTooLargeForAStringIsRefused()
{
    DetectionSettings settings;
    settings.sizeLimitBytes = std::numeric_limits<qint64>::max();
    const QByteArray content(5000, 'a');
    QCOMPARE(codeSetOfContent(content.constData(), 5000, kLargestText, settings, nullptr),
             int(CodeSet::ShiftJis));
    QCOMPARE(codeSetOfContent(content.constData(), 5000, kLargestText + 1, settings, nullptr),
             kFileRefused);
}

void FileCodeSetTest::fourZeroBytesAreRefusedEvenInASmallFile()
{
    QCOMPARE(searched(QByteArray(4, '\0')), kFileRefused);
    QCOMPARE(searched("abcdef" + QByteArray(4, '\0')), kFileRefused);
    QCOMPARE(searched("abcdef" + QByteArray(3, '\0') + "\n"), int(CodeSet::Utf8));
}

void FileCodeSetTest::fourZeroBytesBehindTheSampleAreNotSeen()
{
    QCOMPARE(searched(QByteArray(4092, 'a') + QByteArray(4, '\0')), kFileRefused);
    QCOMPARE(searched(QByteArray(4096, 'a') + QByteArray(4, '\0')), int(CodeSet::ShiftJis));
}

void FileCodeSetTest::onlyTheSampleIsJudged()
{
    QCOMPARE(searched(QByteArray(4095, 'a') + "\n"), int(CodeSet::Utf8));
    QCOMPARE(searched(QByteArray(4096, 'a') + "\n"), int(CodeSet::ShiftJis));
    DetectionSettings settings;
    settings.sampleSize = 6;
    QCOMPARE(searched("abcde\n\x1B", settings), int(CodeSet::Utf8));
    settings.sampleSize = 7;
    QCOMPARE(searched("abcde\n\x1B", settings), int(CodeSet::Iso2022Jp));
}

void FileCodeSetTest::aSampleSizeOfZeroOrLessMakesEveryFileShiftJis()
{
    for (const int size : {0, -1, std::numeric_limits<int>::min()}) {
        DetectionSettings settings;
        settings.sampleSize = size;
        QCOMPARE(searched("\xEF\xBB\xBF text\n", settings), int(CodeSet::ShiftJis));
        QCOMPARE(searched(QByteArray(10, '\0'), settings), int(CodeSet::ShiftJis));
    }
}

void FileCodeSetTest::aHugeSampleSizeTakesTheWholeFile()
{
    DetectionSettings settings;
    settings.sampleSize = std::numeric_limits<int>::max();
    QCOMPARE(searched(QByteArray(1000000, 'a') + "\x1B", settings), int(CodeSet::Iso2022Jp));
}

void FileCodeSetTest::contentIsJudgedAsTheFileIs_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("Shift-JIS") << QByteArray("\x82\xA0\x82\xA2\r\n");
    QTest::newRow("UTF-8") << QByteArray("\xE3\x81\x82\n");
    QTest::newRow("UTF-16LE") << QByteArray("a\0b\0c\0\n\0", 8);
    QTest::newRow("binary") << QByteArray(100, '\0');
    QTest::newRow("large") << QByteArray(1048577, 'a');
    QTest::newRow("longer than the sample") << QByteArray(4096, 'a') + "\x1B";
}

void FileCodeSetTest::contentIsJudgedAsTheFileIs()
{
    QFETCH(QByteArray, content);
    int ofFile = -1;
    int ofContent = -1;
    const QString path = m_folder.write(QStringLiteral("file"), content);
    QCOMPARE(codeSetOfContent(content.constData(), content.size(), content.size(), {}, &ofContent),
             getFileCodeSet(path, &ofFile, {}));
    QCOMPARE(ofContent, ofFile);
}

void FileCodeSetTest::contentOfAFileThatShrankIsJudgedByWhatIsThere()
{
    const QByteArray content("abcde\n\x1B");
    QCOMPARE(codeSetOfContent(content.constData(), 6, 4000, {}, nullptr), int(CodeSet::Utf8));
}

void FileCodeSetTest::contentOfAFileThatGrewIsJudgedByItsOpenedSize()
{
    const QByteArray content("abcde\n\x1B");
    QCOMPARE(codeSetOfContent(content.constData(), 7, 6, {}, nullptr), int(CodeSet::Utf8));
}

void FileCodeSetTest::theLineEndMayBeLeftOut()
{
    QCOMPARE(getFileCodeSet(m_folder.write(QStringLiteral("file"), "abcd\n"), nullptr, {}),
             int(CodeSet::Utf8));
    QCOMPARE(getFileCodeSet(m_folder.filePath(QStringLiteral("missing")), nullptr, {}),
             int(CodeSet::Default));
}

void FileCodeSetTest::aPreviewedFileHasCodeSetLineEndAndMark()
{
    int lineEnd = -1;
    bool bom = false;
    const QString marked = m_folder.write(QStringLiteral("marked"), "\xEF\xBB\xBFx\n");
    QCOMPARE(detectFileCodeSet(marked, &lineEnd, &bom, {}, kNoBox), int(CodeSet::Utf8));
    QCOMPARE(lineEnd, int(CodeSet::Lf));
    QVERIFY(bom);
    const QString plain = m_folder.write(QStringLiteral("plain"), "abcd\r");
    QCOMPARE(detectFileCodeSet(plain, &lineEnd, &bom, {}, kNoBox), int(CodeSet::ShiftJis));
    QCOMPARE(lineEnd, int(CodeSet::Cr));
    QVERIFY(!bom);
}

void FileCodeSetTest::aPreviewedFileMayBeOfAnySize()
{
    int lineEnd = -1;
    bool bom = true;
    DetectionSettings settings;
    settings.sizeLimitBytes = 1;
    const QString path = m_folder.write(QStringLiteral("large"), QByteArray(1048577, 'a') + "\n");
    QCOMPARE(detectFileCodeSet(path, &lineEnd, &bom, settings, kNoBox), int(CodeSet::ShiftJis));
    QCOMPARE(lineEnd, int(CodeSet::CrLf));
}

void FileCodeSetTest::aPreviewedFileOfZeroBytesIsRefused()
{
    int lineEnd = -1;
    bool bom = true;
    const QString path = m_folder.write(QStringLiteral("binary"), QByteArray(100, '\0'));
    QCOMPARE(detectFileCodeSet(path, &lineEnd, &bom, {}, kNoBox), kFileRefused);
    QCOMPARE(lineEnd, int(CodeSet::CrLf));
    QVERIFY(!bom);
}

void FileCodeSetTest::aFileThatCannotBePreviewedHasTheFallbacks()
{
    int lineEnd = -1;
    bool bom = false;
    DetectionSettings settings;
    settings.fallbackCodeSet = CodeSet::Utf16Le;
    settings.fallbackLineEnd = CodeSet::Cr;
    settings.fallbackBom = true;
    const QString missing = m_folder.filePath(QStringLiteral("missing"));
    QCOMPARE(detectFileCodeSet(missing, &lineEnd, &bom, settings, kNoBox), int(CodeSet::Utf16Le));
    QCOMPARE(lineEnd, int(CodeSet::Cr));
    QVERIFY(bom);
}

void FileCodeSetTest::aPreviewIsNotedInTheDebugLog()
{
    int lineEnd = -1;
    bool bom = false;
    const QString marked = m_folder.write(QStringLiteral("marked"), "\xEF\xBB\xBFx\n");
    QTest::ignoreMessage(QtDebugMsg, "AutoDetection 4 BOM= true");
    detectFileCodeSet(marked, &lineEnd, &bom, {}, kNoBox);
    const QString plain = m_folder.write(QStringLiteral("plain"), "abcd\r");
    QTest::ignoreMessage(QtDebugMsg, "AutoDetection 1 BOM= false");
    detectFileCodeSet(plain, &lineEnd, &bom, {}, kNoBox);
}

void FileCodeSetTest::aFailedDetectionIsToldAndGivesTheFallbacks()
{
    QStringList shown;
    const AutoDetectionBox box = [&shown](const QString &title, const QString &text) {
        shown << title << text;
    };
    int lineEnd = -1;
    bool bom = false;
    DetectionSettings settings;
    settings.fallbackCodeSet = CodeSet::EucJp;
    settings.fallbackLineEnd = CodeSet::Lf;
    settings.fallbackBom = true;
    QCOMPARE(codeSetOrFallback(CodeSet::Default, &lineEnd, &bom, settings, box),
             int(CodeSet::EucJp));
    QCOMPARE(lineEnd, int(CodeSet::Lf));
    QVERIFY(bom);
    QCOMPARE(shown,
             QStringList({QStringLiteral("Auto Detection"),
                          QStringLiteral("自動コード判定できませんでした。デフォルトにします。")}));
}

void FileCodeSetTest::aSuccessfulDetectionIsNotTold()
{
    int lineEnd = CodeSet::Cr;
    bool bom = true;
    QCOMPARE(codeSetOrFallback(CodeSet::Utf8, &lineEnd, &bom, {}, kNoBox), int(CodeSet::Utf8));
    QCOMPARE(lineEnd, int(CodeSet::Cr));
    QVERIFY(bom);
}

QTEST_GUILESS_MAIN(FileCodeSetTest)
#include "FileCodeSetTest.moc"
