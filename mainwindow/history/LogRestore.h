#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What loading a log changes in the window. A value that is nothing, and a
/// group that is not to be checked, leave the form as it is there.
///
/// The lines of the header go by their number; their labels are not looked at,
/// and a value begins at the tenth character. Line 1 (the version) and line 15
/// say nothing. A log that ends within its header changes only what the lines
/// it has stand for, so that no log, however broken, empties the form.
struct LogRestore {
    enum class Extent {
        Everything,
        /// At the program's start: keywords 1 and 3, and the text.
        HeaderOnly
    };

    std::optional<QString> keyword1;
    std::optional<bool> ignoreCase;
    std::optional<bool> word;
    std::optional<bool> regexp;
    std::optional<bool> subdir;
    /// The group of the extra condition becomes checked; never unchecked.
    bool checksExtraGroup = false;
    /// Set only when it is not empty; then its check box becomes checked too.
    std::optional<QString> keyword2;
    /// 0 for what is no number; the spin box keeps it in its range.
    std::optional<int> lineDistance;
    /// The lines of the path editor: no list file ("@…") with a "/" at its end,
    /// nothing after a list file, no empty one. An empty list empties the
    /// editor; that is also what the log of the last search does, whose paths
    /// are not restored.
    std::optional<QStringList> pathLines;
    std::optional<QString> mask;
    /// As the log says, or of the mask when the log leaves it empty.
    std::optional<QString> extension;
    /// The group of keyword 3 becomes checked; never unchecked.
    bool checksKeyword3Group = false;
    std::optional<QString> keyword3;
    /// The result view's text; empty when the log ends within its header.
    QString text;

    /// content: the log's whole text, lines ended by "\n". path: the log's own;
    /// one that contains "sarvik.log" names the log of the last search. Any
    /// thread; linear, without a second copy of a content that is moved in.
    static LogRestore fromContent(QString content, const QString &path, Extent extent);
};
