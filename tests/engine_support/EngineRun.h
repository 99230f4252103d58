#pragma once

#include "engine/EngineOptions.h"
#include "engine/SearchCondition.h"

#include <QMap>
#include <QObject>
#include <QPair>
#include <QStringList>
#include <QVector>

class TextGrepCore;

/// Runs an engine to its end and keeps all that it said. The engine lives on
/// the test's thread; its workers are its own as ever. A run that ends twice ends the
/// test's process, at the latest when the object goes.
class EngineRun : public QObject {
    Q_OBJECT

public:
    explicit EngineRun(const EngineOptions &options = EngineOptions());
    ~EngineRun() override;

    /// Scans and waits for the end; false when it does not come within timeoutMs.
    bool run(const SearchCondition &condition, int timeoutMs = 60000);
    /// Starts only; waitForEnd waits.
    void start(const SearchCondition &condition);
    bool waitForEnd(int timeoutMs = 60000);

    TextGrepCore *engine() const { return m_engine; }

    /// Paths with their hit strings, in the order of arrival.
    QVector<QPair<QString, QStringList>> lists;
    QStringList filesWithoutHits;
    QVector<QPair<QString, int>> lineCounts;
    QStringList errors;
    QStringList warnings;
    QStringList reportedNames; ///< of progressFileReport
    QVector<int> announced; ///< of progressFileAllCount
    int topEntries = 0;
    int searched = 0;
    QVector<bool> finishedFlags;
    QVector<bool> lcntFinishedFlags;

    /// Hits by path, for comparisons that do not care about the files' order.
    QMap<QString, QStringList> hitsByPath() const;
    /// Paths with a list, sorted.
    QStringList pathsWithHits() const;

signals:
    void ended();

private:
    void connectEngine();
    void end(QVector<bool> *flags, bool aborted);

    TextGrepCore *m_engine;
    int m_started = 0;
    int m_ended = 0;
};
