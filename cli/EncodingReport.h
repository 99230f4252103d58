#pragma once

#include "cli/RunReport.h"

#include <QByteArray>

class LineOutput;

/// The lines of --encodings: path, code-set number, name, line end and
/// byte-order mark (0 or 1), tab-separated. A file that a search refuses has
/// "-2" as its number and "-" for what follows; one that cannot be opened has no
/// line. In completion order, or by the bytes of the path. A run with any line,
/// refused files included, is one with hits.
class EncodingReport : public RunReport {
public:
    /// output must outlive the report.
    EncodingReport(LineOutput &output, bool sort);

    void addEncoding(const QString &path, int codeSet, int lineEnd, bool bom) override;
    void finish(bool aborted) override;
    bool foundAny() const override { return m_files > 0; }
    Counts counts(int searched) const override;

private:
    LineOutput &m_output;
    const bool m_sort;
    QVector<QPair<QString, QByteArray>> m_kept; // until the end, when sorting
    int m_files = 0;
    int m_refused = 0;
};
