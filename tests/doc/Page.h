#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <QXmlStreamAttributes>

/// A page of the help, read as XML: an element with all that is in it. A text
/// between elements is one without a name.
class Page {
public:
    /// By its name in doc/sarvik. A page that is not well-formed has an error and
    /// is otherwise not to be used.
    static Page read(const QString &fileName, QString *error);
    /// The folder of the pages, ending in "/".
    static QString folder();
    /// Names of the files that match, with their folders below folder().
    static QStringList files(const QString &mask);

    const QString &name() const { return m_name; }
    const QVector<Page> &children() const { return m_children; }
    QString attribute(const char *name) const;
    const QXmlStreamAttributes &attributes() const { return m_attributes; }
    bool hasClass(const char *name) const;

    /// All text in it, as it stands.
    QString text() const;
    /// The elements of this name in it, in the order of the page; every element
    /// for an empty one.
    QVector<Page> all(const char *name) const;

private:
    void collect(const QString &name, QVector<Page> &found) const;

    QString m_name;
    QString m_text;
    QXmlStreamAttributes m_attributes;
    QVector<Page> m_children;
};
