#pragma once

#include "view/LaunchCommand.h"

#include <QString>
#include <QStringList>

#include <optional>

/// The command that opens a file at a line in the external editor.
///
/// The file's name may come from anywhere (a tree that somebody else made, a
/// result log) and hold quotes, blanks, line feeds or what looks like a macro
/// or a command; it always reaches the editor as this one name. On Unix no
/// shell and no command line stand between; each argument is a list entry. On
/// Windows the name is quoted, and one that could get out of its quotes (no
/// file there can have it) starts nothing.
namespace EditorCommand {

struct Request {
    /// The settings: the program, and the template of its parameters.
    QString editor;
    QString parameterTemplate;
    /// With "/" between folders. A relative one starts at startDirectory.
    QString fileName;
    int line = 1;
    int column = 1;
    /// Where the companion editor lies, without a "/" at the end.
    QString applicationDirectory;
    QString startDirectory;
};

/// The template as text: "%f" is the path with native separators between
/// double quote characters (the template's own where it has put some around it),
/// "%l" the line, "%b" and "%c" the column. Macros are case-sensitive and looked
/// for in the template only, never in what replaces one.
QString parameters(const QString &parameterTemplate, const QString &path, int line, int column,
                   PathStyle style);

/// The template as a list of arguments: taken apart at its blanks, where double
/// quote characters keep blanks together, and then each macro replaced within
/// its argument, "%f" by the bare path.
QStringList arguments(const QString &parameterTemplate, const QString &path, int line, int column,
                      PathStyle style);

/// What is to be started; nothing without an editor or a file name, or when the
/// name cannot be handed over as one argument. The editor "sarvedit.exe", and
/// this name only, is the companion in the application directory; on Unix it may be
/// called "sarvedit". Another one with a folder is meant from startDirectory.
std::optional<LaunchCommand> build(const Request &request, PathStyle style);

} // namespace EditorCommand
