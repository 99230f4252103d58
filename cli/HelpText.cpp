#include "cli/HelpText.h"

#include "cli/OptionTable.h"

namespace {

/// One option's lines of the help: its names on the left, its help on the right.
QString helpLines(const OptionTable::Option &option)
{
    constexpr int kIndent = 27;
    QString names = option.shortName != 0
        ? QStringLiteral("  -%1, ").arg(QLatin1Char(option.shortName))
        : QStringLiteral("      ");
    names += option.longForm();
    if (option.takesValue())
        names += QLatin1Char(' ') + QLatin1String(option.valueName);
    const QString lineStart = QLatin1Char('\n') + QString(kIndent, QLatin1Char(' '));
    QString help = option.wholeHelp();
    help.replace(QLatin1Char('\n'), lineStart);
    const QString gap =
        names.size() < kIndent ? QString(kIndent - names.size(), QLatin1Char(' ')) : lineStart;
    return names + gap + help + QLatin1Char('\n');
}

} // namespace

QStringList HelpText::synopsis()
{
    return {QStringLiteral("sarvik-cli [OPTION]... KEYWORD PATH..."),
            QStringLiteral("sarvik-cli --line-count [OPTION]... PATH..."),
            QStringLiteral("sarvik-cli --encodings [OPTION]... PATH...")};
}

QString HelpText::description()
{
    return QStringLiteral(
        "Searches text files in Shift-JIS, EUC-JP, ISO-2022-JP, UTF-8, UTF-16 and UTF-32,\n"
        "each by the code set it is found to be in. PATH is a folder or a file; a file\n"
        "named as PATH is searched whatever mask and exclusions say. \"@\" and the name of\n"
        "a list file, alone, stands for what the list holds: an ini file with the key\n"
        "files, as in files=a.txt, b/");
}

QString HelpText::passedOver()
{
    return QStringLiteral(
        "A file or folder inside a tree that cannot be read is passed over in silence.\n"
        "Files that are too large or binary, and all that is excluded, are named on the\n"
        "standard error; none of this changes the exit status.");
}

QString HelpText::exitStatus()
{
    return QStringLiteral("0 with hits, 1 without, 2 on an error of use or an unreadable PATH,\n"
                          "130 after Ctrl+C.");
}

QString HelpText::text()
{
    QString text = synopsis().join(QLatin1Char('\n')) + QStringLiteral("\n\n") + description()
        + QStringLiteral("\n\n");
    for (const OptionTable::Option &option : OptionTable::all())
        text += helpLines(option);
    return text + QLatin1Char('\n') + passedOver() + QStringLiteral("\n\nExit status: ")
        + exitStatus() + QLatin1Char('\n');
}
