#include "tests/doc/Page.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QXmlStreamReader>

#include <vector>

QString Page::folder()
{
    return QStringLiteral(SARVIK_SOURCES "doc/sarvik/");
}

QStringList Page::files(const QString &mask)
{
    QStringList found;
    QDirIterator walk(folder(), {mask}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        found += QDir(folder()).relativeFilePath(walk.next());
    found.sort();
    return found;
}

Page Page::read(const QString &fileName, QString *error)
{
    QFile file(folder() + fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return Page();
    }
    QXmlStreamReader reader(&file);
    // The open elements, the page itself first.
    std::vector<Page> open(1);
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            Page element;
            element.m_name = reader.name().toString();
            element.m_attributes = reader.attributes();
            open.push_back(element);
            break;
        }
        case QXmlStreamReader::EndElement: {
            const Page closed = open.back();
            open.pop_back();
            open.back().m_children.append(closed);
            break;
        }
        case QXmlStreamReader::Characters: {
            Page text;
            text.m_text = reader.text().toString();
            open.back().m_children.append(text);
            break;
        }
        default:
            break;
        }
    }
    *error = reader.hasError()
        ? QStringLiteral("line %1: %2").arg(reader.lineNumber()).arg(reader.errorString())
        : QString();
    return open.front();
}

QString Page::attribute(const char *name) const
{
    return m_attributes.value(QLatin1String(name)).toString();
}

bool Page::hasClass(const char *name) const
{
    return attribute("class").split(QLatin1Char(' ')).contains(QLatin1String(name));
}

QString Page::text() const
{
    QString all = m_text;
    for (const Page &child : m_children)
        all += child.text();
    return all;
}

QVector<Page> Page::all(const char *name) const
{
    QVector<Page> found;
    collect(QLatin1String(name), found);
    return found;
}

void Page::collect(const QString &name, QVector<Page> &found) const
{
    for (const Page &child : m_children) {
        if (!child.m_name.isEmpty() && (name.isEmpty() || child.m_name == name))
            found.append(child);
        child.collect(name, found);
    }
}
