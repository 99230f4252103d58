#include "mainwindow/history/ResultLog.h"

#include "settings/SearchPaths.h"

#include <QFileInfo>

namespace {

/// Of the log, whoever writes it.
const QString kFormat = QStringLiteral("5.00");

QString line(const char *label, QString value)
{
    value.replace(QLatin1Char('\n'), QLatin1Char(' '));
    value.replace(QLatin1Char('\r'), QLatin1Char(' '));
    return QLatin1String(label) + value + QLatin1Char('\n');
}

QString line(const char *label, bool value)
{
    return line(label, QString(QLatin1Char(value ? '1' : '0')));
}

} // namespace

QString ResultLog::pathListValue(QStringList paths)
{
    paths.removeDuplicates();
    for (QString &path : paths) {
        path.replace(QLatin1Char('\\'), QLatin1Char('/'));
        path = SearchPaths::withSlash(path);
    }
    QString value = paths.join(QStringLiteral(", "));
    if (value.endsWith(QLatin1Char('\n')))
        value.chop(1);
    return value;
}

QString ResultLog::extensionOf(const QString &mask)
{
    return QFileInfo(mask.section(QLatin1Char(' '), 0, 0)).suffix();
}

QString ResultLog::header() const
{
    QString lines;
    lines += line("version :", kFormat);
    lines += line("keyword1:", keyword1);
    lines += line("case    :", ignoreCase);
    lines += line("word    :", word);
    lines += line("regexp  :", regexp);
    lines += line("subdir  :", subdir);
    lines += line("groupbox:", extraGroup);
    lines += line("keyword2:", keyword2);
    lines += line("plusline:", QString::number(lineDistance));
    lines += line("pathlist:", pathListValue(paths));
    lines += line("mask    :", mask);
    lines += line("ext     :", extensionOf(mask));
    lines += line("exclsive:", keyword3Group);
    lines += line("keyword3:", keyword3);
    lines += QLatin1String("-----------------------\n");
    return lines;
}

QString ResultLog::write() const
{
    return header() + text;
}
