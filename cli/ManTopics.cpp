#include "cli/ManTopics.h"

QString ManTopics::keywords()
{
    return QStringLiteral(
        "Without -F a keyword is a regular expression: . [a-z] [^a-z] \\d \\D \\w \\W \\s \\S \\b\n"
        "\\B ^ $ (...) (?:...) | * + ? {2,3} \\1 (?=...) (?!...) and \\x706f, a character by\n"
        "its number. There is no lookbehind, no lazy or possessive repetition, no named\n"
        "group and no inline option such as (?i). A keyword is looked for line by line; it\n"
        "holds no line feed, and a hit on an empty line is not reported. --near and --not\n"
        "follow -F and -i, too; -w is about KEYWORD alone.");
}

QString ManTopics::masks()
{
    return QStringLiteral(
        "MASK is one or more patterns with a blank between them; * is any text, ? one\n"
        "character, [abc] one of these. A pattern must match the whole name of a file, not\n"
        "its path, upper and lower case alike; *.* also stands for names without a dot. A ^\n"
        "anywhere turns the mask round. Commas and semicolons are ordinary characters.");
}

QVector<ManTopics::Entry> ManTopics::examples()
{
    return {
        {QStringLiteral("sarvik-cli lighthouse src doc/a.txt"),
         QStringLiteral("a word in a folder and in a file, whatever their encodings")},
        {QStringLiteral("sarvik-cli -F -i 'printf(' -m '*.c *.h' ."),
         QStringLiteral("plain text, upper and lower case alike, in some files")},
        {QStringLiteral("sarvik-cli --near close --within 3 open ."),
         QStringLiteral("only where \"close\" follows within three lines")},
        {QStringLiteral("sarvik-cli --format grep --sort main . | less"),
         QStringLiteral("path, line, column and text of each hit, sorted by path")},
        {QStringLiteral("sarvik-cli --line-count -m '*.txt' ."),
         QStringLiteral("the lines of each file, each folder and all")},
        {QStringLiteral("sarvik-cli --encodings ."), QStringLiteral("what each file is taken for")},
    };
}

QVector<ManTopics::Entry> ManTopics::files()
{
    return {
        {QStringLiteral("sarvik.ini"),
         QStringLiteral(
             "beside the program; the settings that it shares with the window. Of its section\n"
             "[General] count bigsize (MiB), codechksize (bytes), tabcolm (columns),\n"
             "excusiondir and excusionfile (lists with commas), and detectsize (bytes) of\n"
             "[newfile]. It is never written; --no-settings leaves it unread.")},
        {QStringLiteral("@LISTFILE"),
         QStringLiteral(
             "a list file in place of PATHs: an ini file whose key files names files, and\n"
             "folders with a / at the end, with commas between them.")},
    };
}
