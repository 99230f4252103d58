#pragma once

#include <QString>
#include <QStringList>

/// Other programs, run to their end by tests of what is left on the disk.
namespace Commands {

/// The exit code, or -1 when there is none.
int run(const QStringList &command);

/// Starts the command and kills it at a moment before these microseconds are over.
/// False when it had ended by itself.
bool killWithin(quint32 microseconds, const QStringList &command);

/// Where many such kills begin, and what the next one takes: less after one that came
/// late, more after one that came early. So they follow what the command takes on the
/// machine just then.
constexpr quint32 kFirstKillMicroseconds = 20'000;
quint32 nextKill(quint32 microseconds, bool wasLate);

/// Changes command so that somebody without the super-user's rights runs it; false
/// when that is not possible.
bool asOrdinaryUser(QStringList &command);

/// The command, but that no file which it writes may become longer than so many
/// kilobytes: a write fails in the middle of the file, as on a disk that fills up. run()
/// then gives 99 or -1 where there is no such limit.
QStringList withLimitedFiles(int kilobytes, const QStringList &command);

} // namespace Commands
