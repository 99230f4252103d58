#include "view/OtherGrepCommand.h"

#include "engine/RegExpEscape.h"

LaunchCommand OtherGrepCommand::build(const QString &applicationDirectory,
                                      const QString &searchPath, const QString &text,
                                      PathStyle style)
{
    const QString program = applicationDirectory + QLatin1Char('/')
        + LaunchRules::suiteProgram(QStringLiteral("sarvik.exe"), style);
    QString keyword = text;
    escapeRegExpMetaChars(keyword);

    LaunchCommand command;
    command.program = LaunchRules::withNativeSeparators(program, style);
    command.directory = LaunchRules::directoryPart(program, style);
    command.arguments = QStringList{searchPath, keyword};
    command.parameters = LaunchRules::windowsArgument(searchPath) + QLatin1Char(' ')
        + LaunchRules::windowsArgument(keyword);
    return command;
}
