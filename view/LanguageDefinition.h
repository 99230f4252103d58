#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <array>

/// What a language definition file says about one language. Every text stands
/// as in the file, nothing trimmed, unless said otherwise.
struct LanguageDefinition {
    /// Of the file, when it was read.
    QDateTime lastModified;

    QString suffix;
    /// regexp1 to regexp5, every "*" escaped as "\*".
    std::array<QString, 5> regexps;
    QString splitext;

    // Patterns of QRegExp; empty when the language has no such comment.
    QString singleLine;
    QString multiLineStart;
    QString multiLineEnd;

    // Patterns of QRegExp.
    QStringList reserve;
    QStringList keywords;
    // Whole words.
    QStringList wordReserve;
    QStringList wordKeywords;
};

/// The text of a language definition file, taken apart.
///
/// Lines end with CR LF or, when that gives fewer than five lines, with LF (a
/// CR then stays at the end of its line). The rules for a line, in this order:
///
/// 1. "//" at its start makes it a comment, and nothing else applies.
/// 2. "[langoption]" anywhere in it opens the options; otherwise, while they are
///    open, it may be one of their keys. "splitext=" closes them.
/// 3. "[comment]" at its start opens the comment markers; otherwise, while they
///    are open, it may be one of their keys. "multiLineEnd=" closes them.
/// 4. "[reserve]", "[WordReserve]", "[keywords]" or "[WordKeywords]" at its start
///    opens that list and closes any other.
/// 5. When it is no header, a list is open and it is not blank, it is an entry of
///    that list, be it a key as well or not.
namespace LanguageFile {

/// A list holds no more entries than these; later ones are dropped. Far above
/// any real language, it bounds what a broken file costs.
constexpr int kMostEntries = 20000;

/// Any text makes a definition, possibly an empty one.
LanguageDefinition parse(const QString &text);

} // namespace LanguageFile
