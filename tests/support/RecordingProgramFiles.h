#pragma once

#include "tests/support/ScratchFolder.h"

#include <QByteArrayList>
#include <QString>

/// What of a RecordingProgram is the platform's.
namespace RecordingProgramFiles {

/// What it writes, beside itself.
const QString kRecord = QStringLiteral("arguments");

/// Returns its path.
QString make(const ScratchFolder &folder);

QByteArrayList arguments(const QByteArray &record);

} // namespace RecordingProgramFiles
