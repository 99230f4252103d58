#include "cli/ShellCompletion.h"

#include "cli/OptionTable.h"

namespace {

/// The help on one line. What the values of an option mean stands with them.
QString helpOf(const OptionTable::Option &option)
{
    QString help = QString(QLatin1String(option.help)).replace(QLatin1Char('\n'), QLatin1Char(' '));
    if (help.endsWith(QLatin1Char(':')))
        help.chop(1);
    return help;
}

/// text between double quotes, for a shell that looks into them.
QString doubleQuoted(const QString &text)
{
    QString quoted;
    for (QChar c : text) {
        if (QLatin1String("\\\"$`").contains(c))
            quoted += QLatin1Char('\\');
        quoted += c;
    }
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

// bash

/// The values that may follow an option: one branch of a "case".
QString bashBranch(const OptionTable::Option &option)
{
    const QString values = option.choices.isEmpty()
        ? QStringLiteral("compopt +o default 2>/dev/null")
        : QStringLiteral("mapfile -t COMPREPLY < <(compgen -W '%1' -- \"$current\")")
              .arg(option.values().join(QLatin1Char(' ')));
    return QStringLiteral("        %1)\n            %2\n            return\n            ;;\n")
        .arg(option.forms().join(QStringLiteral(" | ")), values);
}

// zsh

/// text between single quotes inside the brackets of an option's entry.
QString zshHelp(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('['), QLatin1String("\\["));
    text.replace(QLatin1Char(']'), QLatin1String("\\]"));
    return text.replace(QLatin1Char('\''), QLatin1String("'\\''"));
}

/// The values with their help, as _arguments wants them: a list of shell words in
/// which a colon stands behind the value and every colon is escaped.
QString zshValues(const OptionTable::Option &option)
{
    QStringList values;
    for (const OptionTable::Choice &choice : option.choices) {
        const QString help = doubleQuoted(QLatin1String(choice.help));
        values += QString(QLatin1String(choice.value) + QLatin1Char(':') + help)
                      .replace(QLatin1Char(':'), QLatin1String("\\:"));
    }
    return QStringLiteral("((%1))").arg(values.join(QLatin1Char(' ')));
}

/// An option as _arguments wants it, one of its forms excluding the other.
QString zshSpecification(const OptionTable::Option &option)
{
    QString value;
    QString longForm = option.longForm();
    QString shortForm = option.forms().constFirst();
    if (option.takesValue()) {
        value = QStringLiteral(":%1:%2").arg(QLatin1String(option.valueName),
                                             option.choices.isEmpty() ? QStringLiteral(" ")
                                                                      : zshValues(option));
        longForm += QLatin1Char('=');
        shortForm += QLatin1Char('+');
    }
    const QString help = QStringLiteral("[%1]%2'").arg(zshHelp(helpOf(option)), value);
    if (option.shortName == 0)
        return QStringLiteral("'%1%2%3").arg(option.repeatable ? QStringLiteral("*") : QString(),
                                             longForm, help);
    return QStringLiteral("'(%1)'{%2,%3}'%4")
        .arg(option.forms().join(QLatin1Char(' ')), shortForm, longForm, help);
}

// fish

/// text between single quotes.
QString fishQuoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('\''), QLatin1String("\\'"));
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

/// The values with their help, each behind a tab that fish puts there.
QString fishValues(const OptionTable::Option &option)
{
    QStringList values;
    for (const OptionTable::Choice &choice : option.choices)
        values += QLatin1String(choice.value) + QLatin1String("\\t")
            + doubleQuoted(QLatin1String(choice.help));
    return values.join(QLatin1Char(' '));
}

QString fishLine(const OptionTable::Option &option)
{
    QString line = QStringLiteral("complete -c sarvik-cli");
    if (option.shortName != 0)
        line += QStringLiteral(" -s ") + QLatin1Char(option.shortName);
    line += QStringLiteral(" -l ") + QLatin1String(option.longName);
    if (option.takesValue())
        line += QStringLiteral(" -x");
    if (!option.choices.isEmpty())
        line += QStringLiteral(" -a ") + fishQuoted(fishValues(option));
    return line + QStringLiteral(" -d ") + fishQuoted(helpOf(option)) + QLatin1Char('\n');
}

} // namespace

QString ShellCompletion::bash()
{
    QStringList forms;
    QString branches;
    for (const OptionTable::Option &option : OptionTable::all()) {
        forms += option.forms();
        if (option.takesValue())
            branches += bashBranch(option);
    }
    return QStringLiteral("# bash completion for sarvik-cli\n"
                          "\n"
                          "_sarvik_cli()\n"
                          "{\n"
                          "    local current=${COMP_WORDS[COMP_CWORD]}\n"
                          "    local previous=${COMP_WORDS[COMP_CWORD-1]}\n"
                          "    local i\n"
                          "    COMPREPLY=()\n"
                          "    # Behind \"--\" everything is a keyword or a path.\n"
                          "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
                          "        [[ ${COMP_WORDS[i]} != -- ]] || return\n"
                          "    done\n"
                          "    # \"--name=value\" comes as three words.\n"
                          "    if [[ $current == = ]]; then\n"
                          "        current=\n"
                          "    elif [[ $previous == = ]]; then\n"
                          "        previous=${COMP_WORDS[COMP_CWORD-2]}\n"
                          "    fi\n"
                          "    case $previous in\n")
        + branches
        + QStringLiteral("    esac\n"
                         "    if [[ $current == -* ]]; then\n"
                         "        mapfile -t COMPREPLY < <(compgen -W '")
        + forms.join(QLatin1Char(' '))
        + QStringLiteral("' -- \"$current\")\n"
                         "    fi\n"
                         "}\n"
                         "\n"
                         "# Without an answer of its own: names of files.\n"
                         "complete -o default -F _sarvik_cli sarvik-cli\n");
}

QString ShellCompletion::zsh()
{
    QString script = QStringLiteral("#compdef sarvik-cli\n\n_arguments -s -S \\\n");
    for (const OptionTable::Option &option : OptionTable::all())
        script += QStringLiteral("    ") + zshSpecification(option) + QStringLiteral(" \\\n");
    return script + QStringLiteral("    '*:KEYWORD or PATH:_files'\n");
}

QString ShellCompletion::fish()
{
    QString script = QStringLiteral("# fish completion for sarvik-cli\n\n");
    for (const OptionTable::Option &option : OptionTable::all())
        script += fishLine(option);
    return script;
}
