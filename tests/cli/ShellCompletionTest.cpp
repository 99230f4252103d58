#include "cli/ShellCompletion.h"

#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include "cli/OptionTable.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QtTest>

namespace {

struct Shell {
    const char *program;
    QString (*script)();
};

const Shell kShells[] = {{"bash", &ShellCompletion::bash},
                         {"zsh", &ShellCompletion::zsh},
                         {"fish", &ShellCompletion::fish}};

/// Whether word stands in script and is not part of a longer option.
bool holdsWord(const QString &script, const QString &word)
{
    const QRegularExpression pattern(QStringLiteral("(?<![\\w-])")
                                     + QRegularExpression::escape(word)
                                     + QStringLiteral("(?![\\w-])"));
    return pattern.match(script).hasMatch();
}

/// An option as the shell's own script writes it.
QStringList wordsOf(const OptionTable::Option &option, const QString &shell)
{
    if (shell != QLatin1String("fish"))
        return option.forms();
    QStringList words = {QStringLiteral("-l ") + QLatin1String(option.longName)};
    if (option.shortName != 0)
        words += QStringLiteral("-s ") + QLatin1Char(option.shortName);
    return words;
}

/// Behind a blank at the end there is one more word, an empty one.
QStringList words(const char *text)
{
    return QString(QLatin1String(text)).split(QLatin1Char(' '));
}

QString outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(kPatienceMilliseconds) || process.exitCode() != 0)
        return QStringLiteral("failed: ") + QString::fromUtf8(process.readAll());
    return QString::fromUtf8(process.readAll());
}

/// What bash offers for the last of the words, which may be empty.
QStringList offersOfBash(const QString &bash, const QStringList &words)
{
    const ScratchFolder folder;
    const QString script =
        folder.write(QStringLiteral("completion"), ShellCompletion::bash().toUtf8());
    const QString call =
        QStringLiteral("script=$1; shift; source \"$script\"; COMP_WORDS=(\"$@\"); "
                       "COMP_CWORD=$(($# - 1)); _sarvik_cli; "
                       "printf '%s\\n' \"${COMPREPLY[@]}\"");
    return outputOf(bash,
                    QStringList{QStringLiteral("-c"), call, QStringLiteral("bash"), script,
                                QStringLiteral("sarvik-cli")}
                        + words)
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class ShellCompletionTest : public QObject {
    Q_OBJECT

private slots:
    void everyShellKnowsEveryOption_data();
    void everyShellKnowsEveryOption();
    void everyShellKnowsTheFixedValues_data();
    void everyShellKnowsTheFixedValues();
    void theScriptIsValidInItsShell_data();
    void theScriptIsValidInItsShell();
    void bashOffersWhatFits_data();
    void bashOffersWhatFits();
    void zshTakesTheSpecifications();
    void zshSaysWhatAValueMeans();
    void fishSaysWhatAValueMeans();

private:
    static void addShells();
};

void ShellCompletionTest::addShells()
{
    QTest::addColumn<QString>("shell");
    QTest::addColumn<QString>("script");
    for (const Shell &shell : kShells)
        QTest::newRow(shell.program) << QString(QLatin1String(shell.program)) << shell.script();
}

void ShellCompletionTest::everyShellKnowsEveryOption_data()
{
    addShells();
}

void ShellCompletionTest::everyShellKnowsEveryOption()
{
    QFETCH(QString, shell);
    QFETCH(QString, script);
    for (const OptionTable::Option &option : OptionTable::all()) {
        const QStringList words = wordsOf(option, shell);
        for (const QString &word : words)
            QVERIFY2(holdsWord(script, word), qPrintable(word));
    }
}

void ShellCompletionTest::everyShellKnowsTheFixedValues_data()
{
    addShells();
}

void ShellCompletionTest::everyShellKnowsTheFixedValues()
{
    QFETCH(QString, script);
    for (const OptionTable::Option &option : OptionTable::all()) {
        for (const QString &value : option.values())
            QVERIFY2(holdsWord(script, value), qPrintable(value));
    }
}

void ShellCompletionTest::theScriptIsValidInItsShell_data()
{
    addShells();
}

void ShellCompletionTest::theScriptIsValidInItsShell()
{
    QFETCH(QString, shell);
    QFETCH(QString, script);
    const QString program = QStandardPaths::findExecutable(shell);
    if (program.isEmpty())
        QSKIP("the shell is not installed");
    const ScratchFolder folder;
    const QString file = folder.write(QStringLiteral("completion"), script.toUtf8());
    QCOMPARE(outputOf(program, {QStringLiteral("-n"), file}), QString());
}

void ShellCompletionTest::bashOffersWhatFits_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("offers");
    QTest::newRow("the start of an option")
        << words("--exclude-") << words("--exclude-dir --exclude-file");
    QTest::newRow("a fixed value") << words("--format ") << words("result grep json");
    QTest::newRow("the start of one") << words("--color a") << words("auto always");
    QTest::newRow("behind an equals sign") << words("--format = j") << words("json");
    QTest::newRow("right behind it") << words("--format =") << words("result grep json");
    QTest::newRow("a value that may be anything") << words("--near ") << QStringList();
    QTest::newRow("a path, which the shell knows better") << words("word ") << QStringList();
    QTest::newRow("behind the end of the options") << words("-- --f") << QStringList();
}

void ShellCompletionTest::bashOffersWhatFits()
{
    const QString bash = QStandardPaths::findExecutable(QStringLiteral("bash"));
    if (bash.isEmpty())
        QSKIP("bash is not installed");
    QFETCH(QStringList, words);
    QTEST(offersOfBash(bash, words), "offers");
}

/// The syntax of an option's entry is a text to zsh, which -n does not look into.
void ShellCompletionTest::zshTakesTheSpecifications()
{
    const QString zsh = QStandardPaths::findExecutable(QStringLiteral("zsh"));
    if (zsh.isEmpty())
        QSKIP("zsh is not installed");
    const ScratchFolder folder;
    folder.write(QStringLiteral("_sarvik-cli"), ShellCompletion::zsh().toUtf8());
    // A terminal of its own, in which the key for completion is pressed.
    const QString call = QStringLiteral(
        "cd $1; zmodload zsh/zpty; zpty shell zsh -f -i\n"
        "zpty -w shell \"PS1=; fpath=($1 \\$fpath); autoload -U compinit; compinit -u -D\"\n"
        "zpty -n -w shell $'sarvik-cli --exclude-f\\t'\n"
        "zpty -m -r shell seen '*--exclude-file*' && zpty -n -w shell $'x --format=j\\t' &&\n"
        "zpty -m -r shell seen '*json*' && print found\n"
        "zpty -d shell\n");
    const QString output = outputOf(
        zsh,
        {QStringLiteral("-f"), QStringLiteral("-c"), call, QStringLiteral("zsh"), folder.path()});
    QVERIFY2(output.endsWith(QLatin1String("found\n")), qPrintable(output));
}

void ShellCompletionTest::zshSaysWhatAValueMeans()
{
    const QString zsh = QStandardPaths::findExecutable(QStringLiteral("zsh"));
    if (zsh.isEmpty())
        QSKIP("zsh is not installed");
    const ScratchFolder folder;
    folder.write(QStringLiteral("_sarvik-cli"), ShellCompletion::zsh().toUtf8());
    // Wide enough that no help is cut off.
    const QString call =
        QStringLiteral("cd $1; zmodload zsh/zpty; zpty shell zsh -f -i\n"
                       "zpty -w shell \"PS1=; COLUMNS=120; fpath=($1 \\$fpath)\"\n"
                       "zpty -w shell 'autoload -U compinit; compinit -u -D'\n"
                       "zpty -n -w shell $'sarvik-cli --format=\\t\\t'\n"
                       "zpty -m -r shell seen '*the hits ?default?*' && print -r -- $seen\n"
                       "zpty -d shell\n");
    const QString output = outputOf(
        zsh,
        {QStringLiteral("-f"), QStringLiteral("-c"), call, QStringLiteral("zsh"), folder.path()});
    QVERIFY2(output.contains(QLatin1String("-- path:line:column:text")), qPrintable(output));
    QVERIFY2(output.contains(QLatin1String("-- \"::\" and the path, then the hits (default)")),
             qPrintable(output));
}

void ShellCompletionTest::fishSaysWhatAValueMeans()
{
    const QString fish = QStandardPaths::findExecutable(QStringLiteral("fish"));
    if (fish.isEmpty())
        QSKIP("fish is not installed");
    const ScratchFolder folder;
    const QString script =
        folder.write(QStringLiteral("completion.fish"), ShellCompletion::fish().toUtf8());
    const QString output =
        outputOf(fish,
                 {QStringLiteral("--no-config"), QStringLiteral("-c"),
                  QStringLiteral("source '%1'; complete -C 'sarvik-cli --format '").arg(script)});
    for (const OptionTable::Choice &choice :
         OptionTable::findLong(QStringLiteral("format"))->choices)
        QVERIFY2(output.contains(QLatin1String(choice.value) + QLatin1Char('\t')
                                 + QLatin1String(choice.help) + QLatin1Char('\n')),
                 qPrintable(output));
}

QTEST_GUILESS_MAIN(ShellCompletionTest)
#include "ShellCompletionTest.moc"
