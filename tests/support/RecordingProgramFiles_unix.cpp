#include "tests/support/RecordingProgramFiles.h"

#include <QFile>

QString RecordingProgramFiles::make(const ScratchFolder &folder, const QString &name)
{
    // NUL after each argument, because nothing else is impossible in one; renamed when
    // it is whole, so that a half of it is never read.
    const QByteArray script = "#!/bin/sh\ncd \"$(dirname \"$0\")\"\n"
                              "while [ -e hold ]; do sleep 0.01; done\n"
                              "for argument; do printf '%s\\0' \"$argument\"; done > half\n"
                              "mv half arguments\n";
    const QString path = folder.write(name, script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

QByteArrayList RecordingProgramFiles::arguments(const QByteArray &record)
{
    QByteArrayList arguments = record.split('\0');
    arguments.removeLast(); // behind the last NUL
    return arguments;
}
