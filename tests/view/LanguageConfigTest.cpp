#include "view/LanguageConfig.h"

#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

#include <memory>
#include <random>

class LanguageConfigTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aSuffixBelongsToTheFirstLanguageThatListsIt();
    void theSuffixIsComparedExactly_data();
    void theSuffixIsComparedExactly();
    void aSuffixThatNoLanguageListsHasNoDefinition();
    void aLanguageNameGoesBeforeTheSuffix();
    void aNamedLanguageNeedsNoEntryInTheSettings();
    void aMissingFileHasNoDefinition();
    void aFolderInPlaceOfTheFileHasNoDefinition();
    void theFileIsReadFromTheListFolder();
    void anUnchangedFileIsReadOnce();
    void aNewerFileIsReadAgain();
    void anOlderFileIsNotReadAgain();
    void aDefinitionInUseSurvivesItsReload();
    void eachLanguageIsHeldOnce();
    void aFileThatDisappearsHasNoDefinition();
    void aFileThatCannotBeReadAnyMoreIsDropped();
    void aTooLargeFileIsNotRead();
    void aByteOrderMarkIsHonoured_data();
    void aByteOrderMarkIsHonoured();
    void aTextWithoutAMarkIsInTheLocalesCodec();
    void settingsOfUnequalLengthsAreSurvived();
    void anyBytesAreSurvived_data();
    void anyBytesAreSurvived();
    void tenMegabytesAreSurvived_data();
    void tenMegabytesAreSurvived();
    void theProgramsOwnDirectoryIsTheDefault();
    void thereIsOneForTheProcess();
    void theSuffixOfAPathFollowsItsLastDot_data();
    void theSuffixOfAPathFollowsItsLastDot();

private:
    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<LanguageConfig> m_config;

    void writeDefinition(const char *name, const QByteArray &singleLine) const;
    void setFileTime(const char *name, const QDateTime &time) const;
    QString singleLineOf(const char *suffix, const char *name = "") const;
    bool isNone(const char *suffix, const char *name = "") const;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void LanguageConfigTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    m_config = std::make_unique<LanguageConfig>();
    AppSettings &settings = AppSettings::instance();
    settings.load(m_folder->path());
    settings.langlist = QStringList{text("aa"), text("bb"), text("cc")};
    settings.langlistValues = QStringList{text("a/h/x"), text("b/h"), text("CPP/c++/Makefile")};
}

void LanguageConfigTest::cleanup()
{
    m_config.reset();
    m_folder.reset();
}

void LanguageConfigTest::writeDefinition(const char *name, const QByteArray &singleLine) const
{
    m_folder->write(text("list/%1.lst").arg(text(name)),
                    "[comment]\nsingleLine=" + singleLine + "\nmultiLineEnd=\n\n\n");
}

void LanguageConfigTest::setFileTime(const char *name, const QDateTime &time) const
{
    QFile file(m_folder->filePath(text("list/%1.lst").arg(text(name))));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

QString LanguageConfigTest::singleLineOf(const char *suffix, const char *name) const
{
    const LanguageConfig::Definition definition = m_config->definition(text(suffix), text(name));
    return definition ? definition->singleLine : text("(none)");
}

bool LanguageConfigTest::isNone(const char *suffix, const char *name) const
{
    return m_config->definition(text(suffix), text(name)) == nullptr;
}

void LanguageConfigTest::aSuffixBelongsToTheFirstLanguageThatListsIt()
{
    writeDefinition("aa", "of-a");
    writeDefinition("bb", "of-b");
    QCOMPARE(singleLineOf("h"), text("of-a"));
    QCOMPARE(singleLineOf("x"), text("of-a"));
    QCOMPARE(singleLineOf("b"), text("of-b"));
    QCOMPARE(LanguageConfig::languageOf(text("h")), text("aa"));
}

void LanguageConfigTest::theSuffixIsComparedExactly_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("language");

    QTest::newRow("as listed") << text("CPP") << text("cc");
    QTest::newRow("other case") << text("cpp") << QString();
    QTest::newRow("signs of a pattern") << text("c++") << text("cc");
    QTest::newRow("part of one") << text("c+") << QString();
    QTest::newRow("two of them") << text("a/h") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void LanguageConfigTest::theSuffixIsComparedExactly()
{
    QFETCH(QString, suffix);
    QFETCH(QString, language);
    QCOMPARE(LanguageConfig::languageOf(suffix), language);
}

void LanguageConfigTest::aSuffixThatNoLanguageListsHasNoDefinition()
{
    writeDefinition("zz", "of-z");
    writeDefinition("", "of-nobody");
    QVERIFY(isNone("zz"));
    QVERIFY(isNone(""));
}

void LanguageConfigTest::aLanguageNameGoesBeforeTheSuffix()
{
    writeDefinition("aa", "of-a");
    writeDefinition("bb", "of-b");
    QCOMPARE(singleLineOf("a", "bb"), text("of-b"));
}

void LanguageConfigTest::aNamedLanguageNeedsNoEntryInTheSettings()
{
    writeDefinition("zz", "of-z");
    QCOMPARE(singleLineOf("", "zz"), text("of-z"));
}

void LanguageConfigTest::aMissingFileHasNoDefinition()
{
    QVERIFY(isNone("a"));
    QVERIFY(m_config->loadedNames().isEmpty());
}

void LanguageConfigTest::aFolderInPlaceOfTheFileHasNoDefinition()
{
    m_folder->makeFolder(text("list/aa.lst"));
    QVERIFY(isNone("a"));
}

void LanguageConfigTest::theFileIsReadFromTheListFolder()
{
    m_folder->write(text("aa.lst"), "[comment]\nsingleLine=wrong\n\n\n\n");
    QVERIFY(isNone("a"));
    writeDefinition("aa", "right");
    QCOMPARE(singleLineOf("a"), text("right"));
}

void LanguageConfigTest::anUnchangedFileIsReadOnce()
{
    writeDefinition("aa", "of-a");
    const LanguageConfig::Definition first = m_config->definition(text("a"));
    QVERIFY(first);
    QCOMPARE(m_config->definition(text("h")), first);
    QCOMPARE(first->lastModified,
             QFileInfo(m_folder->filePath(text("list/aa.lst"))).lastModified());
}

void LanguageConfigTest::aNewerFileIsReadAgain()
{
    writeDefinition("aa", "old");
    setFileTime("aa", QDateTime::currentDateTime().addSecs(-60));
    QCOMPARE(singleLineOf("a"), text("old"));
    writeDefinition("aa", "new");
    QCOMPARE(singleLineOf("a"), text("new"));
}

void LanguageConfigTest::anOlderFileIsNotReadAgain()
{
    writeDefinition("aa", "first");
    QCOMPARE(singleLineOf("a"), text("first"));
    writeDefinition("aa", "second");
    setFileTime("aa", QDateTime::currentDateTime().addSecs(-60));
    QCOMPARE(singleLineOf("a"), text("first"));
}

void LanguageConfigTest::aDefinitionInUseSurvivesItsReload()
{
    writeDefinition("aa", "old");
    setFileTime("aa", QDateTime::currentDateTime().addSecs(-60));
    const LanguageConfig::Definition old = m_config->definition(text("a"));
    writeDefinition("aa", "new");
    QCOMPARE(singleLineOf("a"), text("new"));
    QCOMPARE(old->singleLine, text("old"));
}

void LanguageConfigTest::eachLanguageIsHeldOnce()
{
    writeDefinition("aa", "of-a");
    writeDefinition("bb", "of-b");
    setFileTime("aa", QDateTime::currentDateTime().addSecs(-60));
    singleLineOf("a");
    singleLineOf("b");
    singleLineOf("x");
    QCOMPARE(m_config->loadedNames(), (QStringList{text("aa"), text("bb")}));
    // Read again, it is the last to be read.
    writeDefinition("aa", "new");
    singleLineOf("a");
    QCOMPARE(m_config->loadedNames(), (QStringList{text("bb"), text("aa")}));
}

void LanguageConfigTest::aFileThatDisappearsHasNoDefinition()
{
    writeDefinition("aa", "of-a");
    QCOMPARE(singleLineOf("a"), text("of-a"));
    m_folder->remove(text("list/aa.lst"));
    QVERIFY(isNone("a"));
}

void LanguageConfigTest::aFileThatCannotBeReadAnyMoreIsDropped()
{
    writeDefinition("aa", "of-a");
    setFileTime("aa", QDateTime::currentDateTime().addSecs(-60));
    QCOMPARE(singleLineOf("a"), text("of-a"));
    writeDefinition("aa", "unreadable");
    QFile file(m_folder->filePath(text("list/aa.lst")));
    QVERIFY(file.resize(LanguageConfig::kLargestFileBytes + 1));
    QVERIFY(isNone("a"));
    QVERIFY(m_config->loadedNames().isEmpty());
}

void LanguageConfigTest::aTooLargeFileIsNotRead()
{
    writeDefinition("aa", "of-a");
    QFile file(m_folder->filePath(text("list/aa.lst")));
    QVERIFY(file.resize(LanguageConfig::kLargestFileBytes + 1));
    QVERIFY(isNone("a"));
}

void LanguageConfigTest::aByteOrderMarkIsHonoured_data()
{
    QTest::addColumn<QByteArray>("mark");
    QTest::addColumn<QByteArray>("codec");

    QTest::newRow("UTF-8") << QByteArray("\xef\xbb\xbf") << QByteArray("UTF-8");
    QTest::newRow("UTF-16, little-endian") << QByteArray("\xff\xfe") << QByteArray("UTF-16LE");
    QTest::newRow("UTF-16, big-endian") << QByteArray("\xfe\xff") << QByteArray("UTF-16BE");
}

void LanguageConfigTest::aByteOrderMarkIsHonoured()
{
    QFETCH(QByteArray, mark);
    QFETCH(QByteArray, codec);
    const QString content = text("[comment]\nsingleLine=\xe3\x81\x82\nmultiLineEnd=\n\n");
    QByteArray bytes;
    if (codec == "UTF-8") {
        bytes = content.toUtf8();
    } else {
        for (QChar c : content) {
            const char low = static_cast<char>(c.unicode() & 0xff);
            const char high = static_cast<char>(c.unicode() >> 8);
            bytes.append(codec == "UTF-16LE" ? low : high).append(codec == "UTF-16LE" ? high : low);
        }
    }
    m_folder->write(text("list/aa.lst"), mark + bytes);
    QCOMPARE(singleLineOf("a"), text("\xe3\x81\x82"));
}

void LanguageConfigTest::aTextWithoutAMarkIsInTheLocalesCodec()
{
    const QString word = text("\xe3\x81\x82");
    writeDefinition("aa", word.toLocal8Bit());
    QCOMPARE(singleLineOf("a"), QString::fromLocal8Bit(word.toLocal8Bit()));
}

void LanguageConfigTest::settingsOfUnequalLengthsAreSurvived()
{
    AppSettings::instance().langlistValues.removeLast();
    QVERIFY(LanguageConfig::languageOf(text("CPP")).isEmpty());
    QCOMPARE(LanguageConfig::languageOf(text("b")), text("bb"));
}

void LanguageConfigTest::anyBytesAreSurvived_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 30; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void LanguageConfigTest::anyBytesAreSurvived()
{
    QFETCH(quint32, seed);
    std::mt19937 random(seed);
    QByteArray bytes = seed % 2 == 0 ? QByteArray("[reserve]\n") : QByteArray();
    for (int i = 0; i < 20000; ++i)
        bytes.append(static_cast<char>(random()));
    m_folder->write(text("list/aa.lst"), bytes);
    QVERIFY(!isNone("a"));
}

void LanguageConfigTest::tenMegabytesAreSurvived_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::newRow("short lines") << QByteArray("x\n");
    QTest::newRow("one line") << QByteArray("(");
    QTest::newRow("zero bytes") << QByteArray(1, '\0');
    QTest::newRow("headers") << QByteArray("[reserve]\n[langoption]\n");
}

void LanguageConfigTest::tenMegabytesAreSurvived()
{
    QFETCH(QByteArray, unit);
    QByteArray bytes = "[reserve]\n";
    bytes += unit.repeated(10 * 1024 * 1024 / unit.size());
    m_folder->write(text("list/aa.lst"), bytes);
    QVERIFY(!isNone("a"));
}

void LanguageConfigTest::theProgramsOwnDirectoryIsTheDefault()
{
    AppSettings::instance().load(QString());
    const QString folder = QCoreApplication::applicationDirPath() + text("/list");
    QVERIFY(QDir().mkpath(folder));
    QFile file(folder + text("/language-of-the-test.lst"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[comment]\nsingleLine=own\n\n\n\n");
    file.close();
    QCOMPARE(singleLineOf("", "language-of-the-test"), text("own"));
    QVERIFY(file.remove());
}

void LanguageConfigTest::thereIsOneForTheProcess()
{
    QCOMPARE(&LanguageConfig::instance(), &LanguageConfig::instance());
}

void LanguageConfigTest::theSuffixOfAPathFollowsItsLastDot_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("suffix");

    QTest::newRow("one dot") << text("/a/b.cpp") << text("cpp");
    QTest::newRow("two dots") << text("/a/b.tar.gz") << text("gz");
    QTest::newRow("dot in a folder") << text("/a.d/Makefile") << text("Makefile");
    QTest::newRow("dot in a folder, backslashes") << text("C:\\a.d\\Makefile") << text("Makefile");
    QTest::newRow("backslashes") << text("C:\\a\\b.H") << text("H");
    QTest::newRow("no dot, listed") << text("Makefile") << text("Makefile");
    QTest::newRow("no dot, listed as a suffix") << text("/a/h") << text("h");
    QTest::newRow("no dot, not listed") << text("/a/NOBODY") << QString::fromLatin1("");
    QTest::newRow("no dot, listed in another case") << text("makefile") << QString::fromLatin1("");
    QTest::newRow("a suffix that is not listed") << text("/a/b.zzz") << text("zzz");
    QTest::newRow("dot at the start") << text("/a/.bashrc") << text("bashrc");
    QTest::newRow("dot at the end") << text("/a/b.") << QString::fromLatin1("");
    QTest::newRow("empty") << QString() << QString::fromLatin1("");
}

void LanguageConfigTest::theSuffixOfAPathFollowsItsLastDot()
{
    QFETCH(QString, path);
    QFETCH(QString, suffix);
    QCOMPARE(LanguageConfig::suffixOf(path), suffix);
}

QTEST_GUILESS_MAIN(LanguageConfigTest)
#include "LanguageConfigTest.moc"
