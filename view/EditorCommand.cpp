#include "view/EditorCommand.h"

#include <QFileInfo>
#include <QProcess>

#include <algorithm>

namespace {

const QLatin1Char kSlash('/');
const QLatin1Char kQuote('"');

/// Replaces the macros of text in one walk, so that a "%l" in a file name stays.
QString expand(const QString &text, const QString &file, int line, int column)
{
    QString expanded;
    for (int i = 0; i < text.size(); ++i) {
        const bool macro = text.at(i) == QLatin1Char('%') && i + 1 < text.size();
        const ushort name = macro ? text.at(i + 1).unicode() : 0;
        if (name == 'f')
            expanded += file;
        else if (name == 'l')
            expanded += QString::number(line);
        else if (name == 'b' || name == 'c')
            expanded += QString::number(column);
        else {
            expanded += text.at(i);
            continue;
        }
        ++i;
    }
    return expanded;
}

QString unquoted(const QString &program)
{
    const bool quoted =
        program.size() >= 2 && program.startsWith(kQuote) && program.endsWith(kQuote);
    return quoted ? program.mid(1, program.size() - 2) : program;
}

bool isBatchFile(const QString &program)
{
    return program.endsWith(QLatin1String(".bat"), Qt::CaseInsensitive)
        || program.endsWith(QLatin1String(".cmd"), Qt::CaseInsensitive);
}

bool canBeOneArgument(const QString &path, const QString &program, PathStyle style)
{
    if (style == PathStyle::Unix)
        return !path.contains(QChar(QChar::Null));
    const auto breaksOut = [](QChar c) {
        return c == kQuote || c < QLatin1Char(' ');
    };
    if (std::any_of(path.begin(), path.end(), breaksOut))
        return false;
    // The command interpreter, which runs a batch file, expands %NAME% even
    // between quotes, and what comes out may hold a quote.
    return !(isBatchFile(program) && path.contains(QLatin1Char('%')));
}

/// An earlier launch may have changed the current directory, and a name that
/// begins with "-" would be an option to the editor: hand over the whole path.
QString wholePath(const QString &fileName, const QString &startDirectory, PathStyle style)
{
    if (LaunchRules::isAbsolute(fileName, style))
        return fileName;
    if (startDirectory.endsWith(kSlash))
        return startDirectory + fileName;
    return startDirectory + kSlash + fileName;
}

QString programOf(const EditorCommand::Request &request, PathStyle style)
{
    const QString companion = QStringLiteral("sarvedit.exe");
    if (request.editor == companion) {
        const QString folder = request.applicationDirectory + kSlash;
        return QFileInfo::exists(folder + companion)
            ? folder + companion
            : folder + LaunchRules::suiteProgram(companion, style);
    }
    const QString program = unquoted(request.editor);
    // The folder is entered before the editor is started. Bare names are looked for.
    const bool hasFolder = !LaunchRules::directoryPart(program, style).isEmpty();
    return hasFolder ? wholePath(program, request.startDirectory, style) : program;
}

} // namespace

QString EditorCommand::parameters(const QString &parameterTemplate, const QString &path, int line,
                                  int column, PathStyle style)
{
    const QString file = LaunchRules::withNativeSeparators(path, style);
    return expand(parameterTemplate, LaunchRules::windowsArgument(file), line, column);
}

QStringList EditorCommand::arguments(const QString &parameterTemplate, const QString &path,
                                     int line, int column, PathStyle style)
{
    const QString file = LaunchRules::withNativeSeparators(path, style);
    QStringList arguments = QProcess::splitCommand(parameterTemplate);
    for (QString &argument : arguments)
        argument = expand(argument, file, line, column);
    return arguments;
}

std::optional<LaunchCommand> EditorCommand::build(const Request &request, PathStyle style)
{
    if (request.editor.isEmpty() || request.fileName.isEmpty())
        return std::nullopt;
    LaunchCommand command;
    command.program = programOf(request, style);
    const QString path = wholePath(request.fileName, request.startDirectory, style);
    if (!canBeOneArgument(path, command.program, style))
        return std::nullopt;
    command.directory = LaunchRules::directoryPart(command.program, style);
    command.arguments =
        arguments(request.parameterTemplate, path, request.line, request.column, style);
    command.parameters =
        parameters(request.parameterTemplate, path, request.line, request.column, style);
    return command;
}
