#pragma once

#include "tests/support/ScratchFolder.h"

#include <QByteArrayList>
#include <QString>

/// A program in a folder that keeps the arguments it is started with: a script, or on
/// Windows a copy of ArgumentRecorder.
class RecordingProgram {
public:
    /// name is without a suffix.
    explicit RecordingProgram(const ScratchFolder &folder,
                              const QString &name = QStringLiteral("my editor"));

    QString path() const { return m_path; }

    /// Each as the platform has it, on Windows in UTF-8, where the system's own
    /// rule takes the command line apart. Waits for them; when none come, that.
    QByteArrayList arguments() const;

    /// From now on the program waits, before it keeps anything, until it is let go.
    void hold() const;
    void letGo() const;
    bool hasKeptAny() const;

private:
    const ScratchFolder &m_folder;
    const QString m_path;
};
