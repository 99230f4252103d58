#include "engine/FileReader.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

/// A buffer that grew beyond this is given back after the file.
constexpr qint64 kKeptBytes = 8 << 20;

} // namespace

void FileReader::reserve(qint64 bytes)
{
    if (m_buffer.size() < bytes || m_buffer.size() > std::max(kKeptBytes, bytes))
        m_buffer = QByteArray(static_cast<int>(bytes), Qt::Uninitialized);
}

FileReader::Status FileReader::read(const QString &path, qint64 limit, TypeCheck check)
{
    m_size = 0;
    m_sizeAtOpen = 0;
    if (check == TypeCheck::BeforeOpen && !QFileInfo(path).isFile())
        return Status::CannotOpen;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Status::CannotOpen;
    m_sizeAtOpen = file.size();
    limit = std::min(limit, kMaxBytes);
    if (m_sizeAtOpen > limit)
        return Status::TooLarge;
    reserve(m_sizeAtOpen + 1);
    m_size = std::max<qint64>(file.read(m_buffer.data(), m_sizeAtOpen), 0);
    return Status::Read;
}
