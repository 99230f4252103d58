#pragma once

#include "cli/RunReport.h"
#include "engine/LineCountReport.h"

class LineOutput;

/// The lines of a line count, as the window shows them.
class LineCountOutput : public RunReport {
public:
    /// output must outlive the report.
    LineCountOutput(LineOutput &output, bool sort, const QLocale &locale = QLocale());

    void addLineCount(const QString &path, int count) override;
    void finish(bool aborted) override;
    bool foundAny() const override { return m_report.fileCount() > 0; }
    Counts counts(int searched) const override;

private:
    void write(const QStringList &lines);

    LineOutput &m_output;
    const bool m_sort;
    LineCountReport m_report;
    QVector<QPair<QString, int>> m_kept; // until the end, when sorting
};
