#pragma once

#include "cli/FileResult.h"
#include "cli/ResultFormat.h"
#include "cli/RunReport.h"

#include <QByteArray>
#include <QPair>
#include <QVector>

#include <memory>

class LineOutput;

/// The hits of a search. Sorting keeps them as the bytes that are written: one
/// block a file instead of a string a hit.
class SearchReport : public RunReport {
public:
    /// output must outlive the report.
    SearchReport(LineOutput &output, std::unique_ptr<ResultFormat> format, bool sort);

    void addResults(QStringList entries) override;
    void finish(bool aborted) override;
    bool foundAny() const override { return m_hits > 0; }
    Counts counts(int searched) const override;

private:
    void add(const FileResult &file);

    LineOutput &m_output;
    const std::unique_ptr<ResultFormat> m_format;
    const bool m_sort;
    QVector<QPair<QByteArray, QByteArray>> m_kept; // path and lines, until the end, when sorting
    qint64 m_hits = 0;
    qint64 m_matchedFiles = 0;
};
