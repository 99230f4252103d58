#pragma once

#include <QByteArray>
#include <QString>

/// Between the bytes of a previewed file and the text that is edited. All
/// functions may run on any thread; none changes its arguments.
///
/// Lines are counted by a search at line feeds alone, but a text document ends a
/// line at a carriage return and at some rarer characters too. Those stand in for
/// others in the document, so that its blocks are the lines of the hits and every
/// one comes back when the text is saved:
///
///  - A carriage return among line feeds is a line separator in the document: a
///    new row in the same block.
///  - Paragraph separators, the two noncharacters that a document marks its
///    frames with and, beside lone carriage returns, line separators are four
///    other noncharacters.
///  - In a file without any line feed the carriage returns end the lines, and
///    for a search it is one line only: rowOf() finds the row of a hit in it.
namespace PreviewText {

/// How a text is laid down in a file.
struct Form {
    int codeSet = 0; ///< CodeSet::Number; any other number means the locale's codec
    int lineEnd = 1; ///< CodeSet::LineEnd; any other number means LF
    bool bom = false; ///< a byte-order mark in front, in code sets that have one
    /// Carriage returns stand among the line ends and are kept where they are.
    bool loneReturns = false;
};

/// What the toolkit's text stream reads: a byte-order mark in bytes overrides
/// the code set and is no part of the text. Carriage returns stay in the text,
/// unlike in that of a search.
QString decode(const QByteArray &bytes, int codeSet);

/// Where text, the whole of a file, holds lone carriage returns, sets lineEnd and
/// loneReturns to what it holds: detection sees only the beginning, and takes a
/// carriage return and a line feed anywhere in it for pairs.
void takeReturns(const QString &text, Form *form);

/// What is given to a document for a decoded text: every line end is a line feed.
QString forDocument(QString text, const Form &form);

/// The text to be encoded: from QTextDocument::toRawText(), which unlike
/// toPlainText() tells a no-break space from a blank and a line separator from a
/// line end; or from what forDocument() returns. Line ends are line feeds;
/// carriage returns are lone ones.
QString fromDocument(QString text, const Form &form);

/// What comes from a document when nobody edits the decoded text.
QString asEdited(const QString &text, const Form &form);

/// Where the row begins that column falls into: 0, or behind a line end of any
/// kind in text, which is a line of a search as a document holds it, with its
/// ends. column counts display columns from 1, as in a hit, where ends take none.
int rowOf(const QString &text, int column, int tabWidth);

/// The file's bytes for text, whose lines are separated by line feeds.
QByteArray encode(QString text, const Form &form);

/// The bytes come back unchanged when their text is saved unedited.
bool survives(const QByteArray &bytes, const Form &form);

/// What encode() writes does not read as text again; text as fromDocument()
/// gives it.
bool losesCharacters(const QString &text, const Form &form);

/// The characters that the code set cannot hold, each once and in the order in
/// which they first stand in text, the first most of them.
QString lostCharacters(const QString &text, int codeSet, int most = 20);

} // namespace PreviewText
