#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"
#include "view/HighlightSyntax.h"
#include "view/LanguageConfig.h"
#include "view/LanguageDefinition.h"
#include "view/LanguagePattern.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <limits>

/// Long lines of nothing but what a language's patterns begin with, in each language
/// that is shipped. A test that hangs here has found a pattern that takes time in
/// proportion to the square of a line's length.
class LanguageLongLineTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void commentsAreThoseOfAShortLine_data();
    void commentsAreThoseOfAShortLine();
    void coloursAreThoseOfAShortLine_data();
    void coloursAreThoseOfAShortLine();

private:
    ScratchFolder m_folder;
};

namespace {

const QString kListFolder = QStringLiteral(SARVIK_LIST_FOLDER "/");

// Both even, as quotes pair up.
constexpr int kFew = 40;
constexpr int kMany = 6000;

const char *const kUnits[] = {"// x ",   "http://x ", "/* ",  "/**/",  "(* ",   "{ ",  "<!-- ",
                              "<# ",     " #",        "# ",   "--[[ ", "{-# ",  "\" ", "' ",
                              "\"//\" ", "'//' */ ",  "`",    "=",     "-x",    ": ",  "; ",
                              "@ ",      "%",         "rem ", "\\",    "[=[ #", "* ",  "1a "};
const char *const kEndings[] = {"", " */ *) } --> #> -} ]] ]=]", " x\"'`"};

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList definitionFiles()
{
    return QDir(kListFolder).entryList({text("*.lst")}, QDir::Files, QDir::Name);
}

void addLanguageRows()
{
    QTest::addColumn<QString>("language");
    for (QString file : definitionFiles()) {
        file.chop(4);
        QTest::newRow(file.toLatin1().constData()) << file;
    }
}

CommentScanner patientScanner(const LanguageDefinition &definition)
{
    StringLiterals literals;
    literals.setSingleQuotes(!definition.singleLine.contains(QLatin1Char('\'')));
    CommentScanner scanner({LanguagePattern::compiled(definition.singleLine),
                            LanguagePattern::compiled(definition.multiLineStart),
                            LanguagePattern::compiled(definition.multiLineEnd)},
                           literals);
    scanner.setPatience(std::numeric_limits<int>::max());
    return scanner;
}

/// What a line leaves open, what of it is comment at its start, and how far from its
/// end its line comment begins, if that is near.
QString summaryOf(const CommentScanner &scanner, const QString &line, int openBefore, int units)
{
    CommentScanner::OpenComments open = {openBefore};
    const std::vector<TextSpan> blocks = scanner.blockComments(line, open);
    const int lineComment = scanner.lineComment(line, blocks);
    const int near = units / 4;
    const QString place = lineComment < 0  ? text("none")
        : lineComment < near               ? QString::number(lineComment)
        : line.size() - lineComment < near ? QString::number(lineComment - line.size())
                                           : text("between");
    QString first = text("no block");
    if (!blocks.empty() && blocks.front().start < near) {
        first = QString::number(blocks.front().start) + QLatin1Char('-');
        first += blocks.front().end < near ? QString::number(blocks.front().end) : text("far");
    }
    return text("%1 open, line comment %2, first %3").arg(open.count()).arg(place, first);
}

} // namespace

void LanguageLongLineTest::initTestCase()
{
    for (const QString &file : definitionFiles())
        m_folder.write(text("list/") + file, bytesOf(kListFolder + file));
    AppSettings::instance().load(m_folder.path());
    QVERIFY(!definitionFiles().isEmpty());
}

void LanguageLongLineTest::commentsAreThoseOfAShortLine_data()
{
    addLanguageRows();
}

void LanguageLongLineTest::commentsAreThoseOfAShortLine()
{
    QFETCH(QString, language);
    const auto definition = LanguageConfig::instance().definition(QString(), language);
    QVERIFY(definition);
    const CommentScanner scanner = patientScanner(*definition);
    for (const char *unit : kUnits) {
        for (const char *ending : kEndings) {
            for (const int openBefore : {0, 1}) {
                const auto summary = [&](int count) {
                    const QString line = text(unit).repeated(count) + text(ending);
                    const int units = kFew * int(qstrlen(unit));
                    return summaryOf(scanner, line, openBefore, units);
                };
                const QString few = summary(kFew);
                const QString many = summary(kMany);
                QVERIFY2(few == many,
                         qPrintable(text("%1%2: %3; %4").arg(text(unit), text(ending), few, many)));
            }
        }
    }
}

void LanguageLongLineTest::coloursAreThoseOfAShortLine_data()
{
    addLanguageRows();
}

/// At the start of a line, of what ends there.
void LanguageLongLineTest::coloursAreThoseOfAShortLine()
{
    QFETCH(QString, language);
    HighlightSyntax syntax(false);
    syntax.setLanguage(QString(), language);
    for (const char *unit : kUnits) {
        const auto colours = [&](int count) {
            const QString line = text(unit).repeated(count);
            const int limit = kFew * int(qstrlen(unit)) / 4;
            QStringList parts;
            syntax.rules().visitMatches(
                line, HighlightRules::Group::Language, limit,
                [&](int start, int length, HighlightColour colour) {
                    if (start + length < limit)
                        parts.append(text("%1:%2:%3").arg(start).arg(length).arg(int(colour)));
                });
            return parts.join(QLatin1Char(' '));
        };
        QVERIFY2(colours(kFew) == colours(kMany), unit);
    }
}

QTEST_GUILESS_MAIN(LanguageLongLineTest)
#include "LanguageLongLineTest.moc"
