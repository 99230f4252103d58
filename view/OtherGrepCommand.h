#pragma once

#include "view/LaunchCommand.h"

#include <QString>

/// The command that starts this program once more for a text that was selected in
/// this one. The new window begins with the request of the last search: this version
/// reads no argument.
namespace OtherGrepCommand {

/// applicationDirectory has no "/" at its end. The parameters are searchPath
/// and the text with its regular-expression metacharacters escaped; neither
/// can become more than one argument.
LaunchCommand build(const QString &applicationDirectory, const QString &searchPath,
                    const QString &text, PathStyle style);

} // namespace OtherGrepCommand
