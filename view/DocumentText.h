#pragma once

#include <QString>

class QMimeData;
class QTextCursor;
class QTextDocument;

/// The text of a document. Unlike with toPlainText() every character stands as it
/// is, no-break spaces too.
namespace DocumentText {

/// For a document of any length, without a long wait: the lines, each but the last
/// ended by a line feed. Line separators stay. Events are processed between some
/// thousand lines; the document must not change meanwhile.
QString take(const QTextDocument &document);

/// For a short one, at once: the rows as they are seen, each but the last ended by a
/// line feed, also where a line separator ends it.
QString rows(const QTextDocument &document);
/// The same of what the cursor selects.
QString rows(const QTextCursor &selection);
/// That as what a view copies, and nothing else; the caller's.
QMimeData *copied(const QTextCursor &selection);

} // namespace DocumentText
