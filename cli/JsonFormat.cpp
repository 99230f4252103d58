#include "cli/JsonFormat.h"

#include "cli/HitLine.h"
#include "cli/Message.h"
#include "engine/CodeSet.h"
#include "engine/NativePath.h"

namespace {

QString unicodeEscape(QChar c)
{
    return QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
}

QString escaped(QChar c)
{
    switch (c.unicode()) {
    case '"':
        return QStringLiteral("\\\"");
    case '\\':
        return QStringLiteral("\\\\");
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    default:
        return Message::isUnsafe(c) ? unicodeEscape(c) : QString(c);
    }
}

/// The members that all objects of a file share.
QByteArray pathMembers(const QString &path)
{
    const QByteArray name = NativePath::toNative(path);
    QByteArray members = "\"path\":" + JsonFormat::quote(path);
    if (QString::fromUtf8(name) != path)
        members += ",\"pathBase64\":\"" + name.toBase64() + '"';
    return members;
}

} // namespace

QByteArray JsonFormat::format(const FileResult &file) const
{
    const QByteArray path = pathMembers(file.path);
    const QByteArray encoding = ",\"encoding\":" + quote(CodeSet::name(file.codeSet));
    if (file.hits.isEmpty())
        return '{' + path + ",\"line\":null,\"column\":null,\"text\":null" + encoding + "}\n";
    QByteArray lines;
    for (const QString &hit : file.hits) {
        const HitLine parts = HitLine::parse(hit);
        lines += '{' + path + ",\"line\":" + QByteArray::number(parts.line)
            + ",\"column\":" + QByteArray::number(parts.column)
            + ",\"text\":" + quote(parts.text(hit)) + encoding + "}\n";
    }
    return lines;
}

QByteArray JsonFormat::quote(const QString &text)
{
    QString quoted = QStringLiteral("\"");
    for (int i = 0; i < text.size(); ++i) {
        if (Message::isPairAt(text, i)) {
            quoted += text.midRef(i, 2);
            ++i;
        } else if (text.at(i).isSurrogate()) {
            quoted += QChar(QChar::ReplacementCharacter);
        } else {
            quoted += escaped(text.at(i));
        }
    }
    return quoted.toUtf8() + '"';
}
