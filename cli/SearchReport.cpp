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
    const qint64 waiting = m_sort ? 0 : lines.bytes.size();
    const std::lock_guard lock(m_lock);
    m_files.push_back(std::move(lines)); // first: it may find no memory
    m_waitingBytes += waiting;
    m_hits += file.hits.size();
    m_matchedFiles += file.hits.isEmpty() ? 0 : 1;
}

void SearchReport::writeWaiting()
{
    if (m_sort)
        return;
    std::vector<Lines> files;
    {
        const std::lock_guard lock(m_lock);
        files.swap(m_files);
    }
    for (const Lines &file : files) {
        m_output(file.bytes);
        m_waitingBytes -= file.bytes.size();
    }
}

void SearchReport::finish(bool)
{
    const std::lock_guard lock(m_lock);
    std::stable_sort(m_files.begin(), m_files.end(),
                     [](const Lines &a, const Lines &b) { return a.path < b.path; });
    for (const Lines &file : m_files)
        m_output(file.bytes);
    m_files.clear();
}

RunReport::Counts SearchReport::counts(int searched) const
{
    return {{QStringLiteral("files"), searched},
            {QStringLiteral("hits"), m_hits},
            {QStringLiteral("matched files"), m_matchedFiles}};
}
