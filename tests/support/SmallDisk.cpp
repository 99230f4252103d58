#include "tests/support/SmallDisk.h"

#include "tests/support/Commands.h"

#include <QFile>

SmallDisk::SmallDisk()
    : m_mounted(
        Commands::run({QStringLiteral("mount"), QStringLiteral("-t"), QStringLiteral("tmpfs"),
                       QStringLiteral("-o"), QStringLiteral("size=512k"), QStringLiteral("tmpfs"),
                       m_folder.path()})
        == 0)
{
}

SmallDisk::~SmallDisk()
{
    if (m_mounted)
        Commands::run({QStringLiteral("umount"), m_folder.path()});
}

void SmallDisk::fill(int blocksLeft)
{
    const QByteArray block(4096, 'x');
    QFile filler(path() + QStringLiteral("filler"));
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        qFatal("cannot fill the disk");
    while (filler.write(block) == block.size()) { }
    if (blocksLeft > 0 && !filler.resize(filler.size() - blocksLeft * block.size()))
        qFatal("cannot make room");
}

void SmallDisk::makeRoom()
{
    QFile::remove(path() + QStringLiteral("filler"));
}
