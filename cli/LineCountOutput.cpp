#include "cli/LineCountOutput.h"

#include "cli/LineOutput.h"
#include "cli/PathOrder.h"
#include "engine/NativePath.h"

#include <algorithm>
#include <utility>

LineCountOutput::LineCountOutput(LineOutput &output, bool sort, const QLocale &locale)
    : m_output(output), m_sort(sort), m_report(locale)
{
}

void LineCountOutput::addLineCount(const QString &path, int count)
{
    if (m_sort)
        m_kept.append({path, count});
    else
        write(m_report.addFile(path, count));
}

void LineCountOutput::finish(bool aborted)
{
    std::stable_sort(m_kept.begin(), m_kept.end(), [](const auto &a, const auto &b) {
        return PathOrder::byFolder(a.first, b.first);
    });
    for (const QPair<QString, int> &file : std::as_const(m_kept))
        write(m_report.addFile(file.first, file.second));
    m_kept.clear();
    write(m_report.finish(aborted));
}

RunReport::Counts LineCountOutput::counts(int) const
{
    return {{QStringLiteral("files"), m_report.fileCount()},
            {QStringLiteral("lines"), m_report.lineCount()}};
}

void LineCountOutput::write(const QStringList &lines)
{
    for (const QString &line : lines)
        m_output.add(NativePath::toNative(line) + '\n');
}
