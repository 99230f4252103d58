#pragma once

#include "settings/IniText.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <list>

/// The content of an ini file in the format of QSettings, held line by line so
/// that a changed value is the only thing that changes: comments, unknown keys,
/// broken lines and the order stay as somebody typed them.
///
/// QSettings itself is not used because it drops comments and broken lines,
/// drops characters outside the basic plane when it writes UTF-8, overlooks the
/// first key of a file that begins with a byte-order mark and no section, and
/// lets a file build any serialised object, of any size. Files go both ways
/// between the two, with one exception: a value ends where its line ends, so
/// that a forgotten quote or a path that ends in a backslash, typed by hand,
/// costs no other key. (QSettings reads on; it never writes such values.)
///
/// Keys are "section/key", or "key" for the general section. A key that is not
/// found as spelt is looked for without regard to case: files made on
/// Windows may spell it so. Of several lines with one key the last counts.
class IniDocument {
public:
    enum class Form {
        /// QSettings' own: ASCII with \x escapes. A file that has a byte-order
        /// mark all the same is read as UTF-8 and keeps its mark.
        Escaped,
        /// UTF-8 with a byte-order mark and CR LF line ends.
        Utf8
    };

    explicit IniDocument(Form form) : IniDocument(QByteArray(), form) { }

    /// Any bytes make a document.
    IniDocument(const QByteArray &bytes, Form form);
    IniDocument(IniDocument &&) = default;
    IniDocument &operator=(IniDocument &&) = default;

    bool contains(const QString &key) const { return lineOf(key) != nullptr; }

    /// The value, or defaultValue when there is no such key; see
    /// IniText::unescapedValue.
    QVariant value(const QString &key, const QVariant &defaultValue = QVariant()) const;

    /// The value as one text, whatever commas were typed in it.
    QString text(const QString &key, const QString &defaultValue = QString()) const;

    /// The value as a list of texts; a single text is a list of one.
    QStringList list(const QString &key, const QStringList &defaultValue = QStringList()) const;

    /// Every key with its section, sorted.
    QStringList allKeys() const;

    /// Keys of a section without its name, sorted; not those with a further
    /// "/" in them.
    QStringList childKeys(const QString &section) const;

    /// Replaces the value where its key stands, or puts the key at the end of
    /// its section, which is made at the end of the file if there is none (the
    /// general one at its start).
    void setValue(const QString &key, const QVariant &value);

    QByteArray toBytes() const;

private:
    struct Line {
        enum Kind { Other, Section, Key };
        Kind kind = Other;
        /// The section's name, or the full key.
        QString name;
        /// The line as it stands in the file; of a Key, up to the equals sign.
        QByteArray raw;
        /// Of a Key, what stands behind the equals sign.
        QByteArray value;
    };

    // A list, so that an insertion moves no line that an index points to.
    using Lines = std::list<Line>;

    void parse(const QByteArray &bytes);
    Line keyLine(const QString &section, const QByteArray &line, int equalsSign) const;
    Line sectionLine(const QByteArray &line) const;
    static Line generalHeader();
    void index(Line &line);
    Line *lineOf(const QString &key) const;
    Lines::iterator endOfSection(const QString &name);
    Lines::iterator makeSection(const QString &name);
    IniText::Charset rawCharset() const;
    IniText::Charset writtenCharset() const;

    Form m_form;
    bool m_byteOrderMark = false;
    bool m_windowsLineEnds = false;
    Lines m_lines;
    QHash<QString, Line *> m_index;
    QHash<QString, Line *> m_caselessIndex;
};
