#include "tests/cli/CliRun.h"

#include <QProcessEnvironment>

#include <algorithm>

namespace {

/// Far beyond what any run takes, with a sanitizer, too.
constexpr int kHangMilliseconds = 120000;

} // namespace

CliRun::CliRun(const QStringList &arguments, const QString &workingFolder)
{
    QProcess process;
    prepare(process, arguments);
    process.setWorkingDirectory(workingFolder);
    process.start();
    m_exitStatus = waitForExit(process);
    m_output = process.readAllStandardOutput();
    m_errors = process.readAllStandardError();
}

QList<QByteArray> CliRun::sortedLines() const
{
    QList<QByteArray> lines = m_output.split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    std::sort(lines.begin(), lines.end());
    return lines;
}

QString CliRun::program()
{
    return QStringLiteral(SARVIK_CLI);
}

QString CliRun::samples()
{
    return QStringLiteral(SARVIK_SAMPLES "/");
}

void CliRun::prepare(QProcess &process, const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("TERM"), QStringLiteral("xterm"));
    environment.remove(QStringLiteral("NO_COLOR"));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    process.setProcessEnvironment(environment);
    process.setProgram(program());
    process.setArguments(arguments);
}

int CliRun::waitForExit(QProcess &process)
{
    if (!process.waitForFinished(kHangMilliseconds)) {
        process.kill();
        process.waitForFinished();
        qFatal("%s did not end", qPrintable(process.program()));
    }
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}
