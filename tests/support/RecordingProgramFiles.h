#pragma once

#include "tests/support/ScratchFolder.h"

#include <QByteArrayList>
#include <QString>

/// What of a RecordingProgram is the platform's.
namespace RecordingProgramFiles {

/// What it writes, beside itself.
const QString kRecord = QStringLiteral("arguments");

/// Returns its path; on Windows name gets ".exe" behind it.
QString make(const ScratchFolder &folder, const QString &name);

QByteArrayList arguments(const QByteArray &record);

} // namespace RecordingProgramFiles
