#include "cli/SearchReport.h"

#include "cli/LineOutput.h"
#include "engine/NativePath.h"

#include <algorithm>
#include <utility>

SearchReport::SearchReport(LineOutput &output, std::unique_ptr<ResultFormat> format, bool sort)
    : m_output(output), m_format(std::move(format)), m_sort(sort)
{
}

void SearchReport::addResults(QStringList entries)
{
    FileResult::visitEach(std::move(entries), [this](const FileResult &file) { add(file); });
}

void SearchReport::add(const FileResult &file)
{
    m_hits += file.hits.size();
    m_matchedFiles += file.hits.isEmpty() ? 0 : 1;
    QByteArray lines = m_format->format(file);
    if (!m_sort) {
        m_output.add(lines);
        return;
    }
    lines.squeeze();
    m_kept.append({NativePath::toNative(file.path), lines});
}

void SearchReport::finish(bool)
{
    std::stable_sort(m_kept.begin(), m_kept.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    for (const auto &[path, lines] : std::as_const(m_kept))
        m_output.add(lines);
    m_kept.clear();
}

RunReport::Counts SearchReport::counts(int searched) const
{
    return {{QStringLiteral("files"), searched},
            {QStringLiteral("hits"), m_hits},
            {QStringLiteral("matched files"), m_matchedFiles}};
}
