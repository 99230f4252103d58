#include "engine/RegExpEscape.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/WindowsCommandLine.h"
#include "view/EditorCommand.h"
#include "view/OtherGrepCommand.h"

#include <algorithm>

namespace {

EditorCommand::Request requestFor(const QString &parameters, const QString &fileName)
{
    EditorCommand::Request request;
    request.editor = QStringLiteral("/bin/ed");
    request.parameterTemplate = parameters;
    request.fileName = fileName;
    request.applicationDirectory = QStringLiteral("/opt/sarvik");
    request.startDirectory = QStringLiteral("/home");
    return request;
}

/// Whatever the file is called, the editor gets the arguments that it gets for
/// any other file, with this one in place of that.
void checkOnUnix(const QString &parameters, const QString &name)
{
    const QString known = QStringLiteral("/\x01known\x02");
    const QString path = QStringLiteral("/") + name;
    const auto command = EditorCommand::build(requestFor(parameters, path), PathStyle::Unix);
    if (!command) {
        require(name.contains(QChar(QChar::Null)), "only a name that no file has is refused");
        return;
    }
    QStringList expected =
        EditorCommand::build(requestFor(parameters, known), PathStyle::Unix)->arguments;
    if (parameters.contains(known))
        return;
    for (QString &argument : expected)
        argument.replace(known, path);
    require(command->program == QStringLiteral("/bin/ed"), "the editor is what is started");
    require(command->arguments == expected, "the name is where a name belongs, and only there");
}

QStringList takenApart(const QString &parameters, const QString &path)
{
    return argumentsOnWindows(
        EditorCommand::build(requestFor(parameters, path), PathStyle::Windows)->parameters);
}

/// The same for an editor that takes a command line apart itself, by the rule that is
/// documented for it. What two quotes in a row mean (a template of "%f%f" makes some)
/// is not: of the programs that take them for a quote nothing is said here.
void checkOnWindows(const QString &parameters, const QString &name)
{
    const QString known = QStringLiteral("C:\\\uE000known\uE001");
    const bool whole = name.startsWith(QLatin1Char('/')) || name.startsWith(QLatin1Char('\\'));
    const QString path = whole ? name : QStringLiteral("C:/") + name;
    if (!EditorCommand::build(requestFor(parameters, path), PathStyle::Windows)) {
        const auto impossible = [](QChar c) {
            return c == QLatin1Char('"') || c < QLatin1Char(' ');
        };
        require(std::any_of(name.begin(), name.end(), impossible),
                "only a name that no file has is refused");
        return;
    }
    if (parameters.contains(QChar(0xE000)))
        return;
    QString native = path;
    native.replace(QLatin1Char('/'), QLatin1Char('\\'));
    QStringList expected = takenApart(parameters, known);
    for (QString &argument : expected)
        argument.replace(known, native);
    require(takenApart(parameters, path) == expected,
            "the editor takes the name where a name belongs, and only there");
}

void checkOtherGrep(const QString &path, const QString &text)
{
    const LaunchCommand command =
        OtherGrepCommand::build(QStringLiteral("C:/sarvik"), path, text, PathStyle::Windows);
    QString keyword = text;
    escapeRegExpMetaChars(keyword);
    require(command.arguments == QStringList({path, keyword}),
            "folder and keyword are handed over");
    require(argumentsOnWindows(command.parameters) == command.arguments,
            "the second instance takes both as they are");
}

} // namespace

/// The template of the editor's parameters and the name of a file, a line each.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const QString parameters = input.textLine();
    const QString name = input.textRest();
    checkOnUnix(parameters, name);
    checkOnWindows(parameters, name);
    checkOtherGrep(parameters, name);
    return 0;
}
