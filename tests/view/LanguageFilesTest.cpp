#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "tests/support/ScratchFolder.h"
#include "tests/view/ColouredText.h"
#include "view/LanguageConfig.h"
#include "view/LanguagePattern.h"

#include <QDir>
#include <QTest>

/// The language definitions that are shipped.
class LanguageFilesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void everyDefinitionIsListed();
    void noSuffixBelongsToTwoLanguages();
    void thePortableFolderHasThem();
    void aDefinitionIsSound_data();
    void aDefinitionIsSound();
    void everyEntryMayMatch_data();
    void everyEntryMayMatch();
    void asDefaultEachFileIsColoured_data();
    void asDefaultEachFileIsColoured();

private:
    ScratchFolder m_folder;
    QStringList m_samples;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QString kListFolder = QStringLiteral(SARVIK_LIST_FOLDER "/");

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList definitionFiles(const QString &folder)
{
    return QDir(folder).entryList({QStringLiteral("*.lst")}, QDir::Files, QDir::Name);
}

LanguageDefinition definitionOf(const QString &language)
{
    const QString path = kListFolder + language + QStringLiteral(".lst");
    return LanguageFile::parse(QString::fromLatin1(bytesOf(path)));
}

void addLanguageRows()
{
    QTest::addColumn<QString>("language");
    for (QString file : definitionFiles(kListFolder)) {
        file.chop(4);
        QTest::newRow(file.toLatin1().constData()) << file;
    }
}

} // namespace

void LanguageFilesTest::initTestCase()
{
    // As the portable folder is when it is new.
    for (const QString &file : definitionFiles(kListFolder))
        m_folder.write(text("list/") + file, bytesOf(kListFolder + file));
    m_folder.write(text("list/langlist.ini"), bytesOf(kListFolder + text("langlist.ini")));
    AppSettings::instance().load(m_folder.path());

    const QByteArray samples = bytesOf(QStringLiteral(SARVIK_LANGUAGE_LINES));
    m_samples = QString::fromUtf8(samples).split(text("== "), Qt::SkipEmptyParts);
    QVERIFY(!m_samples.isEmpty());
}

void LanguageFilesTest::everyDefinitionIsListed()
{
    QStringList files;
    for (const QString &language : AppSettings::instance().langlist)
        files.append(language + text(".lst"));
    QCOMPARE(files, definitionFiles(kListFolder));
}

void LanguageFilesTest::noSuffixBelongsToTwoLanguages()
{
    QStringList suffixes;
    for (const QString &value : AppSettings::instance().langlistValues)
        suffixes += value.split(QLatin1Char('/'));
    QVERIFY(!suffixes.contains(QString()));
    QStringList once = suffixes;
    once.removeDuplicates();
    QCOMPARE(suffixes, once);
}

void LanguageFilesTest::thePortableFolderHasThem()
{
    const QString folder = QStringLiteral(SARVIK_PORTABLE_FOLDER "/list/");
    const QStringList files = definitionFiles(kListFolder);
    QCOMPARE(definitionFiles(folder), files);
    for (const QString &file : files)
        QCOMPARE(bytesOf(folder + file), bytesOf(kListFolder + file));
    const QString list = text("langlist.ini");
    QVERIFY(!bytesOf(folder + list).isEmpty());
    QCOMPARE(bytesOf(folder + list), bytesOf(kListFolder + list));
}

void LanguageFilesTest::aDefinitionIsSound_data()
{
    addLanguageRows();
}

void LanguageFilesTest::aDefinitionIsSound()
{
    QFETCH(QString, language);
    for (char byte : bytesOf(kListFolder + language + text(".lst"))) {
        // Any locale's codec reads ASCII.
        QVERIFY(byte == '\n' || (byte >= ' ' && byte <= '~'));
    }
    const LanguageDefinition definition = definitionOf(language);
    const int place = AppSettings::instance().langlist.indexOf(language);
    QCOMPARE(definition.suffix, AppSettings::instance().langlistValues.value(place));
    QVERIFY(!LanguagePattern::compiled(definition.multiLineStart).isEmpty());
    QVERIFY(!LanguagePattern::compiled(definition.multiLineEnd).isEmpty());
    QVERIFY(definition.singleLine.isEmpty()
            || !LanguagePattern::compiled(definition.singleLine).isEmpty());
    const bool hasWords = !definition.reserve.isEmpty() || !definition.wordReserve.isEmpty();
    QCOMPARE(hasWords, language != text("text"));
}

void LanguageFilesTest::everyEntryMayMatch_data()
{
    addLanguageRows();
}

void LanguageFilesTest::everyEntryMayMatch()
{
    QFETCH(QString, language);
    const LanguageDefinition definition = definitionOf(language);
    for (const QString &pattern : definition.reserve + definition.keywords) {
        const QRegExp expression = LanguagePattern::compiled(pattern);
        QVERIFY2(!expression.isEmpty(), qPrintable(pattern));
        QVERIFY2(expression.indexIn(QString()) < 0, qPrintable(pattern));
    }
    QStringList words = definition.wordReserve + definition.wordKeywords;
    for (const QString &word : words) {
        const QRegExp expression(text("\\b") + word + text("\\b"));
        QVERIFY2(expression.exactMatch(word), qPrintable(word));
        QCOMPARE(word.trimmed(), word);
    }
    const int count = words.size();
    QCOMPARE(words.removeDuplicates(), 0);
    QCOMPARE(words.size(), count);
}

void LanguageFilesTest::asDefaultEachFileIsColoured_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("colours");
    for (const QString &sample : qAsConst(m_samples)) {
        QStringList lines = sample.split(QLatin1Char('\n'));
        const QString suffix = lines.takeFirst();
        QStringList texts;
        QStringList colours;
        for (int i = 0; i + 1 < lines.size(); i += 2) {
            texts.append(lines.at(i));
            colours.append(lines.at(i + 1));
        }
        QTest::newRow(suffix.toLatin1().constData()) << texts << colours;
    }
}

void LanguageFilesTest::asDefaultEachFileIsColoured()
{
    QFETCH(QStringList, lines);
    QFETCH(QStringList, colours);
    QVERIFY(!lines.isEmpty());
    HighlightSyntax syntax(false);
    syntax.setLanguage(text(QTest::currentDataTag()), QString());
    const QStringList actual = ColouredText::lettersOf(syntax, lines);
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i) + QLatin1Char('\n');
        QCOMPARE(QString(line + actual.at(i)), QString(line + colours.at(i)));
    }
}

QTEST_GUILESS_MAIN(LanguageFilesTest)
#include "LanguageFilesTest.moc"
