#include "cli/Arguments.h"

#include "engine/NativePath.h"

QStringList programArguments(int argc, char *const argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += NativePath::fromNative(QByteArray(argv[i]));
    return arguments;
}
