#pragma once

#include <QString>
#include <QStringView>

/// Picks words from a line of text, one more at each press of a key: Japanese
/// has no blanks between its words, so a word also ends where ASCII text and
/// other text meet.
class WordPicker {
public:
    /// Whether c stands between words and belongs to none. The underscore does:
    /// the parts of an identifier are picked one by one.
    static bool isSeparator(QChar c);

    /// The text from position (a UTF-16 index into line) over as many words as
    /// asked for, 1 or more. The end of the line ends it; there it is empty.
    ///
    /// 1. A separator ends a word. Those between the words are part of the
    ///    text, the one that ends the last word is not.
    /// 2. The last word also ends where a character is not of the run's class:
    ///    " " to "z", or anything else.
    /// 3. That class is the class of the character at position when one word is
    ///    asked for. More words keep the class that the previous call ended
    ///    with, and leave the class of the last character seen.
    QString pick(QStringView line, int position, int words);

private:
    bool m_asciiRun = false;
};
