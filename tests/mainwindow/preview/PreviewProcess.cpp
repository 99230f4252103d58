// Saves a file as the preview does, for tests that stop it half-way or take its
// disk away:
//
//   PreviewProcess [OPTION...] FILE TEXT [STEP]
//
// TEXT is written many times over. At the STEPth step of saving (from 0) the
// process ends on the spot, with exit code 77. Otherwise it ends with 0 when the
// file was saved, 1 when it could not be written, 3 when it could not be renamed,
// 4 when another had changed it since it was shown and 2 when it was not shown at
// all. With the option
//
//   --no-links  no file gets a second name, as where a file system knows none
//   --wait      it says "shown" and saves when it is given a line
//   --insist    it saves over what another has changed, as often as it takes
//
//   PreviewProcess --rescue FOLDER/
//
// Rescues a long text again and again, until somebody ends it.
//
//   PreviewProcess --rescue-once FOLDER/ TEXT
//
// Rescues TEXT, many times over, once; ends with 0, or with 1 when that failed.

#include "mainwindow/preview/PreviewSaver.h"
#include "mainwindow/preview/RescueFile.h"
#include "settings/SaveSteps.h"
#include "tests/support/EndAtOnce.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

void watchSteps(bool links, int last)
{
    constexpr int kEnded = 77;
    SaveSteps::setObserver([links, last, step = 0](SaveSteps::Step taken) mutable {
        if (step++ == last)
            endAtOnce(kEnded);
        return links || taken != SaveSteps::Step::LinkForBackup;
    });
}

void waitForALine()
{
    std::puts("shown");
    std::fflush(stdout);
    while (std::getchar() != '\n') { }
}

PreviewSaver::Outcome::Result save(PreviewFile *file, const QString &text, bool insists)
{
    using Result = PreviewSaver::Outcome::Result;
    Result result = PreviewSaver::save(file, text, file->stamp).result;
    while (insists && result == Result::Changed)
        result = PreviewSaver::save(file, text).result;
    return result;
}

int exitCodeOf(PreviewSaver::Outcome::Result result)
{
    using Result = PreviewSaver::Outcome::Result;
    switch (result) {
    case Result::Saved:
        return 0;
    case Result::RenameFailed:
        return 3;
    case Result::Changed:
        return 4;
    default:
        return 1;
    }
}

[[noreturn]] void rescueForEver(const QString &folder)
{
    const QString text = QStringLiteral("a line\n").repeated(200000);
    for (;;)
        RescueFile::write(folder, QStringLiteral("a"), text, QDateTime::currentDateTime());
}

bool rescueOnce(const QString &folder, const QString &text)
{
    return !RescueFile::write(folder, QStringLiteral("a"), text.repeated(20000),
                              QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)))
                .isEmpty();
}

int act(QStringList arguments)
{
    const bool links = arguments.removeAll(QStringLiteral("--no-links")) == 0;
    const bool waits = arguments.removeAll(QStringLiteral("--wait")) > 0;
    const bool insists = arguments.removeAll(QStringLiteral("--insist")) > 0;
    if (arguments.size() < 3)
        return 2;
    if (arguments.at(1) == QLatin1String("--rescue"))
        rescueForEver(arguments.at(2));
    if (arguments.at(1) == QLatin1String("--rescue-once"))
        return rescueOnce(arguments.at(2), arguments.value(3)) ? 0 : 1;
    PreviewFile file = PreviewFile::load(arguments.at(1), DetectionSettings(),
                                         [](const QString &, const QString &) {});
    if (!file.readable)
        return 2;
    watchSteps(links, arguments.size() > 3 ? arguments.at(3).toInt() : -1);
    if (waits)
        waitForALine();
    return exitCodeOf(save(&file, arguments.at(2).repeated(20000), insists));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return answer(act(QCoreApplication::arguments()));
}
