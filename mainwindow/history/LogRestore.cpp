#include "mainwindow/history/LogRestore.h"

#include "mainwindow/history/ResultLog.h"
#include "settings/SearchPaths.h"

#include <utility>

namespace {

// Numbered from 1, as people count the lines of a file.
enum Line {
    Keyword1 = 2,
    IgnoreCase = 3,
    Word = 4,
    RegExp = 5,
    Subdir = 6,
    ExtraGroup = 7,
    Keyword2 = 8,
    LineDistance = 9,
    Paths = 10,
    Mask = 11,
    Extension = 12,
    Keyword3Group = 13,
    Keyword3 = 14
};

class Header {
public:
    explicit Header(QStringList lines) : m_lines(std::move(lines)) { }

    std::optional<QString> value(Line line) const
    {
        if (line > m_lines.size())
            return std::nullopt;
        return m_lines.at(line - 1).mid(ResultLog::kLabelLength);
    }
    std::optional<bool> flag(Line line) const
    {
        const std::optional<QString> text = value(line);
        return text ? std::make_optional(text->startsWith(QLatin1Char('1'))) : std::nullopt;
    }

private:
    QStringList m_lines;
};

/// Takes the header's lines off the front of content.
QStringList takeHeader(QString *content)
{
    QStringList lines;
    int begin = 0;
    while (lines.size() < ResultLog::kHeaderLines && begin < content->size()) {
        const int end = content->indexOf(QLatin1Char('\n'), begin);
        lines += content->mid(begin, end == -1 ? -1 : end - begin);
        begin = end == -1 ? content->size() : end + 1;
    }
    content->remove(0, begin);
    return lines;
}

void restorePaths(const Header &header, const QString &path, LogRestore *restore)
{
    const std::optional<QString> value = header.value(Paths);
    if (!value)
        return;
    const bool lastSearch = path.contains(QLatin1String("sarvik.log"));
    const QStringList paths = value->split(QStringLiteral(", "), Qt::SkipEmptyParts);
    restore->pathLines = lastSearch ? QStringList() : SearchPaths::toLines(paths);
}

void restoreMask(const Header &header, LogRestore *restore)
{
    restore->mask = header.value(Mask);
    restore->extension = header.value(Extension);
    if (restore->mask && restore->extension.value_or(QString()).isEmpty())
        restore->extension = ResultLog::extensionOf(*restore->mask);
}

void restoreConditions(const Header &header, LogRestore *restore)
{
    restore->ignoreCase = header.flag(IgnoreCase);
    restore->word = header.flag(Word);
    restore->regexp = header.flag(RegExp);
    restore->subdir = header.flag(Subdir);
    restore->checksExtraGroup = header.flag(ExtraGroup).value_or(false);
    const std::optional<QString> keyword2 = header.value(Keyword2);
    if (keyword2 && !keyword2->isEmpty())
        restore->keyword2 = keyword2;
    const std::optional<QString> distance = header.value(LineDistance);
    if (distance)
        restore->lineDistance = distance->toInt();
    restore->checksKeyword3Group = header.flag(Keyword3Group).value_or(false);
}

} // namespace

LogRestore LogRestore::fromContent(QString content, const QString &path, Extent extent)
{
    LogRestore restore;
    const Header header(takeHeader(&content));
    restore.text = std::move(content);
    restore.keyword1 = header.value(Keyword1);
    // Its group stays as it is, so that it takes part in nothing by itself.
    restore.keyword3 = header.value(Keyword3);
    if (extent == Extent::HeaderOnly)
        return restore;
    restoreConditions(header, &restore);
    restorePaths(header, path, &restore);
    restoreMask(header, &restore);
    return restore;
}
