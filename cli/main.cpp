#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/HelpText.h"
#include "cli/Interrupt.h"
#include "cli/OptionParser.h"
#include "cli/PathArguments.h"
#include "cli/StandardStreams.h"
#include "engine/NativePath.h"
#include "settings/AppSettings.h"
#include "settings/ApplicationDirectory.h"
#include "settings/CodecEnvironment.h"
#include "settings/LocaleSetup.h"
#include "settings/ProcessEnd.h"

#include <QCoreApplication>
#include <QLoggingCategory>

using StandardStreams::Stream;

namespace {

int print(Stream stream, const QString &text, int exitStatus)
{
    QString errorText;
    StandardStreams::write(stream, NativePath::toNative(text), &Interrupt::isPending, &errorText);
    return errorText.isEmpty() ? exitStatus : Console::Failure;
}

int refuse(const QString &error)
{
    return print(Stream::Error, QStringLiteral("sarvik-cli: ") + error + QLatin1Char('\n'),
                 Console::Failure);
}

void warn(const QString &warning)
{
    print(Stream::Error, QStringLiteral("sarvik-cli: ") + warning + QLatin1Char('\n'),
          Console::HitsFound);
}

SearchLimits limitsFor(const Options &options)
{
    if (!options.useSettings)
        return SearchLimits();
    AppSettings &settings = AppSettings::instance();
    settings.load(ApplicationDirectory::path());
    return SearchLimits::fromSettings(settings);
}

int run(const Options &options)
{
    const PathArguments::Result paths = PathArguments::resolve(options.paths);
    if (!paths.ok())
        return refuse(paths.error);
    for (const QString &warning : paths.warnings)
        warn(warning);
    Interrupt interrupt;
    Console console(options, paths.pathlist, limitsFor(options));
    QObject::connect(&interrupt, &Interrupt::interrupted, &console, &Console::interrupt);
    QObject::connect(&console, &Console::finished, qApp, &QCoreApplication::exit);
    // From inside the event loop: a run that ends at once must find it running.
    QMetaObject::invokeMethod(&console, &Console::start, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

int runProgram(int argc, char *argv[])
{
    StandardStreams::prepare();
    LocaleSetup::useUtf8InPlainLocale();
    CodecEnvironment::applyUnicodeMap();
    // Debug lines are for developers, who switch them on by QT_LOGGING_RULES.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    QCoreApplication application(argc, argv);

    const OptionParser::Result parsed = OptionParser::parse(programArguments(argc, argv));
    if (!parsed.ok())
        return refuse(parsed.error);
    switch (parsed.options.mode) {
    case Options::Mode::Help:
        return print(Stream::Output, HelpText::text(), Console::HitsFound);
    case Options::Mode::Version:
        return print(Stream::Output,
                     QStringLiteral("sarvik-cli %1\n").arg(QLatin1String(SARVIK_VERSION)),
                     Console::HitsFound);
    default:
        return run(parsed.options);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    return ProcessEnd::withStatus(runProgram(argc, argv));
}
