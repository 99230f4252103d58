#include "cli/OptionTable.h"

#include "cli/Message.h"

#include <algorithm>

namespace {

using Message::quoted;

/// A number written in decimal digits only: no sign, no blank, no suffix.
QString readNumber(const char *name, const QString &value, int minimum, int maximum, int &number)
{
    const bool digits = !value.isEmpty() && std::all_of(value.begin(), value.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
    bool fits = false;
    const int parsed = value.toInt(&fits);
    if (!digits || !fits || parsed < minimum || parsed > maximum)
        return QStringLiteral("--%1 takes a number from %2 to %3: ")
                   .arg(QLatin1String(name))
                   .arg(minimum)
                   .arg(maximum)
            + quoted(value);
    number = parsed;
    return QString();
}

/// For values of which an empty one would silently mean "no such condition".
QString readText(const char *name, const QString &value, QString &text)
{
    if (value.isEmpty())
        return QStringLiteral("--%1 is empty: ''").arg(QLatin1String(name));
    text = value;
    return QString();
}

QString addText(const char *name, const QString &value, QStringList &list)
{
    QString text;
    QString error = readText(name, value, text);
    if (error.isEmpty())
        list += text;
    return error;
}

QString setMode(Options &options, Options::Mode mode)
{
    const bool other = options.mode != Options::Mode::Search && options.mode != mode;
    if (other)
        return QStringLiteral("--line-count and --encodings exclude each other");
    options.mode = mode;
    return QString();
}

QString setMask(Options &options, const QString &value)
{
    if (value.trimmed().isEmpty())
        return QStringLiteral("--mask is blank: ") + quoted(value);
    options.mask = value;
    return QString();
}

QString setFormat(Options &options, const QString &value)
{
    if (value == QLatin1String("result"))
        options.format = Options::Format::Result;
    else if (value == QLatin1String("grep"))
        options.format = Options::Format::Grep;
    else if (value == QLatin1String("json"))
        options.format = Options::Format::Json;
    else
        return QStringLiteral("--format is result, grep or json: ") + quoted(value);
    return QString();
}

QString setColor(Options &options, const QString &value)
{
    if (value == QLatin1String("auto"))
        options.color = Options::Color::Auto;
    else if (value == QLatin1String("always"))
        options.color = Options::Color::Always;
    else if (value == QLatin1String("never"))
        options.color = Options::Color::Never;
    else
        return QStringLiteral("--color is auto, always or never: ") + quoted(value);
    return QString();
}

template <bool Options::*member, bool value = true>
QString setSwitch(Options &options, const QString &)
{
    options.*member = value;
    return QString();
}

QVector<OptionTable::Option> searchOptions()
{
    return {
        {'i', "ignore-case", nullptr, "upper and lower case are the same", true,
         setSwitch<&Options::ignoreCase>},
        {'w', "word-regexp", nullptr, "KEYWORD matches whole words only", true,
         setSwitch<&Options::word>},
        {'F', "fixed-strings", nullptr, "the keywords are plain text, not regular expressions",
         true, setSwitch<&Options::fixedStrings>},
        {0, "near", "KEYWORD2",
         "only where KEYWORD2 follows on the same line or, with\n--within, later", true,
         [](Options &options, const QString &value) {
             return readText("near", value, options.nearKeyword);
         }},
        {0, "within", "N", "KEYWORD2 may stand up to N lines later (default 0)", true,
         [](Options &options, const QString &value) {
             int lines = 0;
             QString error = readNumber("within", value, 0, Options::kMaxWithin, lines);
             options.within = lines;
             return error;
         }},
        {0, "not", "KEYWORD3", "only lines without KEYWORD3", true,
         [](Options &options, const QString &value) {
             return readText("not", value, options.notKeyword);
         }},
        {0, "names-without-hits", nullptr, "name the searched files without a hit, too", true,
         setSwitch<&Options::namesWithoutHits>},
        {0, "tab", "WIDTH", "columns of a tab (default 4, or the settings)", true,
         [](Options &options, const QString &value) {
             int width = 0;
             QString error = readNumber("tab", value, 1, Options::kMaxTabWidth, width);
             options.tabWidth = width;
             return error;
         }},
        {0,
         "format",
         "FORMAT",
         "how a hit is written:",
         true,
         setFormat,
         {{"result", "\"::\" and the path, then the hits (default)"},
          {"grep", "path:line:column:text"},
          {"json", "one object a hit"}}},
    };
}

QVector<OptionTable::Option> fileOptions()
{
    return {
        {'m', "mask", "MASK",
         "file names, as \"*.cpp *.h\"; with \"^\" all but these\n(default \"*.*\", every "
         "name)",
         false, setMask},
        {0, "no-subdirs", nullptr, "do not descend into sub-folders", false,
         setSwitch<&Options::subdirs, false>},
        {0,
         "exclude-dir",
         "NAME",
         "leave out folders of this name; repeatable",
         false,
         [](Options &options, const QString &value) {
             return addText("exclude-dir", value, options.excludedFolders);
         },
         {},
         true},
        {0,
         "exclude-file",
         "TEXT",
         "leave out files with TEXT in their name; repeatable",
         false,
         [](Options &options, const QString &value) {
             return addText("exclude-file", value, options.excludedFiles);
         },
         {},
         true},
        {0, "max-size", "MIB", "leave out larger files (default 1, or the settings)", false,
         [](Options &options, const QString &value) {
             int mebibytes = 0;
             QString error = readNumber("max-size", value, 1, Options::kMaxSizeMiB, mebibytes);
             options.maxSize = mebibytes;
             return error;
         }},
        {0, "no-settings", nullptr, "defaults instead of the settings file", false,
         setSwitch<&Options::useSettings, false>},
    };
}

QVector<OptionTable::Option> outputOptions()
{
    return {
        {0, "sort", nullptr, "sort by path; without it files come as they are done", false,
         setSwitch<&Options::sort>},
        {0, "stats", nullptr, "counts and time to the standard error", false,
         setSwitch<&Options::stats>},
        {0,
         "color",
         "WHEN",
         "whether hits are coloured:",
         false,
         setColor,
         {{"auto", "on a terminal (default)"},
          {"always", "in files and pipes, too"},
          {"never", "not at all"}}},
        {'h', "help", nullptr, "this text", false,
         [](Options &options, const QString &) {
             options.mode = Options::Mode::Help;
             return QString();
         }},
        {'V', "version", nullptr, "the version", false,
         [](Options &options, const QString &) {
             options.mode = Options::Mode::Version;
             return QString();
         }},
    };
}

QVector<OptionTable::Option> modeOptions()
{
    return {
        {0, "line-count", nullptr, "count lines instead of searching", false,
         [](Options &options, const QString &) {
             return setMode(options, Options::Mode::LineCount);
         }},
        {0, "encodings", nullptr,
         "one line a file, tab-separated: path, code set,\n"
         "its name, line end, byte-order mark 0 or 1",
         false,
         [](Options &options, const QString &) {
             return setMode(options, Options::Mode::Encodings);
         }},
    };
}

} // namespace

QStringList OptionTable::Option::forms() const
{
    QStringList forms;
    if (shortName != 0)
        forms += QLatin1Char('-') + QString(QLatin1Char(shortName));
    return forms << longForm();
}

QString OptionTable::Option::wholeHelp() const
{
    QString text = QLatin1String(help);
    for (const Choice &choice : choices)
        text += QLatin1Char('\n') + QLatin1String(choice.value) + QLatin1String(": ")
            + QLatin1String(choice.help);
    return text;
}

QStringList OptionTable::Option::values() const
{
    QStringList values;
    for (const Choice &choice : choices)
        values += QLatin1String(choice.value);
    return values;
}

const QVector<OptionTable::Option> &OptionTable::all()
{
    static const QVector<Option> options =
        searchOptions() + modeOptions() + fileOptions() + outputOptions();
    return options;
}

const OptionTable::Option *OptionTable::findLong(const QString &name)
{
    const auto found = std::find_if(all().begin(), all().end(), [&](const Option &option) {
        return name == QLatin1String(option.longName);
    });
    return found == all().end() ? nullptr : &*found;
}

const OptionTable::Option *OptionTable::findShort(QChar name)
{
    const auto found = std::find_if(all().begin(), all().end(), [&](const Option &option) {
        return option.shortName != 0 && name == QLatin1Char(option.shortName);
    });
    return found == all().end() ? nullptr : &*found;
}
