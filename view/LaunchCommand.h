#pragma once

#include <QString>
#include <QStringList>

/// How a platform writes paths and hands arguments to a program.
enum class PathStyle {
    /// Backslashes; a program gets one command line, which it takes apart itself.
    Windows,
    /// Slashes; a program gets a list of arguments.
    Unix
};

/// A program that is to be started, as both kinds of platform need it.
struct LaunchCommand {
    /// Not quoted. Without a directory it is looked for as the platform does.
    QString program;
    /// Made this process's current directory before the start; empty: it stays.
    QString directory;
    /// For a platform that hands over a list: one entry an argument, each
    /// passed on as it stands.
    QStringList arguments;
    /// For a platform that hands over one line: the same, each argument quoted.
    QString parameters;
};

/// The rules that the commands for other programs share. Nothing here starts
/// or opens anything.
namespace LaunchRules {

/// Every "/" as "\" where the platform or a drive letter asks for it. A path
/// without a drive letter stays as it is on Unix: the file would not be found.
QString withNativeSeparators(const QString &path, PathStyle style);

/// Whether path says by itself where it starts: at the root, at a drive ("C:/")
/// or, in the Windows style, at a share.
bool isAbsolute(const QString &path, PathStyle style);

/// The path up to its last separator, without that separator unless it is the
/// root; empty when path has none. A backslash separates only in the Windows
/// style.
QString directoryPart(const QString &path, PathStyle style);

/// The file name of a program of this suite: Unix names have no ".exe".
QString suiteProgram(const QString &name, PathStyle style);

/// text between double quote characters when it contains a blank and is not
/// between them already.
QString quotedIfBlank(const QString &text);

/// text as one argument of a Windows command line: between double quote
/// characters, with the backslashes that keep a double quote in it, or a
/// backslash at its end, from ending the argument.
QString windowsArgument(const QString &text);

/// Program (quoted when it contains a blank), a blank and the parameters.
QString commandLine(const LaunchCommand &command);

} // namespace LaunchRules
