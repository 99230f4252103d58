#pragma once

#include <QStringList>

#include <functional>
#include <memory>

class AppSettings;
class FolderLister;

/// The settings that a search reads, taken once when it starts: the worker
/// threads never look at AppSettings, which has no lock.
struct SearchLimits {
    int bigsize = 1; ///< files over this many MiB are refused; negative: every file
    int codechksize = 4096; ///< leading bytes of a file that detection sees
    int detectsize = 2048; ///< samples up to this many bytes are taken as Shift-JIS sooner
    int tabcolm = 4; ///< display columns a tab advances to a multiple of, at least 1
    QStringList excludedFolders; ///< whole names, case-sensitive
    QStringList excludedFiles; ///< parts of names, case-sensitive

    /// bigsize in bytes.
    qint64 sizeLimitBytes() const;

    static SearchLimits fromSettings(const AppSettings &settings);
};

/// How an engine runs its searches, beyond the request itself.
struct EngineOptions {
    SearchLimits limits;

    /// A walk that ends with fewer queued files than this loads none of them.
    /// Two is the window's rule; a caller that names single files sets 1.
    int loadThreshold = 2;

    /// In line-count mode report each file's encoding instead of its lines.
    bool reportEncodings = false;

    /// Decode and visit every line of every file instead of only those that the
    /// keyword can be on: the slow, obvious path, to compare results with.
    bool visitEveryLine = false;

    /// Takes what was found in a file, in place of the signals foundAtList and
    /// foundAtFile, on the thread that searched it, so that what is made of a hit
    /// there goes on and the hit does not. codeSet: in which the file was read;
    /// hits: empty where only the name counts. Nothing of a file in the middle of
    /// which the run is aborted. Several threads call it at a time, all of them
    /// before finished() is emitted. It may throw std::bad_alloc, which is told of
    /// that file as an error, and nothing else.
    std::function<void(const QString &path, int codeSet, const QStringList &hits)> hitSink;

    /// Asked by the loaders before each file: while it is true they wait, so that
    /// a reader who is slower than the search does not make the results pile up
    /// in memory. Called on many threads at once, and often; must not block. An
    /// abort ends the wait.
    std::function<bool()> holdBack;

    /// Replaces the platform's folder enumeration; null: the platform's.
    std::shared_ptr<const FolderLister> lister;
};
