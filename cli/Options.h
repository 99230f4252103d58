#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What a command line of sarvik-cli asks for. Values are as typed; they have
/// passed the checks that need no look at the disk.
struct Options {
    enum class Mode { Search, LineCount, Encodings, Help, Version };
    enum class Format { Result, Grep, Json };
    enum class Color { Auto, Always, Never };

    static constexpr int kMaxWithin = 1000000;
    /// A larger text passes what one QString can hold (1 Gi UTF-16 units).
    static constexpr int kMaxSizeMiB = 1000;
    static constexpr int kMaxTabWidth = 1000;

    Mode mode = Mode::Search;

    QString keyword; ///< never empty in Mode::Search
    QString nearKeyword; ///< empty: no second keyword
    std::optional<int>
        within; ///< lines after the keyword's line in which nearKeyword counts; unset: 0
    QString notKeyword; ///< empty: no exclusion
    bool ignoreCase = false;
    bool word = false;
    bool fixedStrings = false; ///< clear: the keywords are regular expressions

    QStringList paths; ///< never empty but for Help and Version
    QString mask = QStringLiteral("*.*");
    bool subdirs = true;
    bool namesWithoutHits = false;
    QStringList excludedFolders; ///< in addition to those of the settings
    QStringList excludedFiles; ///< in addition to those of the settings

    std::optional<int> maxSize; ///< MiB; unset: as in the settings
    std::optional<int> tabWidth; ///< columns; unset: as in the settings
    bool useSettings = true;

    Format format = Format::Result;
    Color color = Color::Auto;
    bool sort = false;
    bool stats = false;
};
