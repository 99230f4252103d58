#pragma once

#include <QString>

class QTextDocument;

/// The text of a document of any length, without a long wait.
namespace DocumentText {

/// The lines, each but the last ended by a line feed. Unlike toPlainText() every
/// character stands as it is, no-break spaces too. Events are processed between
/// some thousand lines; the document must not change meanwhile.
QString take(const QTextDocument &document);

} // namespace DocumentText
