#pragma once

#include <QString>

/// Turns the bytes of a whole file into text, exactly as the toolkit's text
/// stream reads it from a file opened in text mode with the codec of the code
/// set:
///
///  1. A byte-order mark at the start overrides the code set (UTF-8, UTF-16 and
///     UTF-32, both byte orders) and is not part of the text.
///  2. Otherwise the code set's codec decodes; the toolkit's locale codec for
///     CodeSet::Default and where the toolkit lacks the codec.
///  3. The bytes reach the codec in pieces of 16,384 with one converter state
///     through all of them. What the state still holds at the end, a sequence
///     cut off by the end of the file, is dropped. (The size of the pieces can
///     be seen: a U+FEFF that follows nothing but whole pieces of ASCII is
///     taken for a mark.)
///  4. Every U+000D is dropped, not only those before a line feed.
///
/// Where a shorter way gives the same text, that way is taken. Everything here
/// may run on any thread. size is in bytes and not negative.

/// More bytes than this do not fit into a string; the rest would be ignored.
constexpr qint64 kLargestText = 1'000'000'000;

QString decodeText(const char *bytes, qint64 size, int codeSet);

/// The text as the matcher sees it: decoded, then passed through UTF-8 once.
/// All characters survive that, noncharacters and U+0000 included, but half of
/// a surrogate pair without the other becomes "?".
QString searchableText(const char *bytes, qint64 size, int codeSet);

/// Does to text in place what passing it through UTF-8 would do.
void replaceLoneSurrogates(QString *text);

/// Parts of the decoded text when split at every line feed: one more than line
/// feeds, so 1 for an empty file.
int countLines(const char *bytes, qint64 size, int codeSet);
