#pragma once

#include <QStringList>

/// The arguments of the program without its name, whole on every platform: file
/// names that are no valid text stand as in NativePath. The application object
/// must exist.
QStringList programArguments(int argc, char *const argv[]);
