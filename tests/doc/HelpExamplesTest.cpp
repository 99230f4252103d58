#include "tests/doc/Page.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include "cli/ManPage.h"
#include "cli/OptionParser.h"
#include "engine/ListFile.h"
#include "settings/ParameterFile.h"
#include "view/EditorCommand.h"
#include "view/LanguageDefinition.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QtTest>

namespace {

Page section(const char *id)
{
    QString error;
    for (const Page &found : Page::read(QStringLiteral("index.html"), &error).all("section")) {
        if (found.attribute("id") == QLatin1String(id))
            return found;
    }
    return Page();
}

/// The examples of a section, one text each.
QStringList examples(const char *id)
{
    QStringList texts;
    for (const Page &block : section(id).all("pre"))
        texts += block.text();
    return texts;
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

/// The examples of the help, given to what they are for.
class HelpExamplesTest : public QObject {
    Q_OBJECT

private slots:
    void theParameterFileIsRead();
    void theScriptForLinuxWritesWhatIsRead();
    void theListFileIsRead();
    void theLanguageDefinitionIsRead();
    void everyTemplateOfAnEditorNamesTheFileAndTheLine_data();
    void everyTemplateOfAnEditorNamesTheFileAndTheLine();
    void theExampleOfThePlaceholdersIsWhatTheyBecome();
    void everyCommandOfTheConsoleIsTaken();
    void theManualPageIsReadAndCopied();
};

void HelpExamplesTest::theParameterFileIsRead()
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("sarvikpara.ini"), examples("parameter").value(0).toUtf8());
    const ParameterFile::Content content = ParameterFile(folder.path()).read();
    QCOMPARE(content.pathlist, (QStringList{text("/home/hana/src/"), text("/home/hana/doc/")}));
    QCOMPARE(content.mask, text("*.cpp *.h"));
    QCOMPARE(content.findword, text("灯台"));
}

void HelpExamplesTest::theScriptForLinuxWritesWhatIsRead()
{
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    if (python.isEmpty())
        QSKIP("python3 is not installed");
    const ScratchFolder folder;
    QString script = examples("parameter").value(1);
    QVERIFY(script.startsWith(QLatin1String("#!/usr/bin/env python3\n")));
    QVERIFY(script.contains(QLatin1String("\"/opt/sarvik\"")));
    script.replace(QLatin1String("/opt/sarvik"), folder.path());
    // What it starts; here any program.
    script.replace(QLatin1String("subprocess.Popen([home / \"sarvik\"])"), QLatin1String("pass"));
    const QString file = folder.write(QStringLiteral("request.py"), script.toUtf8());
    const QStringList request = {text("/home/花/a, b/"), text("*.txt"), text("灯a\"\\台")};
    QCOMPARE(QProcess::execute(python, QStringList{file} + request), 0);
    const ParameterFile::Content content = ParameterFile(folder.path()).read();
    QCOMPARE(content.pathlist, QStringList(request.at(0)));
    QCOMPARE(content.mask, request.at(1));
    QCOMPARE(content.findword, request.at(2));
}

void HelpExamplesTest::theListFileIsRead()
{
    const ScratchFolder folder;
    const QStringList texts = examples("listfile");
    QVERIFY(texts.value(0).startsWith(QLatin1Char('@')));
    const QString file = folder.write(QStringLiteral("list.ini"), texts.value(1).toUtf8());
    QCOMPARE(ListFile::read(file),
             (QStringList{text("/home/hana/src/main.cpp"), text("/home/hana/notes, old.txt"),
                          text("/home/hana/doc/")}));
}

void HelpExamplesTest::theLanguageDefinitionIsRead()
{
    const LanguageDefinition language = LanguageFile::parse(examples("languages").value(1));
    QCOMPARE(language.suffix, text("abc"));
    QCOMPARE(language.singleLine, text("#"));
    QCOMPARE(language.multiLineStart, text("/\\*"));
    QCOMPARE(language.multiLineEnd, text("\\*/"));
    QCOMPARE(language.wordReserve, (QStringList{text("if"), text("else")}));
    QCOMPARE(language.wordKeywords, QStringList(text("print")));
    QCOMPARE(language.reserve, QStringList(text("@[a-z]+")));
    QCOMPARE(language.keywords, QStringList(text("\\$[A-Z]+")));
}

void HelpExamplesTest::everyTemplateOfAnEditorNamesTheFileAndTheLine_data()
{
    QTest::addColumn<QString>("parameters");
    QTest::addColumn<bool>("namesLine");
    QVERIFY(section("editor").all("table").size() >= 2);
    for (const Page &table : section("editor").all("table")) {
        for (const Page &row : table.all("tr")) {
            const QVector<Page> cells = row.all("td");
            if (!cells.isEmpty())
                QTest::newRow(qPrintable(cells.at(1).text()))
                    << cells.value(2).text() << !row.hasClass("no-line");
        }
    }
}

void HelpExamplesTest::everyTemplateOfAnEditorNamesTheFileAndTheLine()
{
    QFETCH(QString, parameters);
    const QString path = text("/a b/c.txt");
    const QString line = EditorCommand::parameters(parameters, path, 123, 45, PathStyle::Unix);
    QVERIFY2(line.contains(QLatin1String("\"/a b/c.txt\"")), qPrintable(line));
    QTEST(line.contains(QLatin1String("123")), "namesLine");
    QVERIFY2(!line.contains(QLatin1Char('%')), qPrintable(line));
    const QStringList arguments =
        EditorCommand::arguments(parameters, path, 123, 45, PathStyle::Unix);
    QCOMPARE(arguments.filter(path).size(), 1);
}

void HelpExamplesTest::theExampleOfThePlaceholdersIsWhatTheyBecome()
{
    int shown = 0;
    for (const QString &line : examples("editor").value(0).split(QLatin1Char('\n'))) {
        const QStringList sides = line.split(text("　→　"));
        if (sides.size() != 2)
            continue;
        QCOMPARE(EditorCommand::parameters(sides.at(0), text("C:/src/main.cpp"), 3, 5,
                                           PathStyle::Windows),
                 sides.at(1));
        ++shown;
    }
    QCOMPARE(shown, 2);
}

void HelpExamplesTest::everyCommandOfTheConsoleIsTaken()
{
    int commands = 0;
    for (QString line : examples("console").value(0).split(QLatin1Char('\n'))) {
        line = line.section(QLatin1String(" #"), 0, 0).simplified();
        line.replace(QLatin1Char('\''), QLatin1Char('"'));
        QStringList words = QProcess::splitCommand(line);
        QCOMPARE(words.takeFirst(), text("sarvik-cli"));
        QCOMPARE(OptionParser::parse(words).error, QString());
        ++commands;
    }
    QVERIFY(commands >= 5);
}

void HelpExamplesTest::theManualPageIsReadAndCopied()
{
    const QString bash = QStandardPaths::findExecutable(QStringLiteral("bash"));
    if (bash.isEmpty()
        || QProcess::execute(bash, {text("-c"), text("man -ww man >/dev/null")}) != 0)
        QSKIP("there is no manual here");
    const ScratchFolder folder;
    const QString page = text("share/man/man1/sarvik-cli.1");
    folder.write(page, ManPage::text(text("1.0")).toUtf8());
    const QString commands = examples("console").value(1);
    QCOMPARE(commands.count(QLatin1String("\ncp ")), 1);
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(text("HOME"), folder.filePath(text("home")));
    shell.setProcessEnvironment(environment);
    shell.setWorkingDirectory(folder.path());
    QVERIFY(QDir(folder.path()).mkpath(text("home/.local/share")));
    shell.start(bash, {text("-ec"), commands});
    QVERIFY(shell.waitForFinished(kPatienceMilliseconds));
    QVERIFY2(shell.exitCode() == 0, shell.readAllStandardError());
    QVERIFY(shell.readAllStandardOutput().contains("sarvik-cli"));
    QCOMPARE(folder.read(text("home/.local/") + page), folder.read(page));
}

QTEST_GUILESS_MAIN(HelpExamplesTest)
#include "HelpExamplesTest.moc"
