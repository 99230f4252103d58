#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

/// How the ini format of QSettings spells keys and values: both ways, for
/// values of the types that the program's files hold. Reading accepts any
/// bytes.
namespace IniText {

/// How characters outside ASCII stand in a value: QSettings' own form, where a
/// raw byte is a Latin-1 character and everything else an \x escape, or UTF-8.
enum class Charset { Latin1, Utf8 };

/// A key, or a section's name, as it stands before "=" or between brackets. "/"
/// is spelt "\" there; characters other than letters, digits, "_", "-" and "."
/// as %XX or %UXXXX.
QByteArray escapedKey(const QString &key);
/// The reverse. Raw characters outside ASCII are taken as charset says, so that
/// a key typed by hand in a UTF-8 file is read as typed.
QString unescapedKey(const QByteArray &bytes, Charset charset);

/// A value as it stands after "=": texts, lists of texts, numbers, flags,
/// byte arrays, points and sizes. Quoted where a comma, a semicolon or an equals
/// sign, or a blank at an end, needs it. The result is one line. In UTF-8 every
/// text comes back as it was, characters outside the basic plane and lone
/// surrogates included.
QByteArray escapedValue(const QVariant &value, Charset charset);

/// The reverse: a text, or a list of texts when a comma stands outside quotes;
/// or the point, size, byte array or empty value that an "@" form names.
/// Serialised objects ("@Variant", "@DateTime") stay the texts that they are:
/// nothing here writes them, and a file of arbitrary bytes must not make the
/// program build arbitrary objects.
QVariant unescapedValue(const QByteArray &bytes, Charset charset);

/// The value as one text whatever commas it has.
QString unescapedText(const QByteArray &bytes, Charset charset);

} // namespace IniText
