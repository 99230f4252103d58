#include "mainwindow/preview/SaveTurn.h"

#include <QCryptographicHash>
#include <QDir>

#include <qt_windows.h>

namespace {

constexpr DWORD kLongestWaitMilliseconds = 3000;

/// Two spellings of a name mean one file; what a mutex is called may hold no "\\".
std::wstring mutexName(const QString &path)
{
    const QByteArray spelling = QDir::cleanPath(path).toCaseFolded().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(spelling, QCryptographicHash::Sha1).toHex();
    return QStringLiteral("Local\\sarvik-save-%1").arg(QString::fromLatin1(hash)).toStdWString();
}

} // namespace

// No lock of the file itself: one that is open cannot be replaced.
SaveTurn::SaveTurn(const QString &path)
    : m_mutex(CreateMutexW(nullptr, FALSE, mutexName(path).c_str()))
{
    if (m_mutex == nullptr)
        return;
    const DWORD result = WaitForSingleObject(m_mutex, kLongestWaitMilliseconds);
    // Abandoned: the process that had it has ended.
    m_owned = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

SaveTurn::~SaveTurn()
{
    if (m_owned)
        ReleaseMutex(m_mutex);
    if (m_mutex != nullptr)
        CloseHandle(m_mutex);
}
