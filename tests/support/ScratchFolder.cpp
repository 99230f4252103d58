#include "tests/support/ScratchFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
    return file.readAll();
}

bool ScratchFolder::exists(const QString &relativePath) const
{
    return QFileInfo::exists(filePath(relativePath));
}

void ScratchFolder::remove(const QString &relativePath) const
{
    if (!QFile::remove(filePath(relativePath)))
        qFatal("cannot remove %s", qPrintable(relativePath));
}
