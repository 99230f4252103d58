#pragma once

#include <QString>

#include <functional>

/// One line on the terminal that says how far a search is and is written over
/// again and again.
class ProgressLine {
public:
    struct State {
        int searched = 0; ///< files
        int foldersQueued = 0;
        int filesQueued = 0;
        qint64 hits = 0; ///< lines
        QString currentFile;
    };

    /// Writes bytes to the terminal.
    using Write = std::function<void(const QByteArray &bytes)>;

    explicit ProgressLine(const Write &write);

    /// Not in the first 300 milliseconds of a search: what ends sooner need not flash.
    static bool isDue(qint64 milliseconds);
    /// columns: the terminal's width now; milliseconds: since the start of the
    /// search. Shows nothing before it is due.
    void show(const State &state, int columns, qint64 milliseconds);
    /// Removes the line; to be called before anything else is written to a
    /// terminal.
    void clear();

    bool isShown() const { return m_shown; }

    /// The bytes that remove the line.
    static const char *removal() { return "\r\x1b[K"; }

    /// The text for a terminal of columns columns: at least one column stays
    /// free, and a long path loses its beginning.
    static QString text(const State &state, int columns);

private:
    const Write m_write;
    bool m_shown = false;
};
