#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

/// One run of the sarvik-cli that was built, as a person starts it: its own
/// process, the C.UTF-8 locale, no settings unless the arguments' program has
/// some beside it.
class CliRun {
public:
    /// Starts and waits for the end; a run that hangs fails the test's process.
    explicit CliRun(const QStringList &arguments, const QString &workingFolder = QString());

    /// -1 when the program crashed.
    int exitStatus() const { return m_exitStatus; }
    QByteArray output() const { return m_output; }
    QByteArray errors() const { return m_errors; }
    /// The lines of the output in the order of their bytes, without line feeds.
    QList<QByteArray> sortedLines() const;

    /// The program itself.
    static QString program();
    /// samples/ of the source tree, ending in "/".
    static QString samples();
    /// A process that is set up but not started, for a test that does more with
    /// it.
    static void prepare(QProcess &process, const QStringList &arguments);
    /// The exit status, -1 after a crash; a process that hangs is killed and
    /// fails the test's process.
    static int waitForExit(QProcess &process);

private:
    int m_exitStatus = -1;
    QByteArray m_output;
    QByteArray m_errors;
};
