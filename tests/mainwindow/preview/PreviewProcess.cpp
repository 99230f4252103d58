// Saves a file as the preview does, for tests that stop it half-way or take its
// disk away:
//
//   PreviewProcess FILE TEXT [STEP]
//
// TEXT is written many times over. At the STEPth step of saving (from 0) the
// process ends on the spot, with exit code 77. Otherwise it ends with 0 when the
// file was saved, 1 when it could not be written, 3 when it could not be renamed
// and 2 when it was not shown at all.
//
//   PreviewProcess --rescue FOLDER/
//
// Rescues a long text again and again, until somebody ends it.

#include "mainwindow/preview/PreviewSaver.h"
#include "mainwindow/preview/RescueFile.h"
#include "settings/SaveSteps.h"

#include <QCoreApplication>

#include <cstdlib>

namespace {

void endAtStep(int last)
{
    constexpr int kEnded = 77;
    SaveSteps::setObserver([last, step = 0](SaveSteps::Step) mutable {
        if (step++ == last)
            std::_Exit(kEnded);
        return true;
    });
}

[[noreturn]] void rescueForEver(const QString &folder)
{
    const QString text = QStringLiteral("a line\n").repeated(200000);
    for (;;)
        RescueFile::write(folder, QStringLiteral("a"), text, QDateTime::currentDateTime());
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3)
        return 2;
    if (arguments.at(1) == QLatin1String("--rescue"))
        rescueForEver(arguments.at(2));
    PreviewFile file = PreviewFile::load(arguments.at(1), DetectionSettings(),
                                         [](const QString &, const QString &) {});
    if (!file.readable)
        return 2;
    if (arguments.size() > 3)
        endAtStep(arguments.at(3).toInt());
    using Result = PreviewSaver::Outcome::Result;
    const Result result = PreviewSaver::save(&file, arguments.at(2).repeated(20000)).result;
    return result == Result::Saved ? 0 : result == Result::RenameFailed ? 3 : 1;
}
