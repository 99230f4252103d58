#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "tests/support/ScratchFolder.h"
#include "tests/view/ColouredText.h"
#include "view/LanguageConfig.h"

#include <QDir>
#include <QMap>
#include <QTest>

/// A piece of each language as people write it, coloured by the definition that
/// is shipped. languages/NAME.SUFFIX is the piece, languages/NAME.colours says
/// which of its places have which colour; languages/README.md has the form.
class LanguageSamplesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void everyLanguageHasASample();
    void aSampleIsARealPiece_data();
    void aSampleIsARealPiece();
    void everyKindOfPlaceIsNamed_data();
    void everyKindOfPlaceIsNamed();
    void theNamedPlacesHaveTheirColours_data();
    void theNamedPlacesHaveTheirColours();
    void noLanguageDependsOnTheOneBefore_data();
    void noLanguageDependsOnTheOneBefore();

private:
    ScratchFolder m_folder;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QString kListFolder = QStringLiteral(SARVIK_LIST_FOLDER "/");
const QString kSampleFolder = QStringLiteral(SARVIK_LANGUAGE_SAMPLES "/");

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList linesOf(const QString &path)
{
    QStringList lines = QString::fromUtf8(bytesOf(path)).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

/// File names of the samples by language.
QMap<QString, QString> samples()
{
    QMap<QString, QString> files;
    for (const QString &file : QDir(kSampleFolder).entryList(QDir::Files)) {
        const QString language = file.section(QLatin1Char('.'), 0, 0);
        if (!file.endsWith(text(".colours")) && file != text("README.md"))
            files[language] = file;
    }
    return files;
}

QString sampleOf(const QString &language)
{
    return kSampleFolder + samples().value(language);
}

QStringList coloursOf(const QString &language)
{
    return linesOf(kSampleFolder + language + text(".colours"));
}

void addLanguageRows()
{
    QTest::addColumn<QString>("language");
    for (const QString &language : AppSettings::instance().langlist)
        QTest::newRow(language.toLatin1().constData()) << language;
}

/// One line of a .colours file: "ROLE before«place»behind".
struct NamedPlace {
    QString role;
    QString before;
    QString place;
    QString behind;

    explicit NamedPlace(const QString &line)
        : role(line.section(QLatin1Char(' '), 0, 0)), before(line.section(QLatin1Char(' '), 1))
    {
        const QString rest = before.section(QChar(0xAB), 1);
        before = before.section(QChar(0xAB), 0, 0);
        place = rest.section(QChar(0xBB), 0, 0);
        behind = rest.section(QChar(0xBB), 1);
    }

    QString context() const { return before + place + behind; }
};

/// The letters of ColouredText that a role may have.
QString lettersOf(const QString &role)
{
    static const QMap<QString, QString> letters = {
        {text("reserved"), text("r")}, {text("keyword"), text("k")}, {text("comment"), text("bc")},
        {text("string"), text("ds")},  {text("value"), text("v")},   {text("plain"), text(".")},
    };
    return letters.value(role);
}

QString whatIsWrong(const NamedPlace &named, const QStringList &lines, const QStringList &colours)
{
    if (lettersOf(named.role).isEmpty() || named.place.isEmpty())
        return text("no role or no place");
    for (int i = 0; i < lines.size(); ++i) {
        const int at = lines.at(i).indexOf(named.context());
        if (at < 0)
            continue;
        const QString found = colours.at(i).mid(at + named.before.size(), named.place.size());
        for (QChar letter : found) {
            if (!lettersOf(named.role).contains(letter))
                return lines.at(i) + QLatin1Char('\n') + colours.at(i);
        }
        return QString();
    }
    return text("not in the sample");
}

/// Of the sample of a language, by its suffix, after setLanguage() for others.
QStringList colouredSample(const QString &language, HighlightSyntax &syntax)
{
    const QString file = sampleOf(language);
    syntax.setLanguage(LanguageConfig::suffixOf(file), QString());
    return ColouredText::lettersOf(syntax, linesOf(file));
}

} // namespace

void LanguageSamplesTest::initTestCase()
{
    for (const QString &file : QDir(kListFolder).entryList(QDir::Files))
        m_folder.write(text("list/") + file, bytesOf(kListFolder + file));
    AppSettings::instance().load(m_folder.path());
    QVERIFY(!AppSettings::instance().langlist.isEmpty());
}

void LanguageSamplesTest::everyLanguageHasASample()
{
    QCOMPARE(QStringList(samples().keys()), AppSettings::instance().langlist);
}

void LanguageSamplesTest::aSampleIsARealPiece_data()
{
    addLanguageRows();
}

void LanguageSamplesTest::aSampleIsARealPiece()
{
    constexpr int kFewestLines = 15;
    QFETCH(QString, language);
    const QString file = sampleOf(language);
    QCOMPARE(LanguageConfig::languageOf(LanguageConfig::suffixOf(file)), language);
    const QByteArray bytes = bytesOf(file);
    QVERIFY(linesOf(file).size() >= kFewestLines);
    QCOMPARE(QString::fromUtf8(bytes).toUtf8(), bytes);
    // Texts of two columns a character are what the program is used for.
    QVERIFY(QString::fromUtf8(bytes).contains(QRegExp(text("[\\x3040-\\x30ff\\x4e00-\\x9fff]"))));
}

void LanguageSamplesTest::everyKindOfPlaceIsNamed_data()
{
    addLanguageRows();
}

void LanguageSamplesTest::everyKindOfPlaceIsNamed()
{
    QFETCH(QString, language);
    QMap<QString, int> count;
    for (const QString &line : coloursOf(language))
        ++count[NamedPlace(line).role];
    for (const char *role : {"string", "plain"})
        QVERIFY2(count.value(text(role)) >= 1, role);
    if (language == text("text")) // has neither words nor comments
        return;
    for (const char *role : {"reserved", "keyword"})
        QVERIFY2(count.value(text(role)) >= 1, role);
    // Where one begins, and what is inside.
    QVERIFY(count.value(text("comment")) >= 2);
}

void LanguageSamplesTest::theNamedPlacesHaveTheirColours_data()
{
    addLanguageRows();
}

void LanguageSamplesTest::theNamedPlacesHaveTheirColours()
{
    QFETCH(QString, language);
    const QStringList lines = linesOf(sampleOf(language));
    HighlightSyntax syntax(false);
    const QStringList colours = colouredSample(language, syntax);
    QString wrong;
    for (const QString &line : coloursOf(language)) {
        const QString problem = whatIsWrong(NamedPlace(line), lines, colours);
        if (!problem.isEmpty())
            wrong += QLatin1Char('\n') + line + text(":\n") + problem;
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void LanguageSamplesTest::noLanguageDependsOnTheOneBefore_data()
{
    addLanguageRows();
}

void LanguageSamplesTest::noLanguageDependsOnTheOneBefore()
{
    QFETCH(QString, language);
    HighlightSyntax fresh(false);
    const QStringList colours = colouredSample(language, fresh);
    // With and without block comments and strings in single quotes.
    for (const char *before : {"c", "html", "shell", "vb"}) {
        HighlightSyntax used(false);
        used.setLanguage(QString(), text(before));
        QVERIFY2(colouredSample(language, used) == colours, before);
    }
}

QTEST_GUILESS_MAIN(LanguageSamplesTest)
#include "LanguageSamplesTest.moc"
