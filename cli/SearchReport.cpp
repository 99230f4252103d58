#include "cli/SearchReport.h"

#include "cli/LineOutput.h"
#include "cli/PathOrder.h"

#include <algorithm>
#include <utility>

SearchReport::SearchReport(LineOutput &output, std::unique_ptr<ResultFormat> format, bool sort)
    : m_output(output), m_format(std::move(format)), m_sort(sort)
{
}

void SearchReport::addResults(const QStringList &entries)
{
    const QVector<FileResult> files = FileResult::split(entries);
    for (const FileResult &file : files) {
        m_hits += file.hits.size();
        m_matchedFiles += file.hits.isEmpty() ? 0 : 1;
        if (m_sort)
            m_kept.append(file);
        else
            m_output.add(m_format->format(file));
    }
}

void SearchReport::finish(bool)
{
    std::stable_sort(m_kept.begin(), m_kept.end(), [](const FileResult &a, const FileResult &b) {
        return PathOrder::byBytes(a.path, b.path);
    });
    for (const FileResult &file : std::as_const(m_kept))
        m_output.add(m_format->format(file));
    m_kept.clear();
}

RunReport::Counts SearchReport::counts(int searched) const
{
    return {{QStringLiteral("files"), searched},
            {QStringLiteral("hits"), m_hits},
            {QStringLiteral("matched files"), m_matchedFiles}};
}
