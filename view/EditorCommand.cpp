#include "view/EditorCommand.h"

#include <QFileInfo>
#include <QProcess>

#include <algorithm>

namespace {

const QLatin1Char kSlash('/');
const QLatin1Char kBackslash('\\');
const QLatin1Char kQuote('"');

/// Hands sink the text with its macros taken out, in one walk, so that a "%l" in a
/// file name stays.
template <typename Sink> void expand(const QString &text, int line, int column, Sink *sink)
{
    for (int i = 0; i < text.size(); ++i) {
        const bool macro = text.at(i) == QLatin1Char('%') && i + 1 < text.size();
        const ushort name = macro ? text.at(i + 1).unicode() : 0;
        if (name == 'f')
            sink->addFile();
        else if (name == 'l')
            sink->addNumber(line);
        else if (name == 'b' || name == 'c')
            sink->addNumber(column);
        else {
            sink->addCharacter(text.at(i));
            continue;
        }
        ++i;
    }
}

/// An entry of a list of arguments: the file stands in it as it is.
class ListEntry {
public:
    explicit ListEntry(const QString &file) : m_file(file) { }

    void addFile() { text += m_file; }
    void addNumber(int number) { text += QString::number(number); }
    void addCharacter(QChar c) { text += c; }

    QString text;

private:
    const QString m_file;
};

/// A line that a Windows program takes apart itself. Where the template has put the
/// file between quotes of its own, further ones around it would let it out of them.
class WindowsLine {
public:
    explicit WindowsLine(const QString &file) : m_file(file) { }

    void addFile();
    void addNumber(int number);
    void addCharacter(QChar c);

    QString text;

private:
    void addFileBetweenQuotes();
    void addQuote();

    const QString m_file;
    bool m_quoted = false;
    /// Backslashes at the end of text: those that end the file or stand before it,
    /// which must not escape a quote, and then those of the template, which may.
    int m_ofFile = 0;
    int m_ofTemplate = 0;
};

void WindowsLine::addFile()
{
    if (m_quoted) {
        addFileBetweenQuotes();
        return;
    }
    text += QString(m_ofFile + m_ofTemplate, kBackslash) + LaunchRules::windowsArgument(m_file);
    m_ofFile = m_ofTemplate = 0;
}

void WindowsLine::addFileBetweenQuotes()
{
    text += m_file;
    int backslashes = 0;
    while (backslashes < m_file.size() && m_file.at(m_file.size() - 1 - backslashes) == kBackslash)
        ++backslashes;
    const bool nothingElse = backslashes == m_file.size();
    m_ofFile = backslashes + (nothingElse ? m_ofFile + m_ofTemplate : 0);
    m_ofTemplate = 0;
}

void WindowsLine::addNumber(int number)
{
    text += QString::number(number);
    m_ofFile = m_ofTemplate = 0;
}

void WindowsLine::addCharacter(QChar c)
{
    if (c == kQuote) {
        addQuote();
        return;
    }
    text += c;
    if (c == kBackslash)
        ++m_ofTemplate;
    else
        m_ofFile = m_ofTemplate = 0;
}

void WindowsLine::addQuote()
{
    text += QString(m_ofFile, kBackslash) + kQuote;
    if (m_ofTemplate % 2 == 0)
        m_quoted = !m_quoted;
    m_ofFile = m_ofTemplate = 0;
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
    WindowsLine parameters(file);
    expand(parameterTemplate, line, column, &parameters);
    return parameters.text;
}

QStringList EditorCommand::arguments(const QString &parameterTemplate, const QString &path,
                                     int line, int column, PathStyle style)
{
    const QString file = LaunchRules::withNativeSeparators(path, style);
    QStringList arguments = QProcess::splitCommand(parameterTemplate);
    for (QString &argument : arguments) {
        ListEntry entry(file);
        expand(argument, line, column, &entry);
        argument = entry.text;
    }
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
