#include "tests/support/Commands.h"

#include "tests/support/Patience.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <algorithm>

namespace {

const QString kShell = QStringLiteral("sh");
const QString kCommand = QStringLiteral("-c");

} // namespace

int Commands::run(const QStringList &command)
{
    QProcess process;
    process.start(command.first(), command.mid(1));
    const bool ended = process.waitForFinished(2 * kPatienceMilliseconds);
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

bool Commands::killWithin(quint32 microseconds, const QStringList &command)
{
    QProcess process;
    process.start(command.first(), command.mid(1));
    if (!process.waitForStarted(kPatienceMilliseconds))
        return false;
    QThread::usleep(QRandomGenerator::global()->bounded(microseconds));
    process.kill();
    process.waitForFinished(kPatienceMilliseconds);
    return process.exitStatus() == QProcess::CrashExit;
}

quint32 Commands::nextKill(quint32 microseconds, bool wasLate)
{
    // A machine that is slow for a while may take so long for one save.
    constexpr quint32 kLongest = 60'000'000;
    constexpr quint32 kShortest = 1000;
    // Upwards in bigger steps: a process may take long to start.
    return wasLate ? std::max(microseconds * 3 / 5, kShortest)
                   : std::min(microseconds * 2, kLongest);
}

bool Commands::asOrdinaryUser(QStringList &command)
{
    const int superUser = run({kShell, kCommand, QStringLiteral("test $(id -u) = 0")});
    if (superUser != 0)
        return superUser == 1;
    const QStringList prefix{QStringLiteral("setpriv"), QStringLiteral("--reuid=65534"),
                             QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups")};
    const QString program = command.first();
    command = prefix + command;
    const auto mayReach = [&](const QString &path) {
        return run(prefix + QStringList{QStringLiteral("test"), QStringLiteral("-x"), path}) == 0;
    };
    return mayReach(program) && mayReach(QDir::tempPath());
}

QStringList Commands::withLimitedFiles(int kilobytes, const QStringList &command)
{
    // The shell counts in blocks of 512 bytes.
    const QString script =
        QStringLiteral("trap '' XFSZ; ulimit -f %1 || exit 99; exec \"$@\"").arg(2 * kilobytes);
    return QStringList{kShell, kCommand, script, kShell} + command;
}
