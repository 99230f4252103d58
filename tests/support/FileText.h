#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class QTextCodec;

/// The text of a file as the toolkit itself reads it, the slow and obvious way:
/// what the fast ways are compared with.
namespace FileText {

/// Reads bytes with a text stream from a device in text mode, then passes the
/// text through UTF-8. codec null: none is set.
QString read(const QByteArray &bytes, QTextCodec *codec);

/// The pieces between line feeds.
QStringList lines(const QString &text);

} // namespace FileText
