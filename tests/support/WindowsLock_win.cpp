#include "tests/support/WindowsLock.h"

#include "tests/support/Patience.h"

#include <QDir>

namespace {

// Beyond 260 units and for names that mean devices, too.
QString longForm(const QString &path)
{
    return QLatin1String("\\\\?\\") + QDir::toNativeSeparators(QDir(path).absolutePath());
}

} // namespace

WindowsLock::WindowsLock(const QString &path, DWORD shared)
{
    m_holder.start(QStringLiteral(FILE_HOLDER), {longForm(path), QString::number(shared)});
    m_held =
        m_holder.waitForReadyRead(kPatienceMilliseconds) && m_holder.readAll().startsWith("held");
}

WindowsLock::~WindowsLock()
{
    release();
}

void WindowsLock::release()
{
    m_holder.closeWriteChannel();
    if (m_holder.state() != QProcess::NotRunning
        && !m_holder.waitForFinished(kPatienceMilliseconds))
        m_holder.kill();
}
