#include "engine/FileReader.h"

#include "engine/TextDecoder.h"

#include <algorithm>

namespace {

/// A buffer that grew beyond this is given back after the file.
constexpr qint64 kKeptBytes = 8 << 20;
constexpr qint64 kFirstBytes = 64 << 10;

} // namespace

void FileReader::reserve(qint64 bytes)
{
    if (m_buffer.size() >= bytes && m_buffer.size() <= std::max(kKeptBytes, bytes))
        return;
    m_buffer = QByteArray(); // never two large ones at once
    m_buffer = QByteArray(static_cast<int>(bytes), Qt::Uninitialized);
}

FileReader::Status FileReader::read(const QString &path, qint64 limit, TypeCheck check)
{
    m_size = 0;
    m_sizeAtOpen = 0;
    RegularFile file(path, check);
    if (!file.isOpen())
        return Status::CannotOpen;
    m_sizeAtOpen = file.size();
    limit = std::min(limit, kLargestText);
    if (m_sizeAtOpen > limit)
        return Status::TooLarge;
    // One byte more than the file has: a read that leaves it unused has met
    // the end, which saves the further call that would say so. A virtual file
    // that tells no size hands out a page a call and ends only with nothing.
    reserve(std::max(m_sizeAtOpen + 1, kFirstBytes));
    for (;;) {
        const qint64 wanted = m_buffer.size() - m_size;
        const qint64 count = file.readSome(m_buffer.data() + m_size, wanted);
        m_size += count;
        const bool atEnd =
            count == 0 || (count < wanted && m_sizeAtOpen > 0 && m_size >= m_sizeAtOpen);
        if (atEnd || m_size > limit)
            break;
        if (m_size == m_buffer.size())
            m_buffer.resize(static_cast<int>(std::min(m_size * 2, std::max(limit, m_size) + 1)));
    }
    m_size = std::min(m_size, std::max(limit, m_sizeAtOpen));
    return Status::Read;
}
