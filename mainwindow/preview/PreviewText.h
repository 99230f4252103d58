#pragma once

#include <QByteArray>
#include <QString>

/// Between the bytes of a previewed file and the text that is edited. All
/// functions may run on any thread; none changes its arguments.
namespace PreviewText {

/// How a text is laid down in a file.
struct Form {
    int codeSet = 0; ///< CodeSet::Number; any other number means the locale's codec
    int lineEnd = 1; ///< CodeSet::LineEnd; any other number means LF
    bool bom = false; ///< a byte-order mark in front, in code sets that have one
};

/// What the toolkit's text stream reads: a byte-order mark in bytes overrides
/// the code set and is no part of the text. Carriage returns stay in the text,
/// unlike in that of a search.
QString decode(const QByteArray &bytes, int codeSet);

/// What a text document gives back of text when nobody edits it: every line
/// end, also a lone carriage return and a paragraph separator, is a line feed.
/// To be applied to QTextDocument::toRawText() too, which unlike toPlainText()
/// tells a no-break space from a blank and a line separator from a line end.
QString asEdited(QString text);

/// The file's bytes for text, whose lines are separated by line feeds.
QByteArray encode(QString text, const Form &form);

/// The bytes come back unchanged when their text is saved unedited.
bool survives(const QByteArray &bytes, const Form &form);

/// What encode() writes does not read as text again.
bool losesCharacters(const QString &text, const Form &form);

/// The characters that the code set cannot hold, each once and in the order in
/// which they first stand in text, the first most of them.
QString lostCharacters(const QString &text, int codeSet, int most = 20);

} // namespace PreviewText
