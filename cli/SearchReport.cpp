#include "cli/SearchReport.h"

#include "engine/NativePath.h"

#include <algorithm>
#include <utility>

SearchReport::SearchReport(const Output &output, std::unique_ptr<ResultFormat> format, bool sort)
    : m_output(output), m_format(std::move(format)), m_sort(sort)
{
}

void SearchReport::addHits(const FileResult &file)
{
    Lines lines = {m_sort ? NativePath::toNative(file.path) : QByteArray(), m_format->format(file)};
    if (m_sort) // they stay for long
        lines.bytes.squeeze();
    m_hits += file.hits.size();
    m_matchedFiles += file.hits.isEmpty() ? 0 : 1;
    const std::lock_guard lock(m_lock);
    m_waitingBytes += m_sort ? 0 : lines.bytes.size();
    m_files.push_back(std::move(lines));
}

void SearchReport::writeWaiting()
{
    if (m_sort)
        return;
    std::vector<Lines> files;
    {
        const std::lock_guard lock(m_lock);
        files.swap(m_files);
        m_waitingBytes = 0;
    }
    writeAll(files);
}

void SearchReport::finish(bool)
{
    const std::lock_guard lock(m_lock);
    std::stable_sort(m_files.begin(), m_files.end(),
                     [](const Lines &a, const Lines &b) { return a.path < b.path; });
    writeAll(m_files);
    m_files.clear();
}

void SearchReport::writeAll(const std::vector<Lines> &files)
{
    for (const Lines &file : files)
        m_output(file.bytes);
}

RunReport::Counts SearchReport::counts(int searched) const
{
    return {{QStringLiteral("files"), searched},
            {QStringLiteral("hits"), m_hits},
            {QStringLiteral("matched files"), m_matchedFiles}};
}
