#include "settings/IniText.h"

#include <QPoint>
#include <QSize>

#include <cctype>
#include <optional>
#include <utility>

namespace IniText {

namespace {

bool isHexDigit(char16_t ch)
{
    return (ch >= u'0' && ch <= u'9') || (ch >= u'a' && ch <= u'f') || (ch >= u'A' && ch <= u'F');
}

// With the size given, as without it the text would end at a NUL.
QString fromLatin1(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

QString decoded(const QByteArray &bytes, Charset charset)
{
    return charset == Charset::Utf8 ? QString::fromUtf8(bytes.constData(), bytes.size())
                                    : fromLatin1(bytes);
}

/// Takes a value apart: quotes, escapes, commas, blanks around the parts.
class ValueReader {
public:
    ValueReader(const QByteArray &bytes, Charset charset, bool splitAtCommas)
        : m_bytes(bytes), m_charset(charset), m_splitAtCommas(splitAtCommas)
    {
    }

    QStringList parts()
    {
        skipBlanks();
        while (m_at < m_bytes.size())
            readPiece();
        endPart();
        return m_parts;
    }

private:
    void readPiece()
    {
        const char ch = m_bytes.at(m_at);
        if (ch == '\\') {
            ++m_at;
            readEscape();
            // Blanks before an escape belong to the text.
            m_trimLimit = m_part.size();
        } else if (ch == '"') {
            ++m_at;
            readQuote();
        } else if (ch == ',' && m_splitAtCommas && !m_inQuotes) {
            ++m_at;
            endPart();
            skipBlanks();
        } else {
            readPlain();
        }
    }

    void readQuote()
    {
        m_quoted = true;
        m_inQuotes = !m_inQuotes;
        if (!m_inQuotes)
            skipBlanks();
        m_trimLimit = m_part.size();
    }

    void readPlain()
    {
        int end = m_at + 1;
        while (end < m_bytes.size() && !isSpecial(m_bytes.at(end)))
            ++end;
        m_part += decoded(m_bytes.mid(m_at, end - m_at), m_charset);
        m_at = end;
    }

    void readEscape()
    {
        if (m_at >= m_bytes.size())
            return;
        const char ch = m_bytes.at(m_at++);
        static const QByteArray names = QByteArrayLiteral("abfnrtv\"?'\\");
        static const QByteArray meanings = QByteArrayLiteral("\a\b\f\n\r\t\v\"?'\\");
        const int simple = names.indexOf(ch);
        if (simple >= 0) {
            m_part += QLatin1Char(meanings.at(simple));
        } else if (ch == 'x') {
            readNumber(16);
        } else if (ch >= '0' && ch <= '7') {
            --m_at;
            readNumber(8);
        } else if (ch == '\n' || ch == '\r') {
            skipRestOfLineEnd(ch);
        }
        // Any other character stands for nothing.
    }

    void readNumber(int base)
    {
        uint number = 0;
        bool any = false;
        while (m_at < m_bytes.size()) {
            const char ch = m_bytes.at(m_at);
            const bool digit =
                base == 16 ? isHexDigit(static_cast<uchar>(ch)) : ch >= '0' && ch <= '7';
            if (!digit)
                break;
            number = number * static_cast<uint>(base) + valueOf(ch);
            any = true;
            ++m_at;
        }
        if (any)
            m_part += QChar(static_cast<ushort>(number));
    }

    static uint valueOf(char digit)
    {
        return static_cast<uint>(digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10);
    }

    void skipRestOfLineEnd(char first)
    {
        if (m_at < m_bytes.size() && m_bytes.at(m_at) == (first == '\n' ? '\r' : '\n'))
            ++m_at;
    }

    void skipBlanks()
    {
        while (m_at < m_bytes.size() && isBlank(m_bytes.at(m_at)))
            ++m_at;
    }

    void endPart()
    {
        while (!m_quoted && m_part.size() > m_trimLimit && isBlank(m_part.back().toLatin1()))
            m_part.chop(1);
        m_parts.append(m_part);
        m_part.clear();
        m_trimLimit = 0;
        m_quoted = false;
    }

    static bool isBlank(char ch) { return ch == ' ' || ch == '\t'; }
    static bool isSpecial(char ch) { return ch == '\\' || ch == '"' || ch == ','; }

    const QByteArray &m_bytes;
    const Charset m_charset;
    const bool m_splitAtCommas;
    int m_at = 0;
    bool m_inQuotes = false;
    bool m_quoted = false;
    /// Blanks at the end of the part are cut down to this length, not further.
    int m_trimLimit = 0;
    QString m_part;
    QStringList m_parts;
};

/// The two numbers of "@Name(1 2)".
std::optional<std::pair<int, int>> pairIn(const QString &text, QLatin1String prefix)
{
    if (!text.startsWith(prefix))
        return std::nullopt;
    const QString inside = text.mid(prefix.size(), text.size() - prefix.size() - 1);
    const QStringList numbers = inside.split(QLatin1Char(' '));
    if (numbers.size() != 2 || inside.contains(QLatin1Char(')')))
        return std::nullopt;
    return std::make_pair(numbers.at(0).toInt(), numbers.at(1).toInt());
}

QVariant typed(const QString &text)
{
    if (!text.startsWith(QLatin1Char('@')))
        return text;
    if (text.startsWith(QLatin1String("@@")))
        return text.mid(1);
    if (!text.endsWith(QLatin1Char(')')))
        return text;
    if (text == QLatin1String("@Invalid()"))
        return QVariant();
    const QLatin1String bytesForm("@ByteArray(");
    if (text.startsWith(bytesForm))
        return text.mid(bytesForm.size(), text.size() - bytesForm.size() - 1).toLatin1();
    const QLatin1String stringForm("@String(");
    if (text.startsWith(stringForm))
        return text.mid(stringForm.size(), text.size() - stringForm.size() - 1);
    if (const auto size = pairIn(text, QLatin1String("@Size(")))
        return QSize(size->first, size->second);
    if (const auto point = pairIn(text, QLatin1String("@Point(")))
        return QPoint(point->first, point->second);
    return text;
}

QString named(const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::UnknownType:
        return QStringLiteral("@Invalid()");
    case QMetaType::QByteArray:
        return QLatin1String("@ByteArray(") + fromLatin1(value.toByteArray()) + QLatin1Char(')');
    case QMetaType::QSize:
        return QStringLiteral("@Size(%1 %2)")
            .arg(value.toSize().width())
            .arg(value.toSize().height());
    case QMetaType::QPoint:
        return QStringLiteral("@Point(%1 %2)").arg(value.toPoint().x()).arg(value.toPoint().y());
    default:
        break;
    }
    const QString text = value.toString();
    if (text.contains(QChar(QChar::Null)))
        return QLatin1String("@String(") + text + QLatin1Char(')');
    return text.startsWith(QLatin1Char('@')) ? QLatin1Char('@') + text : text;
}

/// Appends one text to a line, escaped.
class TextWriter {
public:
    TextWriter(QByteArray &out, Charset charset) : m_out(out), m_charset(charset) { }

    void append(const QString &text)
    {
        const bool quotes = needsQuotes(text);
        if (quotes)
            m_out += '"';
        for (int i = 0; i < text.size(); ++i)
            i += appendCharacter(text, i);
        if (quotes)
            m_out += '"';
    }

private:
    static bool needsQuotes(const QString &text)
    {
        const QLatin1Char blank(' ');
        return text.contains(QLatin1Char(';')) || text.contains(QLatin1Char(','))
            || text.contains(QLatin1Char('=')) || text.startsWith(blank) || text.endsWith(blank);
    }

    /// Returns how many code units more than one were used.
    int appendCharacter(const QString &text, int index)
    {
        const char16_t ch = text.at(index).unicode();
        // A digit right behind a numeric escape would be read as part of it.
        const bool afterNumber = m_afterNumber;
        m_afterNumber = false;
        static const QByteArray characters = QByteArrayLiteral("\a\b\f\n\r\t\v\"\\");
        static const QByteArray names = QByteArrayLiteral("abfnrtv\"\\");
        const int simple = ch < 0x80 ? characters.indexOf(static_cast<char>(ch)) : -1;
        if (ch == 0) {
            m_out += "\\0";
            m_afterNumber = true;
        } else if (simple >= 0) {
            m_out += '\\';
            m_out += names.at(simple);
        } else if (ch < 0x20 || (afterNumber && isHexDigit(ch))) {
            appendNumber(ch);
        } else if (ch < 0x7f) {
            m_out += static_cast<char>(ch);
        } else {
            return appendOutsideAscii(text, index);
        }
        return 0;
    }

    int appendOutsideAscii(const QString &text, int index)
    {
        const QChar ch = text.at(index);
        constexpr char16_t kByteOrderMark = 0xfeff;
        const bool pair =
            ch.isHighSurrogate() && index + 1 < text.size() && text.at(index + 1).isLowSurrogate();
        // A decoder may drop a byte-order mark; a lone surrogate has no UTF-8.
        if (m_charset == Charset::Latin1 || (ch.isSurrogate() && !pair) || ch == kByteOrderMark) {
            appendNumber(ch.unicode());
            return 0;
        }
        m_out += text.mid(index, pair ? 2 : 1).toUtf8();
        return pair ? 1 : 0;
    }

    void appendNumber(char16_t ch)
    {
        m_out += "\\x";
        m_out += QByteArray::number(static_cast<uint>(ch), 16);
        m_afterNumber = true;
    }

    QByteArray &m_out;
    const Charset m_charset;
    bool m_afterNumber = false;
};

/// The character of "%XX" or "%UXXXX" at the percent sign, and its length.
std::optional<std::pair<QChar, int>> percentEscape(const QByteArray &bytes, int at)
{
    const bool wide = at + 1 < bytes.size() && bytes.at(at + 1) == 'U';
    const int first = at + (wide ? 2 : 1);
    const int digits = wide ? 4 : 2;
    if (first + digits > bytes.size())
        return std::nullopt;
    for (int i = first; i < first + digits; ++i) {
        if (!isHexDigit(static_cast<uchar>(bytes.at(i))))
            return std::nullopt;
    }
    const uint code = bytes.mid(first, digits).toUInt(nullptr, 16);
    return std::make_pair(QChar(static_cast<ushort>(code)), first + digits - at);
}

} // namespace

QByteArray escapedKey(const QString &key)
{
    QByteArray out;
    for (const QChar character : key) {
        const char16_t ch = character.unicode();
        const bool plain = ch < 0x80
            && (std::isalnum(static_cast<int>(ch)) || ch == u'_' || ch == u'-' || ch == u'.');
        const QByteArray hex = QByteArray::number(static_cast<uint>(ch), 16).toUpper();
        if (plain)
            out += static_cast<char>(ch);
        else if (ch == u'/')
            out += '\\';
        else if (ch <= 0xff)
            out += '%' + hex.rightJustified(2, '0');
        else
            out += "%U" + hex.rightJustified(4, '0');
    }
    return out;
}

QString unescapedKey(const QByteArray &bytes, Charset charset)
{
    QString key;
    QByteArray plain;
    const auto flush = [&] {
        key += decoded(plain, charset);
        plain.clear();
    };
    for (int i = 0; i < bytes.size(); ++i) {
        const char ch = bytes.at(i);
        const auto escape = ch == '%' ? percentEscape(bytes, i) : std::nullopt;
        if (escape) {
            flush();
            key += escape->first;
            i += escape->second - 1;
        } else {
            plain += ch == '\\' ? '/' : ch;
        }
    }
    flush();
    return key;
}

QByteArray escapedValue(const QVariant &value, Charset charset)
{
    const int type = value.userType();
    // A byte array's characters are bytes, whatever the file's character set.
    const Charset used = type == QMetaType::QByteArray ? Charset::Latin1 : charset;
    QByteArray out;
    if (type != QMetaType::QStringList) {
        TextWriter(out, used).append(named(value));
        return out;
    }
    const QStringList list = value.toStringList();
    if (list.isEmpty())
        return QByteArrayLiteral("@Invalid()");
    for (int i = 0; i < list.size(); ++i) {
        if (i > 0)
            out += ", ";
        TextWriter(out, used).append(named(list.at(i)));
    }
    return out;
}

QVariant unescapedValue(const QByteArray &bytes, Charset charset)
{
    const QStringList parts = ValueReader(bytes, charset, true).parts();
    if (parts.size() == 1)
        return typed(parts.first());
    QStringList list;
    for (const QString &part : parts)
        list.append(typed(part).toString());
    return list;
}

QString unescapedText(const QByteArray &bytes, Charset charset)
{
    return typed(ValueReader(bytes, charset, false).parts().first()).toString();
}

} // namespace IniText
