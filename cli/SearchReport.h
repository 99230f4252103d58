#pragma once

#include "cli/FileResult.h"
#include "cli/ResultFormat.h"
#include "cli/RunReport.h"

#include <QByteArray>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// The hits of a search. The thread that found them makes their lines, so that
/// one block of bytes a file goes to the thread that writes, and not a string a
/// hit.
class SearchReport : public RunReport {
public:
    /// Takes whole lines, on the main thread.
    using Output = std::function<void(const QByteArray &lines)>;

    SearchReport(const Output &output, std::unique_ptr<ResultFormat> format, bool sort);

    void addHits(const FileResult &file) override;
    qint64 waitingBytes() const override { return m_waitingBytes; }
    void writeWaiting() override;
    void finish(bool aborted) override;
    bool foundAny() const override { return m_hits > 0; }
    qint64 hitCount() const override { return m_hits; }
    Counts counts(int searched) const override;

private:
    struct Lines {
        QByteArray path; // when sorting
        QByteArray bytes;
    };

    const Output m_output;
    const std::unique_ptr<ResultFormat> m_format;
    const bool m_sort;
    std::mutex m_lock;
    std::vector<Lines> m_files; // not yet written; guarded by m_lock
    std::atomic<qint64> m_waitingBytes{0}; // of them, where they need not wait for the end
    std::atomic<qint64> m_hits{0};
    std::atomic<qint64> m_matchedFiles{0};
};
