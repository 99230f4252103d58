#include "settings/IniDocument.h"

#include <QSysInfo>

#include <algorithm>
#include <iterator>

using IniText::Charset;

namespace {

const QByteArray kByteOrderMark = QByteArrayLiteral("\xef\xbb\xbf");

bool isLineEnd(char ch)
{
    return ch == '\n' || ch == '\r';
}

bool isBlank(char ch)
{
    return ch == ' ' || ch == '\t';
}

/// What a line holds, from start on: it ends at the line end, or at a semicolon
/// outside quotes, where a comment begins.
struct Extent {
    int end = 0;
    /// The first one outside quotes, or -1.
    int equalsSign = -1;
};

Extent extentFrom(const QByteArray &bytes, int start)
{
    Extent extent;
    bool inQuotes = false;
    int i = start;
    for (; i < bytes.size() && !isLineEnd(bytes.at(i)); ++i) {
        const char ch = bytes.at(i);
        if (ch == '\\' && i + 1 < bytes.size() && !isLineEnd(bytes.at(i + 1)))
            ++i;
        else if (ch == '"')
            inQuotes = !inQuotes;
        else if (ch == '=' && !inQuotes && extent.equalsSign < 0)
            extent.equalsSign = i;
        else if (ch == ';' && !inQuotes)
            break;
    }
    extent.end = i;
    return extent;
}

int lineEndFrom(const QByteArray &bytes, int start)
{
    int i = start;
    while (i < bytes.size() && !isLineEnd(bytes.at(i)))
        ++i;
    return i;
}

/// Past the line end at this position, if there is one.
int afterLineEnd(const QByteArray &bytes, int at)
{
    if (at >= bytes.size() || !isLineEnd(bytes.at(at)))
        return at;
    const bool pair = bytes.at(at) == '\r' && at + 1 < bytes.size() && bytes.at(at + 1) == '\n';
    return at + (pair ? 2 : 1);
}

QByteArray withoutBlanksAtEnd(QByteArray bytes)
{
    while (!bytes.isEmpty() && isBlank(bytes.back()))
        bytes.chop(1);
    return bytes;
}

bool isGeneral(const QByteArray &name)
{
    return name.compare("general", Qt::CaseInsensitive) == 0;
}

QString sectionOf(const QString &key)
{
    return key.left(std::max(key.indexOf(QLatin1Char('/')), 0));
}

/// UTF-8 text whose lines end in a line feed, as the program's settings are written.
QByteArray rewriteWithBomAndCrlf(QByteArray text)
{
    return kByteOrderMark + text.replace("\n", "\r\n");
}

QByteArray spelledSection(const QString &name)
{
    const QByteArray spelled = IniText::escapedKey(name);
    // The bare name means the keys that have no section.
    return isGeneral(spelled) ? QByteArrayLiteral("[%General]") : '[' + spelled + ']';
}

} // namespace

IniDocument::IniDocument(const QByteArray &bytes, Form form) : m_form(form)
{
    const bool windows = QSysInfo::kernelType() == QLatin1String("winnt");
    m_byteOrderMark = bytes.startsWith(kByteOrderMark);
    m_windowsLineEnds = bytes.isEmpty() ? windows : bytes.contains("\r\n");
    parse(m_byteOrderMark ? bytes.mid(kByteOrderMark.size()) : bytes);
}

void IniDocument::parse(const QByteArray &bytes)
{
    QString section;
    bool firstKeyOrSection = true;
    int at = 0;
    while (at < bytes.size()) {
        int start = at;
        while (start < bytes.size() && isBlank(bytes.at(start)))
            ++start;
        const bool comment = start < bytes.size() && bytes.at(start) == ';';
        const Extent extent =
            comment ? Extent{lineEndFrom(bytes, start), -1} : extentFrom(bytes, start);
        const QByteArray text = bytes.mid(start, extent.end - start);
        at = afterLineEnd(bytes, extent.end);

        Line line{Line::Other, QString(), text, QByteArray()};
        if (text.startsWith('[')) {
            line = sectionLine(text);
            section = line.name;
        } else if (extent.equalsSign >= 0) {
            line = keyLine(section, text, extent.equalsSign - start);
        }
        // A reader that counts the byte-order mark to the first key would
        // overlook that key if no section stood before it.
        if (line.kind == Line::Key && firstKeyOrSection)
            m_lines.push_front(generalHeader());
        firstKeyOrSection = firstKeyOrSection && line.kind == Line::Other;
        m_lines.push_back(std::move(line));
        index(m_lines.back());
    }
}

IniDocument::Line IniDocument::keyLine(const QString &section, const QByteArray &line,
                                       int equalsSign) const
{
    const QByteArray key = withoutBlanksAtEnd(line.left(equalsSign));
    const QString prefix = section.isEmpty() ? section : section + QLatin1Char('/');
    return {Line::Key, prefix + IniText::unescapedKey(key, rawCharset()), key,
            line.mid(equalsSign + 1)};
}

IniDocument::Line IniDocument::sectionLine(const QByteArray &line) const
{
    const int bracket = line.indexOf(']');
    const QByteArray spelled = line.mid(1, bracket < 0 ? -1 : bracket - 1).trimmed();
    // Not the general section's name: keys of that one do not belong here.
    QString name = QStringLiteral("/");
    if (isGeneral(spelled))
        name.clear();
    else if (spelled.startsWith('%') && isGeneral(spelled.mid(1)))
        name = QString::fromLatin1(spelled.mid(1));
    else if (!spelled.isEmpty())
        name = IniText::unescapedKey(spelled, rawCharset());
    return {Line::Section, name, line, QByteArray()};
}

IniDocument::Line IniDocument::generalHeader()
{
    return {Line::Section, QString(), QByteArrayLiteral("[General]"), QByteArray()};
}

void IniDocument::index(Line &line)
{
    if (line.kind != Line::Key)
        return;
    m_index.insert(line.name, &line);
    m_caselessIndex.insert(line.name.toCaseFolded(), &line);
}

IniDocument::Line *IniDocument::lineOf(const QString &key) const
{
    Line *exact = m_index.value(key, nullptr);
    return exact ? exact : m_caselessIndex.value(key.toCaseFolded(), nullptr);
}

QVariant IniDocument::value(const QString &key, const QVariant &defaultValue) const
{
    const Line *line = lineOf(key);
    return line ? IniText::unescapedValue(line->value, rawCharset()) : defaultValue;
}

QString IniDocument::text(const QString &key, const QString &defaultValue) const
{
    const Line *line = lineOf(key);
    return line ? IniText::unescapedText(line->value, rawCharset()) : defaultValue;
}

QStringList IniDocument::list(const QString &key, const QStringList &defaultValue) const
{
    return value(key, defaultValue).toStringList();
}

QStringList IniDocument::allKeys() const
{
    QStringList keys = m_index.keys();
    keys.sort();
    return keys;
}

QStringList IniDocument::childKeys(const QString &section) const
{
    const QString prefix = section + QLatin1Char('/');
    QStringList keys;
    for (auto entry = m_index.begin(); entry != m_index.end(); ++entry) {
        if (entry.key().startsWith(prefix) && entry.key().count(QLatin1Char('/')) == 1)
            keys.append(entry.key().mid(prefix.size()));
    }
    keys.sort();
    return keys;
}

void IniDocument::setValue(const QString &key, const QVariant &value)
{
    const QByteArray spelled = IniText::escapedValue(value, writtenCharset());
    if (Line *known = lineOf(key)) {
        known->value = spelled;
        return;
    }
    const QString section = sectionOf(key);
    const QString name = section.isEmpty() ? key : key.mid(section.size() + 1);
    auto place = endOfSection(section);
    if (place == m_lines.begin())
        place = makeSection(section);
    index(*m_lines.insert(place, {Line::Key, key, IniText::escapedKey(name), spelled}));
}

/// Where a new key of the section goes: behind its last key or its header; the
/// beginning when there is no such section.
IniDocument::Lines::iterator IniDocument::endOfSection(const QString &name)
{
    auto end = m_lines.begin();
    bool inside = false;
    for (auto line = m_lines.begin(); line != m_lines.end(); ++line) {
        if (line->kind == Line::Section)
            inside = line->name == name;
        if (inside && line->kind != Line::Other)
            end = std::next(line);
    }
    return end;
}

/// Returns where the first key of the new section goes.
IniDocument::Lines::iterator IniDocument::makeSection(const QString &name)
{
    if (name.isEmpty()) {
        if (!m_lines.empty())
            m_lines.push_front(Line());
        m_lines.push_front(generalHeader());
        return std::next(m_lines.begin());
    }
    if (!m_lines.empty())
        m_lines.push_back(Line());
    m_lines.push_back({Line::Section, name, spelledSection(name), QByteArray()});
    return m_lines.end();
}

QByteArray IniDocument::toBytes() const
{
    QByteArray out;
    for (const Line &line : m_lines) {
        out += line.raw;
        if (line.kind == Line::Key)
            out += '=' + line.value;
        out += '\n';
    }
    if (m_form == Form::Utf8)
        return rewriteWithBomAndCrlf(out);
    if (m_windowsLineEnds)
        out.replace("\n", "\r\n");
    return m_byteOrderMark ? kByteOrderMark + out : out;
}

Charset IniDocument::rawCharset() const
{
    return m_form == Form::Utf8 || m_byteOrderMark ? Charset::Utf8 : Charset::Latin1;
}

Charset IniDocument::writtenCharset() const
{
    return m_form == Form::Utf8 ? Charset::Utf8 : Charset::Latin1;
}
