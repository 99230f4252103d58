#include "tests/support/WindowsLock.h"

#include <QDir>

namespace {

// Beyond 260 units and for names that mean devices, too.
QString longForm(const QString &path)
{
    return QLatin1String("\\\\?\\") + QDir::toNativeSeparators(QDir(path).absolutePath());
}

} // namespace

WindowsLock::WindowsLock(const QString &path, DWORD shared, int milliseconds)
{
    m_holder.start(QStringLiteral(FILE_HOLDER),
                   {longForm(path), QString::number(shared), QString::number(milliseconds)});
    m_held = m_holder.waitForReadyRead() && m_holder.readAll().startsWith("held");
}

WindowsLock::~WindowsLock()
{
    m_holder.closeWriteChannel();
    if (!m_holder.waitForFinished())
        m_holder.kill();
}
