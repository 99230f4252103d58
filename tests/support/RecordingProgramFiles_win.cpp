#include "tests/support/RecordingProgramFiles.h"

#include <QFile>

#include <qt_windows.h>

#include <shellapi.h>

QString RecordingProgramFiles::make(const ScratchFolder &folder, const QString &name)
{
    const QString path = folder.filePath(name + QStringLiteral(".exe"));
    if (!QFile::copy(QStringLiteral(ARGUMENT_RECORDER), path))
        qFatal("cannot copy %s", ARGUMENT_RECORDER);
    return path;
}

QByteArrayList RecordingProgramFiles::arguments(const QByteArray &record)
{
    QByteArrayList arguments;
    int count = 0;
    wchar_t **const found =
        CommandLineToArgvW(QString::fromUtf8(record).toStdWString().c_str(), &count);
    for (int i = 1; found && i < count; ++i)
        arguments.append(QString::fromWCharArray(found[i]).toUtf8());
    LocalFree(found);
    return arguments;
}
