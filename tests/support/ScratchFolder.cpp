#include "tests/support/ScratchFolder.h"

#include "tests/support/Patience.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <functional>

namespace {

/// On Windows a file that another process is just moving to its name is there already
/// and can neither be read nor removed for a moment.
bool withPatience(const QString &name, const std::function<bool()> &step)
{
    constexpr unsigned long kPause = 10;
    for (unsigned long waited = 0; !step(); waited += kPause) {
        if (waited >= kPatienceMilliseconds || !QFileInfo::exists(name))
            return false;
        QThread::msleep(kPause);
    }
    return true;
}

} // namespace

ScratchFolder::ScratchFolder()
{
    if (!m_folder.isValid())
        qFatal("no scratch folder: %s", qPrintable(m_folder.errorString()));
}

QString ScratchFolder::path() const
{
    return m_folder.path() + QLatin1Char('/');
}

QString ScratchFolder::filePath(const QString &relativePath) const
{
    return path() + relativePath;
}

QString ScratchFolder::write(const QString &relativePath, const QByteArray &bytes) const
{
    const QString name = filePath(relativePath);
    if (!QDir().mkpath(QFileInfo(name).path()))
        qFatal("cannot make the folder of %s", qPrintable(name));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s: %s", qPrintable(name), qPrintable(file.errorString()));
    return name;
}

QString ScratchFolder::makeFolder(const QString &relativePath) const
{
    const QString name = filePath(relativePath);
    if (!QDir().mkpath(name))
        qFatal("cannot make %s", qPrintable(name));
    return name.endsWith(QLatin1Char('/')) ? name : name + QLatin1Char('/');
}

QByteArray ScratchFolder::read(const QString &relativePath) const
{
    QFile file(filePath(relativePath));
    if (!withPatience(file.fileName(), [&file] { return file.open(QIODevice::ReadOnly); }))
        qFatal("cannot read %s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
    return file.readAll();
}

bool ScratchFolder::exists(const QString &relativePath) const
{
    return QFileInfo::exists(filePath(relativePath));
}

void ScratchFolder::remove(const QString &relativePath) const
{
    QFile file(filePath(relativePath));
    if (!withPatience(file.fileName(), [&file] { return file.remove(); }))
        qFatal("cannot remove %s: %s", qPrintable(relativePath), qPrintable(file.errorString()));
}
