#include "fuzz/FuzzInput.h"

#include "engine/NativePath.h"

FuzzInput::FuzzInput(const std::uint8_t *data, std::size_t size)
    : m_bytes(reinterpret_cast<const char *>(data), static_cast<int>(size))
{
}

int FuzzInput::number(int limit)
{
    if (m_position >= m_bytes.size())
        return 0;
    return static_cast<unsigned char>(m_bytes.at(m_position++)) % limit;
}

QByteArray FuzzInput::line()
{
    const int end = m_bytes.indexOf('\n', m_position);
    const QByteArray bytes = m_bytes.mid(m_position, end < 0 ? -1 : end - m_position);
    m_position = end < 0 ? m_bytes.size() : end + 1;
    return bytes;
}

QString FuzzInput::textLine()
{
    return NativePath::fromNative(line());
}

QByteArray FuzzInput::rest()
{
    const QByteArray bytes = m_bytes.mid(m_position);
    m_position = m_bytes.size();
    return bytes;
}

QString FuzzInput::textRest()
{
    return NativePath::fromNative(rest());
}
