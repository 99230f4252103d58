#include "cli/Arguments.h"

#include <QCoreApplication>

// argv is in the ANSI code page and has lost what that cannot hold.
QStringList programArguments(int, char *const[])
{
    return QCoreApplication::arguments().mid(1);
}
