#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QString text(const QByteArray &path)
{
    return QString::fromUtf8(path);
}

} // namespace

TreeBuilder::TreeBuilder(const QByteArray &root) : m_root(root)
{
}

// The names are valid text here: the folder's owner can remove them.
TreeBuilder::~TreeBuilder() = default;

void TreeBuilder::makeParents(const QByteArray &name)
{
    const QString parent = QFileInfo(text(path(name))).path();
    if (!QDir().mkpath(parent))
        qFatal("cannot make the folder %s", qPrintable(parent));
}

bool TreeBuilder::takesAnyName() const
{
    return false;
}

void TreeBuilder::folder(const QByteArray &name)
{
    makeParents(name + '/');
}

void TreeBuilder::file(const QByteArray &name, const QByteArray &bytes)
{
    makeParents(name);
    QFile file(text(path(name)));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot make the file %s", qPrintable(file.fileName()));
}

// A size without contents would take its room on the disk here.
bool TreeBuilder::sparseFile(const QByteArray &, qint64)
{
    return false;
}

// A symbolic link takes a privilege that few accounts have.
bool TreeBuilder::link(const QByteArray &, const QByteArray &)
{
    return false;
}

bool TreeBuilder::fifo(const QByteArray &)
{
    return false;
}

bool TreeBuilder::socket(const QByteArray &)
{
    return false;
}

bool TreeBuilder::device(const QByteArray &)
{
    return false;
}

bool TreeBuilder::setMode(const QByteArray &, unsigned)
{
    return false;
}
