#include "tests/support/RecordingProgram.h"
#include "tests/support/Patience.h"

#include "tests/support/RecordingProgramFiles.h"

#include <QtTest>

namespace {

const QString kHold = QStringLiteral("hold");

} // namespace

RecordingProgram::RecordingProgram(const ScratchFolder &folder, const QString &name)
    : m_folder(folder), m_path(RecordingProgramFiles::make(folder, name))
{
}

QByteArrayList RecordingProgram::arguments() const
{
    if (!QTest::qWaitFor([this] { return hasKeptAny(); }, kPatienceMilliseconds))
        return {QByteArrayLiteral("nothing was started")};
    return RecordingProgramFiles::arguments(m_folder.read(RecordingProgramFiles::kRecord));
}

void RecordingProgram::hold() const
{
    m_folder.write(kHold, {});
}

void RecordingProgram::letGo() const
{
    m_folder.remove(kHold);
}

bool RecordingProgram::hasKeptAny() const
{
    return m_folder.exists(RecordingProgramFiles::kRecord);
}
